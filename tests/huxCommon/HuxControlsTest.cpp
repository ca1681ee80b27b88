// SPDX-License-Identifier: BSD-3-Clause
// The small wrappers: popup and colour buttons.
#include <QAbstractButton>
#include <QColorDialog>
#include <gmock/gmock.h>

#include "huxCommon/ToolkitForms.h"
#include "huxCommon/huxGUI/HuxBevelButton.h"
#include "huxCommon/huxGUI/HuxPopupButton.h"

using namespace platform;

namespace {

class ControlsDialog : public HuxDialogImpl {
public:
    explicit ControlsDialog(const test::ToolkitBundle& bundle) { SetBundle(bundle.Get()); }

    const char* GetWindowName() override { return "Controls"; }
    const char* GetNibName() override { return "Toolkit"; }
    void _AttachControls() override {
        AttachControl(popup, 10);
        AttachControl(color, 20);
    }
    OSStatus HandleEventCurrentSelf(EventHandlerCallRef, EventRef event) override {
        std::uint32_t commandID = 0;
        if (HuxCarbonEvent(event, true)
                .GetCommandParameter(&commandID, nullptr, nullptr, nullptr) != kNoErr)
            return kEventNotHandledErr;
        commands.push_back(commandID);
        return kNoErr;
    }

    HuxPopupButton popup;
    HuxBevelButton color;
    std::vector<std::uint32_t> commands;
};

class HuxControlsTest : public testing::Test {
protected:
    HuxControlsTest() {
        m_bundle.AddForm("Controls", { { "PopupButton", 10 }, { "ColorButton", 20 } });
        EXPECT_EQ(m_dialog.CreateDialog(), kNoErr);
        m_dialog.ShowWindow();
    }

    test::ToolkitBundle m_bundle;
    ControlsDialog m_dialog { m_bundle };
};

using testing::ElementsAre;

TEST_F(HuxControlsTest, APopupFindsItemsByTheirReferenceValues) {
    HuxPopupButton& popup = m_dialog.popup;
    popup.DeleteAllItems();
    EXPECT_EQ(popup.GetSelectRefCon(), std::nullopt);
    EXPECT_EQ(popup.AppendItem("a", 1000), 1);
    popup.AppendSeparator();
    EXPECT_EQ(popup.AppendItem("-(b", 7, kMenuItemAttrIgnoreMeta), 3);
    EXPECT_EQ(popup.AppendItem("c", 1000), 4);
    EXPECT_EQ(popup.CountItems(), 4);
    EXPECT_EQ(popup.GetItemText(3), HuxString("-(b"));
    EXPECT_EQ(popup.FindItem(1000), 1);
    EXPECT_EQ(popup.FindLastItem(1000), 4);
    EXPECT_EQ(popup.FindItem(8), 0);
    EXPECT_EQ(popup.GetItemRefCon(99), 0);
    popup.SetValue(3);
    EXPECT_EQ(popup.GetSelectRefCon(), 7);
    popup.SetValue(0);
    EXPECT_EQ(popup.GetSelectRefCon(), std::nullopt);
}

TEST_F(HuxControlsTest, APopupPicksInstalledFamiliesByName) {
    HuxPopupButton& popup = m_dialog.popup;
    ASSERT_EQ(popup.AppendFontMenu(), kNoErr);
    EXPECT_EQ(popup.GetMaximum(), popup.CountItems());
    const std::vector<FontFamily> families = InstalledFontFamilies();
    for (const std::string& family : { families.at(0).name, families.back().name }) {
        unsigned char name[256], picked[256];
        HuxString::FromUTF8(family).GetPascalString(name);
        EXPECT_TRUE(popup.SetFontFamilyName(name)) << family;
        EXPECT_TRUE(popup.GetFontFamilyName(picked)) << family;
        EXPECT_EQ(HuxString(picked).GetUTF8(), family);
    }
    unsigned char name[256];
    HuxString("No Such Family At All").GetPascalString(name);
    EXPECT_FALSE(popup.SetFontFamilyName(name));
    EXPECT_EQ(popup.GetValue(), 0);
    EXPECT_FALSE(popup.GetFontFamilyName(name));
}

TEST_F(HuxControlsTest, AColorButtonSendsItsCommandWhenAColorWasPicked) {
    m_dialog.color.SetColor({ 0xFFFF, 0, 0 });
    test::Click(m_dialog.GetWindowRef(), "w20");
    EXPECT_THAT(m_dialog.commands, ElementsAre(20)) << "not in colour mode";
    m_dialog.color.SetType(HuxBevelButton::kColor);
    for (const bool accept : { false, true }) {
        test::Later([accept] {
            auto* const picker = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(picker, nullptr);
            EXPECT_EQ(picker->currentColor(), QColor(Qt::red));
            picker->setCurrentColor(Qt::blue);
            static_cast<QDialog*>(picker)->done(accept);
        });
        test::Click(m_dialog.GetWindowRef(), "w20");
        EXPECT_EQ(m_dialog.color.GetColor().red, accept ? 0 : 0xFFFF);
        EXPECT_EQ(m_dialog.color.GetColor().blue, accept ? 0xFFFF : 0);
        EXPECT_EQ(m_dialog.commands.size(), accept ? 2u : 1u);
    }
}

TEST_F(HuxControlsTest, ADialogMayEndWhileItsColorIsPicked) {
    m_dialog.color.SetType(HuxBevelButton::kColor);
    test::Later([this] {
        QWidget* const picker = QApplication::activeModalWidget();
        m_dialog.Dispose();
        if (picker)
            picker->close();
    });
    test::Click(m_dialog.GetWindowRef(), "w20");
    EXPECT_EQ(m_dialog.color.GetControlRef(), nullptr);
    EXPECT_THAT(m_dialog.commands, ElementsAre());
}

} // namespace
