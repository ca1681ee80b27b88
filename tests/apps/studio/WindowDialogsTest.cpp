// SPDX-License-Identifier: BSD-3-Clause
// What the window does when a dialog of the plug-in reports, and when one of its events fails.
#include <cstring>
#include <functional>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QtTest>
#include <gmock/gmock.h>

#include "apps/studio/EffectPanel.h"
#include "apps/studio/ErrorEvents.h"
#include "apps/studio/FrameView.h"
#include "apps/studio/MessageBar.h"
#include "apps/studio/StringsPanel.h"
#include "apps/studio/StudioFixture.h"
#include "apps/studio/Timeline.h"
#include "host/Tables.h"
#include "platform/ui/Windows.h"

namespace studio {

namespace {

class WindowDialogsTest : public StudioTest {
protected:
    // As a dialog does it: in place, then by the table.
    void EditInPlace(const std::function<void(_TEXTPARAM&)>& edit) {
        edit(*Window().TheProject().Effect()->Params());
    }
    void Report() { host::ParamTable().ParametersChanged(nullptr); }
    QString UndoText() { return Window().TheProject().Undo().undoText(); }

    // A window that stands for a dialog's.
    EPIWindowRef OpenModal() {
        platform::CreateNewWindow({ 0, 0, 50, 50 }, &m_modal);
        auto* const window = reinterpret_cast<EPIWindowRef>(m_modal);
        host::WindowTable().ModalOpens(window);
        return window;
    }

    platform::WindowRef m_modal = nullptr;
};

TEST_F(WindowDialogsTest, EachReportedChangeIsOneStepWithANameOfItsOwn) {
    auto& project = Window().TheProject();
    auto const before = project.Committed().params;
    struct Row {
        const char* name;
        std::function<void(_TEXTPARAM&)> edit;
    };
    for (auto const& row : {
             Row { "Move Text", [](auto& params) { params.ptPos.x += 10; } },
             Row { "Change Look of Text", [](auto& params) { params.crText = 0x10; } },
             Row { "Change Look of Text", [](auto& params) { params.dwFlags ^= TEXT_BOX; } },
             Row { "Change Text", [](auto& params) { params.dwFlags ^= TEXT_SCORE | TEXT_INFO; } },
             Row { "Change Text", [](auto& params) { params.szInfoText[0] = 'x'; } },
             Row { "Change Text Settings",
                   [](auto& params) {
                       params.nFontSize += 3;
                       params.szInfoText[0] = 'y';
                   } },
         }) {
        auto const steps = project.Undo().count();
        EditInPlace(row.edit);
        Report();
        EXPECT_EQ(project.Undo().count(), steps + 1) << row.name;
        EXPECT_EQ(UndoText().toStdString(), row.name);
    }
    auto const steps = project.Undo().count();
    Report(); // nothing changed
    EXPECT_EQ(project.Undo().count(), steps);
    while (project.Undo().canUndo())
        Window().Action("undo")->trigger();
    auto const live = project.LiveParams();
    EXPECT_EQ(std::memcmp(&live, &before, sizeof before), 0);
}

TEST_F(WindowDialogsTest, WhatADialogEditsShowsAtOnceAndGoesWhenItIsNotConfirmed) {
    auto const plain = Window().View().Picture();
    auto* const window = OpenModal();
    EXPECT_FALSE(Window().Action("open")->isEnabled());
    EditInPlace([](auto& params) { params.ptPos.x += 300; });
    EXPECT_TRUE(WaitUntil([&] { return Window().View().Picture() != plain; }));
    host::WindowTable().ModalEnds(window);
    EXPECT_TRUE(WaitUntil([&] { return Window().View().Picture() == plain; }));
    EXPECT_FALSE(Window().TheProject().Undo().canUndo());
    EXPECT_TRUE(Window().Action("open")->isEnabled());
    platform::DisposeWindow(m_modal);
}

TEST_F(WindowDialogsTest, AConfirmedDialogStaysAndItsOptionTurnsTheTextOnHere) {
    auto& project = Window().TheProject();
    project.ChangeSpans({});
    Window().ShowFrame(4);
    auto* const window = OpenModal();
    EditInPlace([](auto& params) { params.nFontSize = 77; });
    Report();
    host::ParamTable().Option(1.0, 0);
    host::WindowTable().ModalEnds(window);
    EXPECT_EQ(project.LiveParams().nFontSize, 77);
    EXPECT_EQ(project.Spans(), (OnSpans { { 4, 4 } }));
    EXPECT_EQ(Window().TheTimeline().Spans(), (OnSpans { { 4, 4 } }));
    platform::DisposeWindow(m_modal);
}

template <class Widget>
Widget* VisibleWith(const QWidget& notIn, const QString& text) {
    for (auto* const window : QApplication::topLevelWidgets()) {
        for (auto* const widget : window->findChildren<Widget*>()) {
            if (window != &notIn && widget->isVisible() && widget->text() == text)
                return widget;
        }
    }
    return nullptr;
}

TEST_F(WindowDialogsTest, ThePanelTellsTheTextOfTheFrameThatIsShown) {
    auto& window = Window();
    auto* const summary = window.Panel().findChild<QPlainTextEdit*>();
    ASSERT_TRUE(summary) << window.Panel().Message().toStdString();
    QTest::keyClick(&window.View(), Qt::Key_End);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(summary->toPlainText(), "C-000-0100");
    ASSERT_TRUE(window.OpenFrames(WriteShot("shot", 3)));
    ASSERT_TRUE(Settle());
    EXPECT_EQ(summary->toPlainText(), "C-000-0001");
    QTest::keyClick(&window.View(), Qt::Key_Right);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(summary->toPlainText(), "C-000-0002");
    EXPECT_EQ(window.Panel().findChildren<QPlainTextEdit*>(), QList { summary });
}

TEST_F(WindowDialogsTest, TheRealDialogMakesAStepWithOKAndNoneWithCancel) {
    ASSERT_TRUE(Window().OpenFrames(WriteShot("shot", 2)));
    ASSERT_TRUE(Settle());
    ASSERT_TRUE(Window().Panel().IsOpen()) << Window().Panel().Message().toStdString();
    auto* const edit = Window().Panel().findChild<QPushButton*>();
    ASSERT_TRUE(edit);
    struct Row {
        const char* button;
        std::int32_t size;
    };
    for (auto const& row : { Row { "Cancel", 36 }, Row { "OK", 72 } }) {
        bool shown = false;
        auto const plain = Window().View().Picture();
        QTimer::singleShot(0, &Window(), [&] {
            EXPECT_TRUE(WaitUntil([&] { return VisibleWith<QLineEdit>(Window(), "36"); }));
            auto* const size = VisibleWith<QLineEdit>(Window(), "36");
            size->selectAll();
            QTest::keyClicks(size, "72");
            shown = WaitUntil([&] { return Window().View().Picture() != plain; });
            QTest::mouseClick(VisibleWith<QPushButton>(Window(), row.button), Qt::LeftButton);
        });
        QTest::mouseClick(edit, Qt::LeftButton); // comes back when the dialog has ended
        EXPECT_TRUE(shown) << row.button;
        EXPECT_EQ(Window().TheProject().LiveParams().nFontSize, row.size) << row.button;
        EXPECT_EQ(Window().TheProject().Undo().canUndo(), row.size == 72) << row.button;
        EXPECT_TRUE(Window().Action("open")->isEnabled());
        ASSERT_TRUE(
            WaitUntil([&] { return (Window().View().Picture() == plain) == (row.size == 36); }));
    }
}

// A dialog that an exception ended says nothing.
TEST_F(WindowDialogsTest, AModalWindowThatIsGoneCountsAsEnded) {
    OpenModal();
    platform::DisposeWindow(m_modal);
    EXPECT_TRUE(WaitUntil([&] { return Window().Action("open")->isEnabled(); }));
}

TEST_F(WindowDialogsTest, ErrorEventsShowInTheMessageBar) {
    PluginError const error { {}, -50, 0x636D6473, 1 };
    platform::EventRef event = nullptr;
    ASSERT_EQ(platform::CreateEvent(kPluginErrorClass, kPluginErrorKind, 0, &event), 0);
    platform::SetEventParameter(event, kPluginErrorClass, kPluginErrorClass, sizeof error, &error);
    platform::PostEventToQueue(platform::GetMainEventQueue(), event,
                               platform::EventPriority::kStandard);
    platform::ReleaseEvent(event);
    EXPECT_TRUE(WaitUntil([&] { return !Window().Messages().Text().isEmpty(); }));
    EXPECT_EQ(Window().Messages().Text(), Describe(error));
    EXPECT_EQ(Window().Messages().TheKind(), MessageBar::Kind::kError);
}

TEST_F(WindowDialogsTest, TypingAStringIsOneStepAndChangesTheFrame) {
    auto const plain = Window().View().Picture();
    auto& field = Window().Strings().Field(2);
    QTest::keyClicks(&field, "12");
    ASSERT_TRUE(Settle());
    EXPECT_NE(Window().View().Picture(), plain);
    EXPECT_EQ(UndoText(), "Change Information String 3");
    EXPECT_EQ(Window().TheProject().Undo().count(), 1);
    Window().Action("undo")->trigger();
    ASSERT_TRUE(Settle());
    EXPECT_EQ(field.text(), "");
    EXPECT_EQ(Window().View().Picture(), plain);

    QTest::mouseClick(&Window().Strings().Switch(), Qt::LeftButton, {},
                      { 8, Window().Strings().Switch().height() / 2 });
    EXPECT_FALSE(Window().TheProject().Committed().strings.present);
    EXPECT_FALSE(field.isEnabled());
    Window().Action("undo")->trigger();
    EXPECT_TRUE(field.isEnabled());
}

TEST_F(WindowDialogsTest, RangesAreTurnedByKeysAndComeBackByUndo) {
    auto& window = Window();
    window.Action("nowhere")->trigger();
    window.ShowFrame(10);
    window.Action("textOn")->trigger();
    window.ShowFrame(14);
    window.Action("end")->trigger();
    EXPECT_EQ(window.TheTimeline().Spans(), (OnSpans { { 10, 14 } }));
    window.ShowFrame(12);
    window.Action("start")->trigger();
    EXPECT_EQ(window.TheTimeline().Spans(), (OnSpans { { 12, 14 } }));
    EXPECT_EQ(UndoText(), "Change Ranges");
    window.Action("undo")->trigger();
    EXPECT_EQ(window.TheTimeline().Spans(), (OnSpans { { 10, 14 } }));
    window.Action("redo")->trigger();
    EXPECT_EQ(window.TheTimeline().Spans(), (OnSpans { { 12, 14 } }));
    // Off frames show the frame itself.
    ASSERT_TRUE(Settle());
    auto const on = window.View().Picture();
    window.Action("nowhere")->trigger();
    ASSERT_TRUE(Settle());
    EXPECT_NE(window.View().Picture(), on);
}

TEST_F(WindowDialogsTest, KeysOfTheFrameStepAndPlay) {
    auto& window = Window();
    window.View().setFocus();
    QApplication::setActiveWindow(&window);
    QTest::keyClick(&window.View(), Qt::Key_End);
    EXPECT_EQ(window.TheProject().Current(), 99U);
    QTest::keyClick(&window.View(), Qt::Key_Left);
    EXPECT_EQ(window.TheProject().Current(), 98U);
    QTest::keyClick(&window.View(), Qt::Key_Home);
    QTest::keyClick(&window.View(), Qt::Key_Right);
    EXPECT_EQ(window.TheProject().Current(), 1U);
    QTest::keyClick(&window.View(), Qt::Key_Space);
    EXPECT_TRUE(WaitUntil([&] { return window.TheProject().Current() > 3; }));
    QTest::keyClick(&window.View(), Qt::Key_Space);
    auto const stopped = window.TheProject().Current();
    ASSERT_TRUE(Settle());
    EXPECT_EQ(window.TheProject().Current(), stopped);
}

} // namespace

} // namespace studio
