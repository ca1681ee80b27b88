// SPDX-License-Identifier: BSD-3-Clause
#include "platform/ui/support/WindowsFixture.h"
#include "support/WindowRefs.h"

namespace platform {
namespace {

using test::ChainHandler;

class KeyInputTest : public test::WindowsFixture {
protected:
    void SetUp() override {
        WindowsFixture::SetUp();
        window = MakeActive();
        field = Add<QLineEdit>(window);
        ok = Add<QPushButton>(window, kHICommandOK);
        cancel = Add<QPushButton>(window, kHICommandCancel);
        other = Add<QPushButton>(window, 7);
        test::At(window).SetDefaultButton(Control::Find(ok));
        test::At(window).SetCancelButton(Control::Find(cancel));
        test::At(window).SetKeyboardFocus(Control::Find(field));
    }

    WindowRef window = nullptr;
    ControlRef field = nullptr, ok = nullptr, cancel = nullptr, other = nullptr;
};

TEST_F(KeyInputTest, GoesThroughWindowControlButtonsAndWidget) {
    const ChainHandler commands(UIObject::TargetOf(window), { test::kCommand },
                                Logs("command", kNoErr));
    const ChainHandler first(UIObject::TargetOf(window), { test::kKeyDown },
                             [this](EventHandlerCallRef call, EventRef event) {
                                 m_log += "window ";
                                 const OSStatus status = CallNextEventHandler(call, event);
                                 m_log += "typed:" + TextOf(field).toStdString() + " ";
                                 return status;
                             });
    const ChainHandler second(UIObject::TargetOf(field), { test::kKeyDown }, Logs("control"));
    Press(Qt::Key_X);
    EXPECT_EQ(m_log, "window control typed:x ");
    m_log.clear();
    Press(Qt::Key_Return);
    EXPECT_EQ(m_log, "window control command typed:x ");
    m_log.clear();
    {
        const ChainHandler eats(UIObject::TargetOf(field), { test::kKeyDown },
                                Logs("eaten", kNoErr));
        Press(Qt::Key_Y);
        Press(Qt::Key_Escape);
    }
    EXPECT_EQ(m_log, "window eaten typed:x window eaten typed:x ");
}

TEST_F(KeyInputTest, ReturnAndEscapePressTheirButtonsWithoutAnyHandlerOfKeys) {
    std::vector<std::uint32_t> commands;
    const ChainHandler handler(UIObject::TargetOf(window), { test::kCommand },
                               [&commands](auto, EventRef event) {
                                   commands.push_back(test::CommandOf(event).commandID);
                                   return kNoErr;
                               });
    EXPECT_TRUE(dynamic_cast<QPushButton&>(*WidgetOf(ok)).isDefault()) << "as the user sees";
    Press(Qt::Key_Return);
    Press(Qt::Key_Enter, Qt::KeypadModifier);
    Press(Qt::Key_Escape);
    Press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_THAT(commands, testing::ElementsAre(kHICommandOK, kHICommandOK, kHICommandCancel));
    commands.clear();
    test::At(window).SetKeyboardFocus(Control::Find(other));
    Press(Qt::Key_Return); // a button that has the focus takes it
    Press(Qt::Key_Escape);
    EXPECT_THAT(commands, testing::ElementsAre(7U, kHICommandCancel));
    commands.clear();
    test::At(window).SetKeyboardFocus(Control::Find(field));
    Control::Find(ok)->SetEnabled(false);
    Control::Find(cancel)->Dispose();
    Press(Qt::Key_Return);
    Press(Qt::Key_Escape);
    EXPECT_TRUE(commands.empty());
}

TEST_F(KeyInputTest, EditCommandsGoToTheFocusedField) {
    Press(Qt::Key_A);
    Press(Qt::Key_B);
    EventRef event = nullptr;
    CreateEvent(kEventClassCommand, kEventCommandProcess, &event);
    HICommandExtended command {};
    for (const std::uint32_t id : { kHICommandSelectAll, kHICommandClear }) {
        command.commandID = id;
        SetEventParameter(event, kEventParamDirectObject, kTypeHICommand, sizeof command, &command);
        EXPECT_EQ(SendEventToEventTarget(event, UIObject::TargetOf(window)), kNoErr);
    }
    EXPECT_EQ(TextOf(field), "");
    test::At(window).SetKeyboardFocus(Control::Find(other));
    EXPECT_EQ(SendEventToEventTarget(event, UIObject::TargetOf(window)), kEventNotHandledErr);
    ReleaseEvent(event);
}

TEST_F(KeyInputTest, AnExceptionOfAHandlerStaysInside) {
    const ChainHandler throws(UIObject::TargetOf(window), { test::kKeyDown },
                              [](auto, auto) -> OSStatus { throw std::runtime_error("broken"); });
    Press(Qt::Key_A);
    EXPECT_TRUE(test::At(window).IsVisible());
}

} // namespace
} // namespace platform
