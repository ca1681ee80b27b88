// SPDX-License-Identifier: BSD-3-Clause
// The colour picker, and standard alerts: a message box that is also a window of this layer, its buttons controls, so that
// handlers work in it as in any window. Escape and closing are left to the box, which knows them.
#include <QColorDialog>
#include <QMessageBox>
#include <QPushButton>

#include "platform/ui/Dialogs.h"
#include "platform/ui/QtValues.h"
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

bool GetColor(Point where, CFStringRef prompt, const RGBColor& current, RGBColor* picked) {
    if (!EnsureUserInterface())
        return false;
    const QColor before = ToQColor(current);
    const OwnedDialog<QColorDialog> dialog(before, DialogParent());
    // The same on every desktop, with the screen's colours to pick from.
    dialog->setOption(QColorDialog::DontUseNativeDialog);
    dialog->setWindowTitle(QStringFrom(prompt));
    if (where.h != 0 || where.v != 0)
        dialog->move(where.h, where.v);
    if (dialog->exec() != QDialog::Accepted || !dialog)
        return false;
    const QColor chosen = dialog->selectedColor();
    // The dialog knows 8 bits per channel; a colour that was left alone keeps its 16.
    *picked = ToRGBColor(chosen.rgb() == before.rgb() ? before : chosen);
    return true;
}

} // namespace platform
