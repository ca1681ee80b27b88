// SPDX-License-Identifier: BSD-3-Clause
// Menus and popup buttons: items, values, what the keyboard and the wheel pick, the font menu.
#include <QAbstractItemView>
#include <QApplication>
#include <QTest>
#include <QWheelEvent>
#include <gmock/gmock.h>

#include "platform/Fonts.h"
#include "platform/TextEncoding.h"
#include "platform/ui/ControlsFixture.h"
#include "platform/ui/Menus.h"
#include "platform/ui/menus/PopupButton.h"
#include "support/WindowRefs.h"

namespace platform {
namespace {

class MenusTest : public test::ControlsFixture {
protected:
    void SetUp() override {
        ControlsFixture::SetUp();
        control = MakeCustom("PopupButton");
        button = static_cast<PopupButton*>(WidgetOf(control));
        menu = On(control).PopupMenu();
        hits.emplace(On(control).Target(), std::vector { test::kHit }, [this](EventRef event) {
            EXPECT_EQ(test::PartOf(event), kControlMenuPart);
            picks.push_back(On(control).Value());
            return kEventNotHandledErr;
        });
    }
    void TearDown() override {
        hits.reset();
        ControlsFixture::TearDown();
    }
    void Show() {
        test::At(window).Show();
        widget->activateWindow();
        button->setFocus();
        ASSERT_TRUE(QTest::qWaitForWindowActive(widget));
    }
    // One registered string, two of the history, and commands, as a list of strings shows them.
    void FillWithStrings() {
        for (const char* text : { "Pan", "-", "Truck up", "Zoom", "-", "Clear history" })
            menu->Append(text);
    }
    void Wheel(int eighths) {
        const QPointF place = button->rect().center();
        QWheelEvent event(place, button->mapToGlobal(place), {}, { 0, eighths }, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(button, &event);
    }

    ControlRef control = nullptr;
    PopupButton* button = nullptr;
    Menu* menu = nullptr;
    std::optional<test::ChainHandler> hits;
    std::vector<std::int32_t> picks;
};

TEST_F(MenusTest, ItemsCountFromOneAndCarryTheirData) {
    menu->Append("3");
    EXPECT_EQ(menu->Append("-", 0, kMenuItemAttrIgnoreMeta), 2);
    EXPECT_EQ(menu->Append("日本 & 語", -7), 3);
    EXPECT_TRUE(menu->SetChecked(3, true));
    menu->Delete(1, 1);
    EXPECT_EQ(menu->Count(), 2);
    EXPECT_EQ(menu->Item(1)->text, "-");
    EXPECT_FALSE(menu->Item(1)->checked || menu->Item(1)->IsSeparator());
    EXPECT_EQ(menu->Item(2)->text, "日本 & 語");
    EXPECT_EQ(menu->Item(2)->refCon, -7);
    EXPECT_TRUE(menu->Item(2)->checked);

    EXPECT_FALSE(menu->SetChecked(0, true) || menu->SetText(3, "") || menu->SetSubmenu(3, nullptr));
    menu->Delete(3, 1);
    EXPECT_EQ(menu->Count(), 2);
    menu->Delete(1, 100); // as many as there are
    EXPECT_EQ(menu->Item(1), nullptr);
}

TEST_F(MenusTest, TheValueOutlivesChangesOfTheMenuWhereItCan) {
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

TEST_F(MenusTest, AFormGivesItemsAsToAComboBox) {
    button->addItem(QStringLiteral("IDS_ONE"));
    button->addItem(QStringLiteral("-"));
    button->addItem(QStringLiteral("Three"));
    button->setItemText(0, QStringLiteral("One"));
    EXPECT_EQ(menu->Count(), 3);
    EXPECT_EQ(menu->Item(1)->text, "One");
    EXPECT_EQ(On(control).Value(), 1) << "a form's popup starts with its first item";
    EXPECT_FALSE(button->model()->flags(button->model()->index(1, 0)) & Qt::ItemIsEnabled);
}

TEST_F(MenusTest, StepsOfAClosedButtonStayBetweenSeparators) {
    FillWithStrings();
    On(control).SetValue(3);
    Show();
    struct Row {
        Qt::Key key;
        std::int32_t value;
    };
    for (const Row& row : { Row { Qt::Key_Down, 4 }, Row { Qt::Key_Down, 4 }, Row { Qt::Key_Up, 3 },
                            Row { Qt::Key_Up, 3 }, Row { Qt::Key_End, 4 }, Row { Qt::Key_Home, 3 },
                            Row { Qt::Key_Z, 4 }, Row { Qt::Key_T, 3 } }) {
        button->view()->keyboardSearch({}); // each letter is a search of its own
        QTest::keyClick(button, row.key);
        EXPECT_EQ(On(control).Value(), row.value) << row.key;
    }
    EXPECT_THAT(picks, testing::ElementsAre(4, 3, 4, 3, 4, 3)) << "a step to nowhere is no pick";

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

TEST_F(MenusTest, TheWheelTurnsOnlyWhatHasTheFocus) {
    FillWithStrings();
    On(control).SetValue(3);
    Show();
    Wheel(-60);
    EXPECT_EQ(On(control).Value(), 3);
    Wheel(-60);
    EXPECT_EQ(On(control).Value(), 4);
    button->clearFocus();
    Wheel(120);
    EXPECT_EQ(On(control).Value(), 4);
    EXPECT_THAT(picks, testing::ElementsAre(4));
}

TEST_F(MenusTest, TheOpenListSkipsWhatIsNoItemAndEscapeKeepsTheValue) {
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
    EXPECT_THAT(rows, testing::ElementsAre(2, 3, 5, 7, 7));
    QTest::keyClick(button->view(), Qt::Key_Escape);
    EXPECT_FALSE(button->view()->isVisible());
    EXPECT_EQ(On(control).Value(), 1);
    EXPECT_TRUE(picks.empty());
}

TEST_F(MenusTest, AnItemOfASubmenuKeepsTheValueOfItsTitle) {
    for (const char* text : { "Plain", "More", "Last" })
        menu->Append(text);
    auto made = std::make_unique<Menu>();
    Menu& below = *made;
    below.Append("First");
    ASSERT_TRUE(menu->SetSubmenu(2, std::move(made)));
    below.Append("Second");
    On(control).SetValue(1);
    Show();
    button->showPopup();
    QTest::keyClick(button->view(), Qt::Key_Down); // over the title
    QTest::keyClick(button->view(), Qt::Key_Down);
    QTest::keyClick(button->view(), Qt::Key_Return);
    EXPECT_EQ(button->currentText(), "Second");
    EXPECT_THAT(picks, testing::ElementsAre(2));

    below.SetChecked(1, true);
    EXPECT_EQ(button->currentText(), "Second") << "the pick is remembered below its title";
    menu->ClearChecks();
    EXPECT_FALSE(below.Item(1)->checked);
    const MenuRef gone = below.Ref();
    menu->SetSubmenu(2, nullptr);
    EXPECT_EQ(button->currentText(), "More");
    EXPECT_EQ(Menu::Find(gone), nullptr);
}

TEST_F(MenusTest, APickMayDisposeOfTheWindow) {
    FillWithStrings();
    Show();
    const MenuRef shown = menu->Ref();
    const test::ChainHandler disposer(On(control).Target(), { test::kHit }, [&](EventRef) {
        test::Dispose(window);
        return kNoErr;
    });
    button->showPopup();
    QTest::keyClick(button->view(), Qt::Key_End);
    QTest::keyClick(button->view(), Qt::Key_Return);
    EXPECT_FALSE(test::IsThere(window));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Menu::Find(shown), nullptr);
    widget = nullptr; // is gone
}

FontNumber NumberOf(std::string_view utf8) {
    const std::string bytes = EncodeText(utf8).bytes;
    std::string name(1, static_cast<char>(bytes.size()));
    name += bytes;
    FontNumber number = 0;
    GetFNum(reinterpret_cast<const std::uint8_t*>(name.data()), &number);
    return number;
}

TEST_F(MenusTest, TheFontMenuHasEachFamilyAndFindsItUnderAnyName) {
    menu->Append("Before");
    menu->Append("After");
    menu->InsertFontFamilies(1);
    const std::vector<FontFamily> families = InstalledFontFamilies();
    ASSERT_FALSE(families.empty());
    EXPECT_EQ(menu->Count(), families.size() + 2);
    EXPECT_EQ(menu->Item(menu->Count())->text, "After");

    MenuItemIndex expected = 2;
    for (const FontFamily& family : families) {
        EXPECT_EQ(menu->Item(expected)->text, family.name);
        std::vector<std::string> names = family.aliases;
        names.push_back(family.name);
        for (const std::string& name : names) {
            EXPECT_EQ(menu->FontFamilyOf(expected), NumberOf(name)) << name;
            EXPECT_EQ(menu->FindFontFamily(NumberOf(name)), expected) << name;
        }
        ++expected;
    }
    EXPECT_EQ(menu->FontFamilyOf(1), std::nullopt);
    menu->Delete(2, static_cast<MenuItemIndex>(families.size()));
    EXPECT_EQ(menu->FindFontFamily(NumberOf(families[0].name)), 0);
}

} // namespace
} // namespace platform
