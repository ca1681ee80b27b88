// SPDX-License-Identifier: BSD-3-Clause
#include <QLabel>
#include <QMenu>

#include "platform/ui/support/WindowsFixture.h"

namespace platform {
namespace {

using test::ChainHandler;

class FocusTest : public test::WindowsFixture {
protected:
    // Writes "a5" when a's part 5 gets the focus.
    ChainHandler::Act Writes(const char* name) {
        return [this, name](EventHandlerCallRef call, EventRef event) {
            OSStatus const status = CallNextEventHandler(call, event);
            ControlPartCode part = -1;
            GetEventParameter(event, kEventParamControlPart, kTypeControlPartCode, nullptr,
                              sizeof part, nullptr, &part);
            m_log += name + std::to_string(part) + " ";
            return status;
        };
    }
    ControlRef Focus(WindowRef window) {
        ControlRef focus = nullptr;
        GetKeyboardFocus(window, &focus);
        return focus;
    }
};

TEST_F(FocusTest, ControlsAreToldOfClicksTabsAndCalls) {
    WindowRef const window = MakeActive();
    ControlRef const a = Add<QLineEdit>(window);
    ControlRef const b = Add<QLineEdit>(window);
    ControlRef const label = Add<QLabel>(window);
    ChainHandler const onA(Control::Find(a)->Target(), { test::kFocus }, Writes("a"));
    ChainHandler const onB(Control::Find(b)->Target(), { test::kFocus }, Writes("b"));
    Click(*WidgetOf(a));
    EXPECT_EQ(m_log, "a5 ");
    Press(Qt::Key_Tab);
    EXPECT_EQ(m_log, "a5 a0 b5 ");
    EXPECT_EQ(SetKeyboardFocus(window, a, kControlEditTextPart), kNoErr);
    EXPECT_EQ(SetKeyboardFocus(window, a, kControlEditTextPart), kNoErr); // has it
    EXPECT_EQ(m_log, "a5 a0 b5 b0 a5 ");
    EXPECT_TRUE(WidgetOf(a)->hasFocus());
    EXPECT_EQ(Focus(window), a);
    EXPECT_EQ(SetKeyboardFocus(window, a, kControlNoPart), kNoErr);
    EXPECT_EQ(m_log, "a5 a0 b5 b0 a5 a0 ");
    EXPECT_EQ(Focus(window), nullptr);
    EXPECT_EQ(SetKeyboardFocus(window, label, 1), kErrCouldNotFocus);
    Control::Find(b)->SetEnabled(false);
    EXPECT_EQ(SetKeyboardFocus(window, b, kControlEditTextPart), kErrCouldNotFocus);
}

TEST_F(FocusTest, PopupsAndOtherWindowsLeaveItWithTheControl) {
    WindowRef const window = MakeActive();
    ControlRef const a = Add<QLineEdit>(window);
    Click(*WidgetOf(a));
    ChainHandler const onA(Control::Find(a)->Target(), { test::kFocus }, Writes("a"));
    QMenu menu(WidgetOf(a));
    menu.addAction("x");
    menu.popup(Widget(window).mapToGlobal(QPoint(20, 20)));
    QCoreApplication::processEvents();
    menu.close();
    WindowRef const over = MakeActive();
    EXPECT_EQ(Focus(window), a);
    DisposeWindow(over);
    SelectWindow(window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Widget(window)));
    EXPECT_TRUE(WidgetOf(a)->hasFocus());
    EXPECT_EQ(m_log, "");
}

TEST_F(FocusTest, AWindowThatIsNotShownYetTellsItsControls) {
    WindowRef const window = Make();
    ControlRef const a = Add<QLineEdit>(window);
    ControlRef const b = Add<QLineEdit>(window);
    ChainHandler const onA(Control::Find(a)->Target(), { test::kFocus }, Writes("a"));
    ChainHandler const onB(Control::Find(b)->Target(), { test::kFocus }, Writes("b"));
    SetKeyboardFocus(window, a, kControlEditTextPart);
    SetKeyboardFocus(window, b, kControlEditTextPart);
    EXPECT_EQ(m_log, "a5 a0 b5 ");
    ShowWindow(window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Widget(window)));
    EXPECT_TRUE(WidgetOf(b)->hasFocus());
    EXPECT_EQ(m_log, "a5 a0 b5 ");
}

TEST_F(FocusTest, AHandlerMayDisposeWhatLosesOrGetsTheFocus) {
    for (bool const getting : { true, false }) {
        WindowRef const window = MakeActive();
        ControlRef const a = Add<QLineEdit>(window);
        ControlRef const b = Add<QLineEdit>(window);
        Click(*WidgetOf(a));
        ControlRef const doomed = getting ? b : a;
        ChainHandler const handler(Control::Find(doomed)->Target(), { test::kFocus },
                                   [doomed, window, getting](auto, auto) {
                                       Control::Find(doomed)->Dispose();
                                       if (getting)
                                           DisposeWindow(window);
                                       return kNoErr;
                                   });
        Press(Qt::Key_Tab);
        EXPECT_FALSE(Control::Find(doomed));
        EXPECT_EQ(IsValidWindowPtr(window), !getting);
    }
}

TEST_F(FocusTest, GivesAWindowTheKeyboard) {
    WindowRef const first = MakeActive();
    ControlRef const field = Add<QLineEdit>(first);
    MakeActive();
    EXPECT_EQ(SetUserFocusWindow(first), kNoErr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Widget(first)));
    EXPECT_TRUE(WidgetOf(field)->hasFocus());
    EXPECT_EQ(FrontNonFloatingWindow(), first);
    EXPECT_EQ(SetUserFocusWindow(kUserFocusAuto), kNoErr);
    EXPECT_TRUE(IsWindowActive(first));
}

} // namespace
} // namespace platform
