// SPDX-License-Identifier: BSD-3-Clause
// The colour picker.
#include <QColorDialog>

#include "platform/ui/Dialogs.h"
#include "platform/ui/QtValues.h"
#include "platform/ui/UIObject.h"
#include "platform/ui/dialogs/OwnedDialog.h"

namespace platform {

bool GetColor(Point where, CFStringRef prompt, const RGBColor& current, RGBColor* picked) {
    if (!EnsureUserInterface())
        return false;
    const QColor before = QColor::fromRgba64(current.red, current.green, current.blue);
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
    const QRgba64 color = (chosen.rgb() == before.rgb() ? before : chosen).rgba64();
    *picked = { color.red(), color.green(), color.blue() };
    return true;
}

} // namespace platform
