// SPDX-License-Identifier: BSD-3-Clause
// What the window does when a dialog of the plug-in reports, when one of its events fails, and when
// strings and ranges change.
#include <cstring>
#include <functional>

#include <QAction>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "apps/studio/StringsPanel.h"
#include "apps/studio/StudioFixture.h"
#include "apps/studio/Timeline.h"
#include "platform/ui/Windows.h"
#include "support/WindowRefs.h"

using namespace studio;

namespace {

class WindowPluginTest : public StudioTest {
protected:
    QString UndoText() { return Project().Undo().undoText(); }
    // The action's key, where a person presses it.
    void Press(Qt::Key key) { QTest::keyClick(&Window().View(), key); }
};

TEST_F(WindowPluginTest, EachReportedChangeIsOneStepWithANameOfItsOwn) {
    const auto before = Project().Committed().Selected().settings;
    struct Row {
        const char* name;
        std::function<void(_TEXTPARAM&)> edit;
        int steps = 1;
    };
    for (const auto& row : {
             Row { "Move Text", [](auto& params) { params.ptPos.x += 10; } },
             Row { "Change Look of Text", [](auto& params) { params.dwFlags ^= TEXT_BOX; } },
             Row { "Change Text", [](auto& params) { params.dwFlags ^= TEXT_SCORE | TEXT_INFO; } },
             Row { "Change Text", [](auto& params) { params.szInfoText[0] = 'x'; } },
             Row { "Change Text Settings",
                   [](auto& params) {
                       params.nFontSize += 3;
                       params.szInfoText[0] = 'y';
                   } },
             Row { "Change Text Settings", [](auto&) {}, 0 },
         }) {
        const auto steps = Project().Undo().count();
        Edit(row.edit);
        EXPECT_EQ(Project().Undo().count(), steps + row.steps) << row.name;
        EXPECT_EQ(UndoText().toStdString(), row.name);
    }
    while (Project().Undo().canUndo())
        QTest::keySequence(&Window(), QKeySequence::Undo);
    const auto live = Project().LiveParams();
    EXPECT_EQ(std::memcmp(&live, &before, sizeof before), 0);
}

TEST_F(WindowPluginTest, ThePanelTellsTheTextOfTheFrameThatIsShown) {
    auto& plugin = Window().Plugin();
    auto* const summary = plugin.findChild<QPlainTextEdit*>();
    ASSERT_TRUE(summary) << plugin.Message().toStdString();
    const auto shows = [&](const char* text) {
        EXPECT_TRUE(Settle());
        EXPECT_EQ(summary->toPlainText(), text);
    };
    Press(Qt::Key_End);
    shows("C-000-0100");
    OpenShot(3);
    shows("C-000-0001");
    Press(Qt::Key_Right);
    shows("C-000-0002");
    EXPECT_EQ(plugin.findChildren<QPlainTextEdit*>(), QList { summary });
}

// What it edits shows at once, and goes when it is not confirmed.
TEST_F(WindowPluginTest, TheTextDialogMakesAStepWithOKAndNoneWithCancel) {
    OpenShot(2);
    struct Row {
        const char* button;
        std::int32_t size;
    };
    for (const auto& row : { Row { "Cancel", 36 }, Row { "OK", 72 } }) {
        const auto plain = Picture();
        bool shown = false;
        QTimer::singleShot(0, &Window(), [&] {
            ASSERT_TRUE(WaitUntil([] { return QApplication::activeModalWidget(); }));
            auto* const dialog = QApplication::activeModalWidget();
            EXPECT_FALSE(Window().Action("open")->isEnabled());
            for (auto* const field : dialog->findChildren<QLineEdit*>()) {
                if (field->isVisible() && field->text() == "36") {
                    field->selectAll();
                    QTest::keyClicks(field, "72");
                }
            }
            shown = WaitUntil([&] { return Picture() != plain; });
            Click(*dialog, row.button);
        });
        Click(Window().Plugin(), "Edit…"); // comes back when the dialog has ended
        EXPECT_TRUE(shown) << row.button;
        EXPECT_EQ(Project().LiveParams().nFontSize, row.size) << row.button;
        EXPECT_EQ(Project().Undo().canUndo(), row.size == 72) << row.button;
        EXPECT_TRUE(Window().Action("open")->isEnabled());
        ASSERT_TRUE(WaitUntil([&] { return (Picture() == plain) == (row.size == 36); }));
    }
}

// A dialog that an exception ended says nothing.
TEST_F(WindowPluginTest, AModalWindowThatIsGoneCountsAsEnded) {
    platform::WindowRef modal = nullptr;
    modal = platform::Window::Create({ 0, 0, 50, 50 });
    host::WindowTable().ModalOpens(reinterpret_cast<EPIWindowRef>(modal));
    EXPECT_FALSE(Window().Action("open")->isEnabled());
    test::Dispose(modal);
    EXPECT_TRUE(WaitUntil([&] { return Window().Action("open")->isEnabled(); }));
}

TEST_F(WindowPluginTest, ErrorEventsSayWhatWasBeingHandled) {
    struct Row {
        PluginError error;
        const char* text;
        // A parameter of another size is not read past its end.
        std::uint32_t size = sizeof(PluginError);
    };
    for (const auto& row : {
             Row { { {}, -50, 0x636D6473, 1 }, "handled a command ('cmds', kind 1; code -50)" },
             Row { { {}, -1, 0x6D6F7573, 10 }, "handled the mouse wheel ('mous', kind 10" },
             Row { { {}, -1, 0x6D6F7573, 1 }, "handled the mouse ('mous'" },
             Row { { {}, 3, 0x00424344, 7 }, "handled an event (0x00424344, kind 7" },
             Row { { {}, -108, 0, 0 }, "ran into an error (code -108)" },
             Row { { {}, -108, 0, 0 }, "", sizeof(PluginError) - 4 },
         }) {
        Window().Messages().Clear();
        platform::EventRef event = nullptr;
        ASSERT_EQ(platform::CreateEvent(kPluginErrorClass, kPluginErrorKind, &event), 0);
        platform::SetEventParameter(event, kPluginErrorClass, kPluginErrorClass, row.size,
                                    &row.error);
        platform::SendEventToEventTarget(event, platform::GetApplicationEventTarget());
        platform::ReleaseEvent(event);
        EXPECT_THAT(Message(), testing::HasSubstr(row.text));
        EXPECT_EQ(Message().empty(), *row.text == 0);
    }
}

TEST_F(WindowPluginTest, TypingAStringIsOneStepAndChangesTheFrame) {
    const auto plain = Picture();
    auto* const field = Window().Strings().findChildren<QLineEdit*>()[2];
    QTest::keyClicks(field, "12");
    EXPECT_NE(Picture(), plain);
    EXPECT_EQ(UndoText(), "Change Information String 3");
    EXPECT_EQ(Project().Undo().count(), 1);
    Window().Action("undo")->trigger();
    EXPECT_EQ(Picture(), plain);
    EXPECT_EQ(field->text(), "");

    Click(Window().Strings(), "The shot has these strings");
    EXPECT_FALSE(Project().Committed().strings.present);
    EXPECT_FALSE(field->isEnabled());
    Window().Action("undo")->trigger();
    EXPECT_TRUE(field->isEnabled());
}

TEST_F(WindowPluginTest, BelowAStringStandsWhatTheFrameMakesOfItOrWhatIsWrong) {
    auto* const field = Window().Strings().findChildren<QLineEdit*>()[0];
    struct Row {
        QString typed;
        const char* note; // a part of it
        std::string bytes;
        const char* encoding = "UTF-8";
    };
    const QString most(63, 'x');
    for (const auto& row : {
             Row { "Road", "", "Road" },
             Row { "道", "", "道" },
             Row { "道", "", "\x93\xB9", "CP932" },
             Row { "ñ", "encoding CP932 lacks a character", "", "CP932" },
             Row { "{frame+1:04} {{", "This frame: 0002 {", "0002 {" },
             Row { "{fram}", "Unknown token", "" },
             Row { most, "", most.toStdString() },
             Row { most + "{frame}", "64 bytes, and 63 fit", "" },
         }) {
        platform::TextContext context(*platform::TextEncoding::Find(row.encoding));
        const platform::TextScope scope(context);
        field->clear();
        QInputMethodEvent composed; // as an input method types
        composed.setCommitString(row.typed);
        QApplication::sendEvent(field, &composed);
        const auto note = field->accessibleDescription().toStdString();
        EXPECT_THAT(note, testing::HasSubstr(row.note)) << row.typed.toStdString();
        EXPECT_EQ(note.empty(), *row.note == 0) << row.typed.toStdString();
        EXPECT_EQ(Project().StringsHere()[0], row.bytes) << row.typed.toStdString();
    }
}

TEST_F(WindowPluginTest, KeysTurnRangesStepAndPlayAndUndoBringsBack) {
    const auto shown = [this] { return Window().TheTimeline().Spans(); };
    Window().Action("nowhere")->trigger();
    Window().ShowFrame(4);
    host::ParamTable().Option(1.0, 0); // a dialog's wish to have the text on here
    EXPECT_EQ(shown(), (OnSpans { { 4, 4 } }));
    Press(Qt::Key_T);
    EXPECT_EQ(shown(), OnSpans {});
    Window().ShowFrame(97);
    Press(Qt::Key_T);
    Press(Qt::Key_End);
    Press(Qt::Key_BracketRight);
    EXPECT_EQ(shown(), (OnSpans { { 97, 99 } }));
    Press(Qt::Key_Left);
    Press(Qt::Key_BracketLeft);
    EXPECT_EQ(shown(), (OnSpans { { 98, 99 } }));
    EXPECT_EQ(UndoText(), "Change Ranges");
    QTest::keySequence(&Window(), QKeySequence::Undo);
    EXPECT_EQ(shown(), (OnSpans { { 97, 99 } }));
    QTest::keySequence(&Window(), QKeySequence("Ctrl+Shift+Z"));
    EXPECT_EQ(shown(), (OnSpans { { 98, 99 } }));
    const auto on = Picture();
    Press(Qt::Key_T); // a frame that is off shows itself
    EXPECT_NE(Picture(), on);
    Press(Qt::Key_Home);
    Press(Qt::Key_Right);
    EXPECT_EQ(Project().Current(), 1U);
    Press(Qt::Key_Space);
    EXPECT_TRUE(WaitUntil([&] { return Project().Current() != 1; }));
    Press(Qt::Key_Space);
    const auto stopped = Project().Current();
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Project().Current(), stopped);
}

TEST_F(WindowPluginTest, WhatIsNotDrawnAsItShouldBeIsSaid) {
    for (const auto& [kind, message] :
         { std::pair(platform::ReportKind::kFontBroken, "The text is not drawn to the letter.\n"),
           { platform::ReportKind::kBundleBroken,
             "A file of the text effect cannot be used.\n" } }) {
        Window().Messages().Clear();
        platform::TextContext::Current().Tell({ kind, "it", "", "it is empty" });
        EXPECT_TRUE(WaitUntil([&] { return !Message().empty(); }));
        EXPECT_THAT(Message(), testing::StartsWith(message));
    }
}

} // namespace
