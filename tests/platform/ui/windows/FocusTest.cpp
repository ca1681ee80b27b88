// SPDX-License-Identifier: BSD-3-Clause
#include <QLabel>
#include <QMenu>

#include "platform/ui/support/WindowsFixture.h"
#include "support/WindowRefs.h"

namespace platform {
namespace {

using test::ChainHandler;

class FocusTest : public test::WindowsFixture {
protected:
    // Writes "a5" when a's part 5 gets the focus.
    ChainHandler::Act Writes(const char* name) {
        return [this, name](EventHandlerCallRef call, EventRef event) {
            const OSStatus status = CallNextEventHandler(call, event);
            m_log += name + std::to_string(test::PartOf(event)) + " ";
            return status;
        };
    }
    static ControlRef Focus(WindowRef window) {
        const Control* const focus = test::At(window).KeyboardFocus();
        return focus ? focus->Ref() : nullptr;
    }
};

TEST_F(FocusTest, ControlsAreToldOfClicksTabsAndCalls) {
    const WindowRef window = MakeActive();
    const ControlRef a = Add<QLineEdit>(window);
    const ControlRef b = Add<QLineEdit>(window);
    const ControlRef label = Add<QLabel>(window);
    const ChainHandler onA(UIObject::TargetOf(a), { test::kFocus }, Writes("a"));
    const ChainHandler onB(UIObject::TargetOf(b), { test::kFocus }, Writes("b"));
    Click(*WidgetOf(a));
    EXPECT_EQ(m_log, "a5 ");
    Press(Qt::Key_Tab);
    EXPECT_EQ(m_log, "a5 a0 b5 ");
    EXPECT_TRUE(test::At(window).SetKeyboardFocus(Control::Find(a)));
    EXPECT_TRUE(test::At(window).SetKeyboardFocus(Control::Find(a))); // has it
    EXPECT_EQ(m_log, "a5 a0 b5 b0 a5 ");
    EXPECT_TRUE(WidgetOf(a)->hasFocus());
    EXPECT_EQ(Focus(window), a);
    EXPECT_TRUE(test::At(window).SetKeyboardFocus(nullptr));
    EXPECT_EQ(m_log, "a5 a0 b5 b0 a5 a0 ");
    EXPECT_EQ(Focus(window), nullptr);
    EXPECT_FALSE(test::At(window).SetKeyboardFocus(Control::Find(label)));
    Control::Find(b)->SetEnabled(false);
    EXPECT_FALSE(test::At(window).SetKeyboardFocus(Control::Find(b)));
}

TEST_F(FocusTest, PopupsAndOtherWindowsLeaveItWithTheControl) {
    const WindowRef window = MakeActive();
    const ControlRef a = Add<QLineEdit>(window);
    Click(*WidgetOf(a));
    const ChainHandler onA(UIObject::TargetOf(a), { test::kFocus }, Writes("a"));
    QMenu menu(WidgetOf(a));
    menu.addAction("x");
    menu.popup(Widget(window).mapToGlobal(QPoint(20, 20)));
    QCoreApplication::processEvents();
    menu.close();
    const WindowRef over = MakeActive();
    EXPECT_EQ(Focus(window), a);
    test::Dispose(over);
    test::At(window).Widget().window()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Widget(window)));
    EXPECT_TRUE(WidgetOf(a)->hasFocus());
    EXPECT_EQ(m_log, "");
}

TEST_F(FocusTest, AWindowThatIsNotShownYetTellsItsControls) {
    const WindowRef window = Make();
    const ControlRef a = Add<QLineEdit>(window);
    const ControlRef b = Add<QLineEdit>(window);
    const ChainHandler onA(UIObject::TargetOf(a), { test::kFocus }, Writes("a"));
    const ChainHandler onB(UIObject::TargetOf(b), { test::kFocus }, Writes("b"));
    test::At(window).SetKeyboardFocus(Control::Find(a));
    test::At(window).SetKeyboardFocus(Control::Find(b));
    EXPECT_EQ(m_log, "a5 a0 b5 ");
    test::At(window).Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Widget(window)));
    EXPECT_TRUE(WidgetOf(b)->hasFocus());
    EXPECT_EQ(m_log, "a5 a0 b5 ");
}

TEST_F(FocusTest, AHandlerMayDisposeWhatLosesOrGetsTheFocus) {
    for (const bool getting : { true, false }) {
        const WindowRef window = MakeActive();
        const ControlRef a = Add<QLineEdit>(window);
        const ControlRef b = Add<QLineEdit>(window);
        Click(*WidgetOf(a));
        const ControlRef doomed = getting ? b : a;
        const ChainHandler handler(UIObject::TargetOf(doomed), { test::kFocus },
                                   [doomed, window, getting](auto, auto) {
                                       Control::Find(doomed)->Dispose();
                                       if (getting)
                                           test::Dispose(window);
                                       return kNoErr;
                                   });
        Press(Qt::Key_Tab);
        EXPECT_FALSE(Control::Find(doomed));
        EXPECT_EQ(test::IsThere(window), !getting);
    }
}

TEST_F(FocusTest, GivesAWindowTheKeyboard) {
    const WindowRef first = MakeActive();
    const ControlRef field = Add<QLineEdit>(first);
    MakeActive();
    test::At(first).TakeUserFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Widget(first)));
    EXPECT_TRUE(WidgetOf(field)->hasFocus());
    EXPECT_EQ(FrontWindow(), Window::Find(first));
    FocusFrontWindow();
    EXPECT_TRUE(test::At(first).Widget().isActiveWindow());
}

} // namespace
} // namespace platform
