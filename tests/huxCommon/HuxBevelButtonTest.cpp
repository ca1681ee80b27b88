// SPDX-License-Identifier: BSD-3-Clause
// Colour buttons and their picker.
#include "huxCommon/huxGUI/HuxBevelButton.h"

#include <QColorDialog>

#include "platform/ui/UIFixture.h"

using namespace platform;

namespace {

class HuxBevelButtonTest : public test::UIFixture {
protected:
    void SetUp() override {
        UIFixture::SetUp();
        control = MakeCustom("ColorButton");
        On(control).commandID = 20;
        color.Attach(control);
        color.SetColor({ 0xFFFF, 0x34, 0x56 });
        Activate(window);
        m_commands.emplace(test::At(window).Target(), std::vector { test::kCommand },
                           Logs("command", kNoErr));
    }
    static QColorDialog* Picker() {
        return qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
    }

    ControlRef control = nullptr;
    HuxBevelButton& color = *new HuxBevelButton; // ends with its control

private:
    std::optional<test::ChainHandler> m_commands;
};

TEST_F(HuxBevelButtonTest, AColorThatIsLeftAloneKeepsIts16Bits) {
    Click(*WidgetOf(control));
    EXPECT_EQ(log, "command ") << "not in colour mode";
    color.SetType(HuxBevelButton::kColor);
    Later([] {
        ASSERT_NE(Picker(), nullptr);
        static_cast<QDialog*>(Picker())->accept();
    });
    Click(*WidgetOf(control));
    EXPECT_EQ(color.GetColor().red, 0xFFFF);
    EXPECT_EQ(color.GetColor().blue, 0x56);
    EXPECT_EQ(log, "command command ");
}

TEST_F(HuxBevelButtonTest, MayEndWhileItsColorIsPicked) {
    color.SetType(HuxBevelButton::kColor);
    Later([this] {
        const QPointer<QWidget> picker = Picker();
        ASSERT_TRUE(picker);
        test::Dispose(window);
        if (picker)
            picker->close();
    });
    Click(*WidgetOf(control));
    EXPECT_EQ(Control::Find(control), nullptr);
    EXPECT_EQ(log, "");
}

} // namespace
