// SPDX-License-Identifier: BSD-3-Clause
#include <QApplication>
#include <QColorDialog>
#include <QTimer>
#include <gmock/gmock.h>

#include "dialogs/ColorDialog.h"
#include "platform/ui/UIObject.h"

namespace {

// What the picker showed when act ended it; an invalid colour when it did not come up.
template <class Act>
QColor WhileItRuns(unsigned long& color, bool& accepted, Act act) {
    QColor shown;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        auto* const dialog = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        timer.stop();
        shown = dialog->currentColor();
        act(*dialog);
    });
    timer.start(10);
    accepted = ColorDialog(color);
    return shown;
}

TEST(ColorDialog, MarksAPickedColorInItsTopByte) {
    ASSERT_TRUE(platform::EnsureUserInterface());
    unsigned long color = 0x00332211;
    bool accepted = false;
    const QColor shown = WhileItRuns(color, accepted, [](QColorDialog& dialog) {
        dialog.setCurrentColor(QColor(0xA1, 0xB2, 0xC3));
        dialog.accept();
    });
    EXPECT_EQ(shown.rgb(), qRgb(0x11, 0x22, 0x33));
    EXPECT_TRUE(accepted);
    EXPECT_EQ(color, 0xFFC3B2A1UL);
}

TEST(ColorDialog, LeavesTheColorWhenCancelled) {
    ASSERT_TRUE(platform::EnsureUserInterface());
    unsigned long color = 0x12332211;
    bool accepted = true;
    const QColor shown = WhileItRuns(color, accepted, [](QColorDialog& dialog) {
        dialog.setCurrentColor(Qt::red);
        dialog.reject();
    });
    EXPECT_TRUE(shown.isValid());
    EXPECT_FALSE(accepted);
    EXPECT_EQ(color, 0x12332211UL);
}

} // namespace
