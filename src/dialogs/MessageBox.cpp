// SPDX-License-Identifier: BSD-3-Clause
#include "dialogs/MessageBox.h"

#include "platform/ui/Dialogs.h"

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
