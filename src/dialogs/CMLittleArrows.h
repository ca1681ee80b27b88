// SPDX-License-Identifier: BSD-3-Clause
// A stepper whose steps in a field for real numbers suit the width of the field's range.
#pragma once

#include "huxCommon/huxGUI/HuxEditText.h"
#include "huxCommon/huxGUI/HuxLittleArrows.h"

class CMLittleArrows : public HuxLittleArrows {
public:
    void SetEditControl(HuxEditText* edit, long decimals, unsigned char sendNotify,
                        unsigned char changeFocus) override {
        constexpr double kNarrowRange = 10.0; // steps that a user still clicks through one by one
        constexpr std::int32_t kWideIncrement = 10;
        HuxLittleArrows::SetEditControl(edit, decimals, sendNotify, changeFocus);
        const double range = static_cast<double>(GetMaximum()) - GetMinimum();
        if (edit && edit->IsReal() && range > kNarrowRange)
            SetIncrement(kWideIncrement);
    }
};
