// SPDX-License-Identifier: BSD-3-Clause
// Menus and popup buttons: items, values, what the keyboard and the wheel pick, the font menu.
#include "huxCommon/huxGUI/HuxPopupButton.h"

#include <optional>

#include <QAbstractItemView>

#include "platform/Fonts.h"
#include "platform/ui/UIFixture.h"
#include "platform/ui/menus/PopupButton.h"

using namespace platform;

namespace {

using testing::ElementsAre;

class HuxPopupButtonTest : public test::UIFixture {
protected:
    void SetUp() override {
        UIFixture::SetUp();
        control = MakeCustom("PopupButton");
        popup.Attach(control);
        button = static_cast<PopupButton*>(WidgetOf(control));
        menu = popup.GetMenu();
        hits.emplace(On(control).Target(), std::vector { test::kHit }, [this](EventRef event) {
            EXPECT_EQ(test::PartOf(event), kControlMenuPart);
            picks.push_back(On(control).Value());
            return kEventNotHandledErr;
        });
    }
    void TearDown() override {
        hits.reset();
        UIFixture::TearDown();
    }
    void Show() {
        Activate(window);
        button->setFocus();
    }
    // One registered string, two of the history, and commands, as a list of strings shows them.
    void FillWithStrings() {
        for (const char* text : { "Pan", "-", "Truck up", "Zoom", "-", "Clear history" })
            menu->Append(text);
    }

    ControlRef control = nullptr;
    HuxPopupButton& popup = *new HuxPopupButton; // ends with its control
    PopupButton* button = nullptr;
    Menu* menu = nullptr;
    std::optional<test::ChainHandler> hits;
    std::vector<std::int32_t> picks;
};

TEST_F(HuxPopupButtonTest, ItemsCountFromOneAndCarryTheirData) {
    EXPECT_EQ(popup.GetSelectRefCon(), std::nullopt);
    EXPECT_EQ(popup.AppendItem("a", 1000), 1);
    popup.AppendSeparator();
    EXPECT_EQ(popup.AppendItem("-(b", -7, kMenuItemAttrIgnoreMeta), 3);
    EXPECT_EQ(popup.AppendItem(HuxString::FromUTF8("日本 & 語"), 1000), 4);
    EXPECT_EQ(popup.FindItem(1000), 1);
    EXPECT_EQ(popup.FindLastItem(1000), 4);
    EXPECT_EQ(popup.FindItem(8), 0);
    popup.SetValue(3);
    EXPECT_EQ(popup.GetSelectRefCon(), -7);
    EXPECT_TRUE(menu->SetChecked(4, true));
    menu->Delete(1, 2);
    EXPECT_EQ(popup.CountItems(), 2);
    EXPECT_EQ(menu->Item(1)->text, "-(b");
    EXPECT_FALSE(menu->Item(1)->checked || menu->Item(1)->IsSeparator());
    EXPECT_EQ(menu->Item(2)->text, "日本 & 語");
    EXPECT_EQ(popup.GetItemRefCon(2), 1000);
    EXPECT_TRUE(menu->Item(2)->checked);

    EXPECT_FALSE(menu->SetChecked(0, true) || menu->SetText(3, ""));
    menu->Delete(3, 1);
    EXPECT_EQ(popup.CountItems(), 2);
    menu->Delete(1, 100); // as many as there are
    EXPECT_EQ(menu->Item(1), nullptr);
    EXPECT_EQ(popup.GetItemRefCon(1), 0);
}

TEST_F(HuxPopupButtonTest, TheValueOutlivesChangesOfTheMenuWhereItCan) {
    menu->Append("3");
    menu->Append("4");
    EXPECT_EQ(On(control).Value(), 0) << "a new item is not picked by itself";
    On(control).SetValue(2);
    menu->Append("5");
    EXPECT_EQ(On(control).Value(), 2);
    EXPECT_EQ(On(control).Maximum(), 3);
    On(control).SetMaximum(1);
    On(control).SetValue(3);
    EXPECT_EQ(On(control).Value(), 3) << "the menu says how many values there are";
    menu->Delete(3, 1);
    EXPECT_EQ(On(control).Value(), 0);
    menu->Append("-");
    On(control).SetValue(3);
    EXPECT_EQ(On(control).Value(), 3) << "a separator, since a caller asks for it";
    EXPECT_EQ(button->currentText(), "");
    On(control).SetValue(0);
    EXPECT_EQ(button->currentIndex(), -1);
    EXPECT_TRUE(picks.empty()) << "only the user picks";
}

TEST_F(HuxPopupButtonTest, StepsOfAClosedButtonStayBetweenSeparators) {
    FillWithStrings();
    On(control).SetValue(3);
    Show();
    for (const auto& [key, value] : { std::pair(Qt::Key_Down, 4),
                                      { Qt::Key_Down, 4 },
                                      { Qt::Key_Up, 3 },
                                      { Qt::Key_Up, 3 },
                                      { Qt::Key_End, 4 },
                                      { Qt::Key_Home, 3 },
                                      { Qt::Key_Z, 4 },
                                      { Qt::Key_T, 3 } }) {
        button->view()->keyboardSearch({}); // each letter is a search of its own
        QTest::keyClick(button, key);
        EXPECT_EQ(On(control).Value(), value) << key;
    }
    EXPECT_THAT(picks, ElementsAre(4, 3, 4, 3, 4, 3)) << "a step to nowhere is no pick";

    button->view()->keyboardSearch({});
    QTest::keyClick(button, Qt::Key_C); // a command, beyond a separator: shown, not picked
    EXPECT_TRUE(button->view()->isVisible());
    EXPECT_EQ(On(control).Value(), 3);
    QTest::keyClick(button->view(), Qt::Key_Return);
    EXPECT_EQ(On(control).Value(), 6);
    EXPECT_EQ(picks.back(), 6);
    QTest::keyClick(button, Qt::Key_Space);
    QTest::keyClick(button->view(), Qt::Key_Return);
    EXPECT_EQ(picks.size(), 8U) << "the same item again is a pick";
}

TEST_F(HuxPopupButtonTest, TheWheelTurnsOnlyWhatHasTheFocus) {
    FillWithStrings();
    On(control).SetValue(3);
    Show();
    Turn(*button, -60);
    EXPECT_EQ(On(control).Value(), 3);
    Turn(*button, -60);
    EXPECT_EQ(On(control).Value(), 4);
    button->clearFocus();
    Turn(*button, 120);
    EXPECT_EQ(On(control).Value(), 4);
    EXPECT_THAT(picks, ElementsAre(4));
}

TEST_F(HuxPopupButtonTest, TheOpenListSkipsWhatIsNoItemAndEscapeKeepsTheValue) {
    FillWithStrings();
    menu->Append("Edit", 0, kMenuItemAttrDisabled);
    menu->Append("Last");
    On(control).SetValue(1);
    Show();
    button->showPopup();
    std::vector<int> rows;
    for (int i = 0; i < 5; ++i) {
        QTest::keyClick(button->view(), Qt::Key_Down);
        rows.push_back(button->view()->currentIndex().row());
    }
    EXPECT_THAT(rows, ElementsAre(2, 3, 5, 7, 7));
    QTest::keyClick(button->view(), Qt::Key_Escape);
    EXPECT_FALSE(button->view()->isVisible());
    EXPECT_EQ(On(control).Value(), 1);
    EXPECT_TRUE(picks.empty());
}

TEST_F(HuxPopupButtonTest, TheFontMenuHasEachFamilyAndFindsItUnderAnyName) {
    menu->Append("Before");
    ASSERT_EQ(popup.AppendFontMenu(), kNoErr);
    const std::vector<FontFamily> families = InstalledFontFamilies();
    ASSERT_FALSE(families.empty());
    EXPECT_EQ(menu->Count(), families.size() + 1);

    std::int32_t expected = 2;
    unsigned char pascal[256];
    for (const FontFamily& family : families) {
        std::vector<std::string> names = family.aliases;
        names.push_back(family.name);
        for (const std::string& name : names) {
            HuxString::FromUTF8(name).GetPascalString(pascal);
            EXPECT_TRUE(popup.SetFontFamilyName(pascal)) << name;
            EXPECT_EQ(popup.GetValue(), expected) << name;
        }
        EXPECT_TRUE(popup.GetFontFamilyName(pascal)) << family.name;
        EXPECT_EQ(HuxString(pascal).GetUTF8(), family.name);
        EXPECT_EQ(button->currentText().toStdString(), family.name);
        ++expected;
    }
    HuxString("No Such Family At All").GetPascalString(pascal);
    EXPECT_FALSE(popup.SetFontFamilyName(pascal));
    EXPECT_EQ(popup.GetValue(), 0);
    EXPECT_FALSE(popup.GetFontFamilyName(pascal));
    popup.SetValue(1);
    EXPECT_FALSE(popup.GetFontFamilyName(pascal)) << "no family's item";
}

} // namespace
