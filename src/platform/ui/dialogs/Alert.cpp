// SPDX-License-Identifier: BSD-3-Clause
// Standard alerts: a message box that is also a window of this layer, its buttons controls, so that
// handlers work in it as in any window. Escape and closing are left to the box, which knows them.
#include <QMessageBox>
#include <QPushButton>

#include "platform/ui/Dialogs.h"
#include "platform/ui/Windows.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/dialogs/OwnedDialog.h"

namespace platform {
namespace {

Control& AddButton(QMessageBox& box, Window& window, QMessageBox::StandardButton button,
                   std::uint32_t commandID) {
    Control& control = *MakeControl(*box.addButton(button), window);
    control.commandID = commandID;
    return control;
}

} // namespace

bool RunStandardAlert(std::string_view title, std::string_view message, bool cancelButton) {
    if (!EnsureUserInterface())
        return false;
    const OwnedDialog<QMessageBox> box(DialogParent());
    auto& window = *new Window(*box); // ends with the box
    window.SetTitle(title);
    box->setTextFormat(Qt::PlainText); // a message may quote what somebody typed
    box->setText(QString::fromUtf8(message.data(), static_cast<qsizetype>(message.size())));
    if (cancelButton)
        AddButton(*box, window, QMessageBox::Cancel, kHICommandCancel);
    window.SetDefaultButton(&AddButton(*box, window, QMessageBox::Ok, kHICommandOK));
    box->setDefaultButton(QMessageBox::Ok);
    box->setEscapeButton(cancelButton ? QMessageBox::Cancel : QMessageBox::Ok);
    return box->exec() == QMessageBox::Ok;
}

} // namespace platform
