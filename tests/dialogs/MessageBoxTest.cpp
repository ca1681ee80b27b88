// SPDX-License-Identifier: BSD-3-Clause
#include "dialogs/MessageBox.h"

#include <functional>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>

#include "platform/ui/UIObject.h"

namespace {

// Answers the box as soon as it is there, and gives what the user saw.
struct Seen {
    QString title, text;
    qsizetype buttons = 0;
};

Seen AnswerWith(const std::function<void(QMessageBox&)>& answer, long withCancel, bool* result) {
    Seen seen;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        poll.stop();
        seen = { box->windowTitle(), box->text(), box->buttons().size() };
        answer(*box);
    });
    poll.start(5);
    *result = MessageBox(HuxString::FromUTF8("Clear \u5C65\u6B74?"), HuxString("Text"), withCancel);
    return seen;
}

TEST(MessageBoxTest, IsTrueForOKAlone) {
    ASSERT_TRUE(platform::EnsureUserInterface());
    const auto press = [](QMessageBox::StandardButton button) {
        return [button](QMessageBox& box) { box.button(button)->click(); };
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
    for (const auto& row : rows) {
        bool result = !row.result;
        Seen const seen = AnswerWith(row.answer, row.withCancel, &result);
        EXPECT_EQ(result, row.result) << row.what;
        EXPECT_EQ(seen.buttons, row.withCancel ? 2 : 1) << row.what;
        EXPECT_EQ(seen.title, "Text");
        EXPECT_EQ(seen.text, QStringLiteral("Clear \u5C65\u6B74?"));
    }
}

} // namespace
