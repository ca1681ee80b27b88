// SPDX-License-Identifier: BSD-3-Clause
#include "dialogs/ColorDialog.h"

#include "huxCommon/huxCoreFoundation/HuxString.h"
#include "platform/ui/Dialogs.h"
#include "render/ColorRef.h"

bool ColorDialog(unsigned long& color) {
    constexpr unsigned long kPicked = 0xFF000000;
    const HuxString noPrompt;
    platform::RGBColor current {};
    COLORREFtoRGB(current, color);
    platform::RGBColor picked {};
    if (!platform::GetColor({ 0, 0 }, noPrompt.GetCFString(), current, &picked))
        return false;
    color = kPicked | RGBtoCOLORREF(picked);
    return true;
}
