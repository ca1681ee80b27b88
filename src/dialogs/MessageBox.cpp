// SPDX-License-Identifier: BSD-3-Clause
#include "dialogs/MessageBox.h"

#include "platform/ui/Dialogs.h"
#include "render/ColorRef.h"

using namespace platform;

bool MessageBox(const HuxString& message, const HuxString& title, long withCancel) {
    AlertParam param;
    param.cancelButton = withCancel != 0;
    DialogRef alert = nullptr;
    if (CreateStandardAlert(AlertType::kPlain, message.GetCFString(), nullptr, param, &alert))
        return false;
    SetWindowTitleWithCFString(GetDialogWindow(alert), title.GetCFString());
    std::int16_t item = 0;
    return RunStandardAlert(alert, &item) == kNoErr && item == kAlertStdAlertOKButton;
}

bool ColorDialog(unsigned long& color) {
    constexpr unsigned long kPicked = 0xFF000000;
    const HuxString noPrompt;
    RGBColor current {};
    COLORREFtoRGB(current, color);
    RGBColor picked {};
    if (!GetColor({ 0, 0 }, noPrompt.GetCFString(), current, &picked))
        return false;
    color = kPicked | RGBtoCOLORREF(picked);
    return true;
}
