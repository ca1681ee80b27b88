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

TEST_F(HuxBevelButtonTest, SendsItsCommandWhenAColorWasPicked) {
    Click(*WidgetOf(control));
    EXPECT_EQ(log, "command ") << "not in colour mode";
    color.SetType(HuxBevelButton::kColor);
    const struct {
        const char* what;
        QColor picked;
        bool accept;
        std::uint16_t red, blue;
        const char* log;
    } rows[] = { { "cancelled", Qt::blue, false, 0xFFFF, 0x56, "" },
                 { "left alone, with its 16 bits", {}, true, 0xFFFF, 0x56, "command " },
                 { "picked", Qt::blue, true, 0, 0xFFFF, "command " } };
    for (const auto& row : rows) {
        log.clear();
        Later([&row] {
            ASSERT_NE(Picker(), nullptr);
            EXPECT_EQ(Picker()->currentColor().red(), 0xFF);
            if (row.picked.isValid())
                Picker()->setCurrentColor(row.picked);
            static_cast<QDialog*>(Picker())->done(row.accept);
        });
        Click(*WidgetOf(control));
        EXPECT_EQ(color.GetColor().red, row.red) << row.what;
        EXPECT_EQ(color.GetColor().blue, row.blue) << row.what;
        EXPECT_EQ(log, row.log) << row.what;
    }
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
