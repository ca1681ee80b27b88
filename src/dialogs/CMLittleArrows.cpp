// SPDX-License-Identifier: BSD-3-Clause
#include "dialogs/CMLittleArrows.h"

#include "huxCommon/huxGUI/HuxEditText.h"

namespace {

constexpr double kNarrowRange = 10.0; // steps that a user still clicks through one by one
constexpr std::int32_t kWideIncrement = 10;

} // namespace

void CMLittleArrows::SetEditControl(HuxEditText* edit, long decimals, unsigned char sendNotify,
                                    unsigned char changeFocus) {
    HuxLittleArrows::SetEditControl(edit, decimals, sendNotify, changeFocus);
    const double range = static_cast<double>(GetMaximum()) - GetMinimum();
    if (edit && edit->IsReal() && range > kNarrowRange)
        SetIncrement(kWideIncrement);
}
