// SPDX-License-Identifier: BSD-3-Clause
#include <QMenu>

#include "platform/ui/UIFixture.h"

namespace platform {
namespace {

using test::ChainHandler;

class FocusTest : public test::UIFixture {
protected:
    void SetUp() override {
        UIFixture::SetUp();
        a = Add<QLineEdit>(window);
        b = Add<QLineEdit>(window);
    }
    // Writes "a5" when a's part 5 gets the focus.
    ChainHandler Notes(ControlRef control, const char* name) {
        return ChainHandler(On(control).Target(), { test::kFocus },
                            [this, name](EventHandlerCallRef call, EventRef event) {
                                const OSStatus status = CallNextEventHandler(call, event);
                                log += name + std::to_string(test::PartOf(event)) + " ";
                                return status;
                            });
    }
    bool Focus(ControlRef control) const {
        return test::At(window).SetKeyboardFocus(Control::Find(control));
    }

    ControlRef a = nullptr, b = nullptr;
};

TEST_F(FocusTest, PopupsAndOtherWindowsLeaveItWithTheControl) {
    Activate(window);
    Click(*WidgetOf(a));
    const ChainHandler onA = Notes(a, "a");
    QMenu menu(WidgetOf(a));
    menu.addAction("x");
    menu.popup(widget->mapToGlobal(QPoint(20, 20)));
    QCoreApplication::processEvents();
    menu.close();
    MakeActiveWindow();
    EXPECT_EQ(test::At(window).KeyboardFocus(), Control::Find(a));
    test::At(window).TakeUserFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(widget));
    EXPECT_TRUE(WidgetOf(a)->hasFocus());
    EXPECT_EQ(FrontWindow(), Window::Find(window));
    EXPECT_EQ(log, "");
}

TEST_F(FocusTest, AWindowThatIsNotShownYetTellsItsControls) {
    const ChainHandler onA = Notes(a, "a"), onB = Notes(b, "b");
    Focus(a);
    Focus(b);
    EXPECT_EQ(log, "a5 a0 b5 ");
    Activate(window);
    EXPECT_TRUE(WidgetOf(b)->hasFocus());
    EXPECT_EQ(log, "a5 a0 b5 ");
}

TEST_F(FocusTest, AHandlerMayDisposeWhatLosesOrGetsTheFocus) {
    Activate(window);
    for (const bool getting : { false, true }) {
        const ControlRef left = getting ? a : Add<QLineEdit>(window);
        const ControlRef doomed = getting ? b : left;
        Click(*WidgetOf(left));
        const ChainHandler handler(On(doomed).Target(), { test::kFocus }, [&](EventRef) {
            On(doomed).Dispose();
            if (getting)
                test::Dispose(window);
            return kNoErr;
        });
        Press(Qt::Key_Tab);
        EXPECT_FALSE(Control::Find(doomed));
        EXPECT_EQ(test::IsThere(window), !getting);
    }
}

} // namespace
} // namespace platform
