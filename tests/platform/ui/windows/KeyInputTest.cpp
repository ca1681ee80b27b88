// SPDX-License-Identifier: BSD-3-Clause
#include <QKeyEvent>

#include "platform/ui/support/WindowsFixture.h"
#include "platform/ui/windows/Input.h"
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
                                 OSStatus const status = CallNextEventHandler(call, event);
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
                                   commands.push_back(test::CommandIn(event));
                                   return kNoErr;
                               });
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

TEST_F(KeyInputTest, ShowsWhichButtonIsTheDefault) {
    auto& button = dynamic_cast<QPushButton&>(*WidgetOf(ok));
    EXPECT_TRUE(button.isDefault());
    test::At(window).SetDefaultButton(Control::Find(other));
    EXPECT_FALSE(button.isDefault());
    EXPECT_TRUE(dynamic_cast<QPushButton&>(*WidgetOf(other)).isDefault());
    Control::Find(other)->Dispose();
    EXPECT_EQ(test::At(window).DefaultButton(), nullptr);
}

TEST_F(KeyInputTest, KeysHaveTheCodesOfKeyFilters) {
    struct Row {
        int key;
        const char* text;
        Qt::KeyboardModifiers modifiers;
        std::uint32_t keyCode;
        int charCode;
    };
    for (const Row& row : { Row { Qt::Key_1, "1", {}, kVirtualKeyOther, '1' },
                            Row { Qt::Key_Home, "", {}, kVirtualKeyHome, 1 },
                            Row { Qt::Key_Left, "", Qt::ShiftModifier, kVirtualKeyLeft, 28 },
                            Row { Qt::Key_Enter, "\r", Qt::KeypadModifier, kVirtualKeyEnter, 3 },
                            Row { 0xE9, "é", {}, kVirtualKeyOther, -1 },
                            Row { Qt::Key_F1, "", {}, kVirtualKeyOther, 0 },
                            Row { Qt::Key_V, "\x16", Qt::ControlModifier, kVirtualKeyOther, 'v' },
                            Row { Qt::Key_Backtab, "", Qt::ShiftModifier, kVirtualKeyTab, 9 } }) {
        const QKeyEvent key(QEvent::KeyPress, row.key, row.modifiers, QString::fromUtf8(row.text));
        EXPECT_EQ(TranslateKey(key).keyCode, row.keyCode) << std::hex << row.key;
        EXPECT_EQ(TranslateKey(key).charCode, row.charCode) << std::hex << row.key;
    }
}

TEST_F(KeyInputTest, EditCommandsGoToTheFocusedField) {
    Press(Qt::Key_A);
    Press(Qt::Key_B);
    EventRef event = nullptr;
    CreateEvent(kEventClassCommand, kEventCommandProcess, &event);
    HICommandExtended command {};
    for (std::uint32_t const id : { kHICommandSelectAll, kHICommandClear }) {
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
