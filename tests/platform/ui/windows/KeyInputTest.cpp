// SPDX-License-Identifier: BSD-3-Clause
#include "platform/ui/UIFixture.h"

namespace platform {
namespace {

using test::ChainHandler;

class KeyInputTest : public test::UIFixture {
protected:
    void SetUp() override {
        UIFixture::SetUp();
        field = Add<QLineEdit>(window);
        ok = Add<QPushButton>(window, kHICommandOK);
        cancel = Add<QPushButton>(window, kHICommandCancel);
        other = Add<QPushButton>(window, 7);
        test::At(window).SetDefaultButton(Control::Find(ok));
        test::At(window).SetCancelButton(Control::Find(cancel));
        Activate(window);
        test::At(window).SetKeyboardFocus(Control::Find(field));
    }
    std::string Typed() const { return *On(field).Text(); }

    ControlRef field = nullptr, ok = nullptr, cancel = nullptr, other = nullptr;
};

TEST_F(KeyInputTest, GoesThroughWindowControlButtonsAndWidget) {
    const ChainHandler commands(test::At(window).Target(), { test::kCommand },
                                Logs("command", kNoErr));
    const ChainHandler first(test::At(window).Target(), { test::kKeyDown },
                             [this](EventHandlerCallRef call, EventRef event) {
                                 log += "window ";
                                 const OSStatus status = CallNextEventHandler(call, event);
                                 log += "typed:" + Typed() + " ";
                                 return status;
                             });
    const ChainHandler second(On(field).Target(), { test::kKeyDown }, Logs("control"));
    Press(Qt::Key_X);
    Press(Qt::Key_Return);
    EXPECT_EQ(log, "window control typed:x window control command typed:x ");
    log.clear();
    const ChainHandler eats(On(field).Target(), { test::kKeyDown }, Logs("eaten", kNoErr));
    Press(Qt::Key_Y);
    Press(Qt::Key_Escape);
    EXPECT_EQ(log, "window eaten typed:x window eaten typed:x ");
}

TEST_F(KeyInputTest, ReturnAndEscapePressTheirButtonsWithoutAnyHandlerOfKeys) {
    std::vector<std::uint32_t> commands;
    const ChainHandler handler(test::At(window).Target(), { test::kCommand }, [&](EventRef event) {
        commands.push_back(test::CommandOf(event).commandID);
        return kNoErr;
    });
    EXPECT_TRUE(dynamic_cast<QPushButton&>(*WidgetOf(ok)).isDefault()) << "as the user sees";
    Press(Qt::Key_Return);
    Press(Qt::Key_Enter, Qt::KeypadModifier);
    Press(Qt::Key_Escape);
    Press(Qt::Key_Return, Qt::ControlModifier);
    test::At(window).SetKeyboardFocus(Control::Find(other));
    Press(Qt::Key_Return); // a button that has the focus takes it
    Press(Qt::Key_Escape);
    test::At(window).SetKeyboardFocus(Control::Find(field));
    On(ok).SetEnabled(false);
    On(cancel).Dispose();
    Press(Qt::Key_Return);
    Press(Qt::Key_Escape);
    EXPECT_THAT(commands, testing::ElementsAre(kHICommandOK, kHICommandOK, kHICommandCancel, 7U,
                                               kHICommandCancel));
}

TEST_F(KeyInputTest, EditCommandsGoToTheFocusedField) {
    Press(Qt::Key_A);
    const auto send = [this](std::uint32_t id) {
        const MadeEvent event(kEventClassCommand, kEventCommandProcess);
        event.Set(kEventParamDirectObject, kTypeHICommand, HICommandExtended { 0, id, {} });
        return SendEventToEventTarget(event.Get(), test::At(window).Target());
    };
    EXPECT_EQ(send(kHICommandSelectAll), kNoErr);
    EXPECT_EQ(send(kHICommandClear), kNoErr);
    EXPECT_EQ(Typed(), "");
    test::At(window).SetKeyboardFocus(Control::Find(other));
    EXPECT_EQ(send(kHICommandClear), kEventNotHandledErr);
}

TEST_F(KeyInputTest, AnExceptionOfAHandlerStaysInside) {
    const ChainHandler throws(test::At(window).Target(), { test::kKeyDown },
                              [](EventRef) -> OSStatus { throw std::runtime_error("broken"); });
    Press(Qt::Key_A);
    EXPECT_TRUE(test::At(window).IsVisible());
}

} // namespace
} // namespace platform
