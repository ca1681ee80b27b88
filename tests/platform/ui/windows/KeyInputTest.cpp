// SPDX-License-Identifier: BSD-3-Clause
#include <QKeyEvent>
#include <QPlainTextEdit>

#include "platform/ui/support/WindowsFixture.h"
#include "platform/ui/windows/Keys.h"

namespace platform {
namespace {

using test::ChainHandler;

std::uint32_t Number(EventRef event, OSType name) {
    std::uint32_t value = 0;
    GetEventParameter(event, name, kTypeUInt32, nullptr, sizeof value, nullptr, &value);
    return value;
}

class KeyInputTest : public test::WindowsFixture {
protected:
    void SetUp() override {
        WindowsFixture::SetUp();
        window = MakeActive();
        field = Add<QLineEdit>(window);
        ok = Add<QPushButton>(window, kHICommandOK);
        cancel = Add<QPushButton>(window, kHICommandCancel);
        other = Add<QPushButton>(window, 7);
        SetWindowDefaultButton(window, ok);
        SetWindowCancelButton(window, cancel);
        SetKeyboardFocus(window, field, kControlEditTextPart);
    }

    WindowRef window = nullptr;
    ControlRef field = nullptr, ok = nullptr, cancel = nullptr, other = nullptr;
};

TEST_F(KeyInputTest, GoesThroughWindowControlButtonsAndWidget) {
    ChainHandler const commands(GetWindowEventTarget(window), { test::kCommand },
                                Logs("command", kNoErr));
    ChainHandler const first(GetWindowEventTarget(window), { test::kKeyDown },
                             [this](EventHandlerCallRef call, EventRef event) {
                                 m_log += "window ";
                                 OSStatus const status = CallNextEventHandler(call, event);
                                 m_log += "typed:" + TextOf(field).toStdString() + " ";
                                 return status;
                             });
    ChainHandler const second(Control::Find(field)->Target(), { test::kKeyDown }, Logs("control"));
    Press(Qt::Key_X);
    EXPECT_EQ(m_log, "window control typed:x ");
    m_log.clear();
    Press(Qt::Key_Return);
    EXPECT_EQ(m_log, "window control command typed:x ");
    m_log.clear();
    {
        ChainHandler const eats(Control::Find(field)->Target(), { test::kKeyDown },
                                Logs("eaten", kNoErr));
        Press(Qt::Key_Y);
        Press(Qt::Key_Escape);
    }
    EXPECT_EQ(m_log, "window eaten typed:x window eaten typed:x ");
}

TEST_F(KeyInputTest, ReturnAndEscapePressTheirButtonsWithoutAnyHandlerOfKeys) {
    std::vector<std::uint32_t> commands;
    ChainHandler const handler(GetWindowEventTarget(window), { test::kCommand },
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
    SetKeyboardFocus(window, other, kControlButtonPart);
    Press(Qt::Key_Return); // a button that has the focus takes it
    Press(Qt::Key_Escape);
    EXPECT_THAT(commands, testing::ElementsAre(7U, kHICommandCancel));
    commands.clear();
    SetKeyboardFocus(window, field, kControlEditTextPart);
    Control::Find(ok)->SetEnabled(false);
    Control::Find(cancel)->Dispose();
    Press(Qt::Key_Return);
    Press(Qt::Key_Escape);
    EXPECT_TRUE(commands.empty());
}

TEST_F(KeyInputTest, WithoutTheDefaultButtonReturnIsTyped) {
    auto const lines = Add<QPlainTextEdit>(window);
    SetKeyboardFocus(window, lines, kControlEditTextPart);
    ChainHandler const handler(GetWindowEventTarget(window), { test::kKeyDown },
                               [this](EventHandlerCallRef call, EventRef event) {
                                   if (Number(event, kEventParamKeyCode) != kVirtualKeyReturn)
                                       return kEventNotHandledErr;
                                   SetWindowDefaultButton(window, nullptr);
                                   OSStatus const status = CallNextEventHandler(call, event);
                                   SetWindowDefaultButton(window, ok);
                                   return status;
                               });
    ChainHandler const commands(GetWindowEventTarget(window), { test::kCommand },
                                Logs("command", kNoErr));
    Press(Qt::Key_A);
    Press(Qt::Key_Return);
    Press(Qt::Key_B);
    EXPECT_EQ(dynamic_cast<QPlainTextEdit&>(*WidgetOf(lines)).toPlainText(), "a\nb");
    EXPECT_EQ(m_log, "");
}

TEST_F(KeyInputTest, ShowsWhichButtonIsTheDefault) {
    auto& button = dynamic_cast<QPushButton&>(*WidgetOf(ok));
    EXPECT_TRUE(button.isDefault());
    SetWindowDefaultButton(window, other);
    EXPECT_FALSE(button.isDefault());
    ControlRef now = nullptr;
    GetWindowDefaultButton(window, &now);
    EXPECT_EQ(now, other);
    EXPECT_EQ(SetWindowDefaultButton(window, Add<QPushButton>(Make())), kErrInvalidControl);
    Control::Find(other)->Dispose();
    GetWindowDefaultButton(window, &now);
    EXPECT_EQ(now, nullptr);
}

TEST_F(KeyInputTest, KeysCarryCodesAndModifiers) {
    std::vector<std::uint32_t> codes;
    ChainHandler const handler(GetWindowEventTarget(window), { test::kKeyDown },
                               [&codes](auto, EventRef event) {
                                   char character = 0;
                                   GetEventParameter(event, kEventParamKeyMacCharCodes, kTypeChar,
                                                     nullptr, 1, nullptr, &character);
                                   codes.push_back(Number(event, kEventParamKeyCode));
                                   codes.push_back(static_cast<unsigned char>(character));
                                   codes.push_back(Number(event, kEventParamKeyModifiers));
                                   EXPECT_EQ(GetCurrentEventKeyModifiers(), codes.back());
                                   return kEventNotHandledErr;
                               });
    Press(Qt::Key_Left, Qt::ShiftModifier);
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_Shift); // is no key of its own
    EXPECT_THAT(codes, testing::ElementsAre(kVirtualKeyLeft, 28, kShiftKey, kVirtualKeyOther, 'a',
                                            kCmdKey));
}

TEST_F(KeyInputTest, CharactersAreThoseOfKeyFilters) {
    struct Row {
        int key;
        const char* text;
        Qt::KeyboardModifiers modifiers;
        int charCode;
    };
    for (Row const& row :
         { Row { Qt::Key_1, "1", {}, '1' }, Row { Qt::Key_Home, "", {}, 1 },
           Row { Qt::Key_Enter, "\r", Qt::KeypadModifier, 3 }, Row { Qt::Key_Return, "\r", {}, 13 },
           Row { 0xE9, "é", {}, -1 }, Row { Qt::Key_F1, "", {}, 0 },
           Row { Qt::Key_V, "\x16", Qt::ControlModifier, 'v' },
           Row { Qt::Key_Backtab, "", Qt::ShiftModifier, 9 },
           Row { Qt::Key_Delete, "\x7f", {}, 127 } }) {
        QKeyEvent const key(QEvent::KeyPress, row.key, row.modifiers, QString::fromUtf8(row.text));
        EXPECT_EQ(TranslateKey(key).charCode, row.charCode) << std::hex << row.key;
    }
}

TEST_F(KeyInputTest, EditCommandsGoToTheFocusedField) {
    Press(Qt::Key_A);
    Press(Qt::Key_B);
    EventRef event = nullptr;
    CreateEvent(kEventClassCommand, kEventCommandProcess, 0, &event);
    HICommandExtended command {};
    for (std::uint32_t const id : { kHICommandSelectAll, kHICommandClear }) {
        command.commandID = id;
        SetEventParameter(event, kEventParamDirectObject, kTypeHICommand, sizeof command, &command);
        EXPECT_EQ(SendEventToEventTarget(event, GetWindowEventTarget(window)), kNoErr);
    }
    EXPECT_EQ(TextOf(field), "");
    SetKeyboardFocus(window, other, kControlButtonPart);
    EXPECT_EQ(SendEventToEventTarget(event, GetWindowEventTarget(window)), kEventNotHandledErr);
    ReleaseEvent(event);
}

TEST_F(KeyInputTest, AnExceptionOfAHandlerStaysInside) {
    ChainHandler const throws(GetWindowEventTarget(window), { test::kKeyDown },
                              [](auto, auto) -> OSStatus { throw std::runtime_error("broken"); });
    Press(Qt::Key_A);
    EXPECT_TRUE(IsWindowVisible(window));
}

} // namespace
} // namespace platform
