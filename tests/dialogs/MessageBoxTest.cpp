// SPDX-License-Identifier: BSD-3-Clause
// What the user is asked in a window of its own.
#include "dialogs/MessageBox.h"

#include <functional>

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>

#include "platform/ui/UIObject.h"

namespace {

// Asks, and lets the user act in the dialog when it is there.
template <class Dialog>
bool Asking(const std::function<bool()>& ask, const std::function<void(Dialog&)>& user) {
    EXPECT_TRUE(platform::EnsureUserInterface());
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        if (auto* const dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget())) {
            poll.stop();
            user(*dialog);
        }
    });
    poll.start(5);
    return ask();
}

TEST(MessageBoxTest, IsTrueForOKAlone) {
    const auto press = [](QMessageBox::StandardButton button) {
        return
            [button](QMessageBox& box) { QTest::mouseClick(box.button(button), Qt::LeftButton); };
    };
    const auto key = [](Qt::Key code) {
        return [code](QMessageBox& box) { QTest::keyClick(&box, code); };
    };
    const struct {
        const char* what;
        std::function<void(QMessageBox&)> answer;
        long withCancel;
        bool result;
    } rows[] = {
        { "OK", press(QMessageBox::Ok), 1, true },
        { "Cancel", press(QMessageBox::Cancel), 1, false },
        { "OK alone", press(QMessageBox::Ok), 0, true },
        { "Return", key(Qt::Key_Return), 1, true },
        { "Escape", key(Qt::Key_Escape), 1, false },
        { "closed", [](QMessageBox& box) { box.close(); }, 1, false },
    };
    const auto question = HuxString::FromUTF8("Clear \u5C65\u6B74?");
    for (const auto& row : rows) {
        const bool result = Asking<QMessageBox>(
            [&] { return MessageBox(question, HuxString("Text"), row.withCancel); },
            [&](QMessageBox& box) {
                EXPECT_EQ(box.buttons().size(), row.withCancel ? 2 : 1) << row.what;
                EXPECT_EQ(box.windowTitle(), "Text");
                EXPECT_EQ(box.text(), QStringLiteral("Clear \u5C65\u6B74?"));
                row.answer(box);
            });
        EXPECT_EQ(result, row.result) << row.what;
    }
}

TEST(ColorDialogTest, MarksAPickedColorInItsTopByte) {
    for (const bool accepts : { true, false }) {
        unsigned long color = 0x12332211;
        const auto user = [accepts](QColorDialog& dialog) {
            EXPECT_EQ(dialog.currentColor().rgb(), qRgb(0x11, 0x22, 0x33));
            dialog.setCurrentColor(0xA1B2C3);
            if (accepts)
                dialog.accept();
            else
                dialog.reject();
        };
        EXPECT_EQ(Asking<QColorDialog>([&] { return ColorDialog(color); }, user), accepts);
        EXPECT_EQ(color, accepts ? 0xFFC3B2A1UL : 0x12332211UL);
    }
}

} // namespace
