// SPDX-License-Identifier: BSD-3-Clause
// A stepper whose steps in a field for real numbers suit the width of the field's range.
#pragma once

#include "huxCommon/huxGUI/HuxLittleArrows.h"

class CMLittleArrows : public HuxLittleArrows {
public:
    void SetEditControl(HuxEditText* edit, long decimals, unsigned char sendNotify,
                        unsigned char changeFocus) override;
};
