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
#include "platform/ui/QtStrings.h"
#include "platform/ui/menus/PopupButton.h"

namespace platform {
namespace {

struct StringReleaser {
    void operator()(CFStringRef string) const { CFRelease(string); }
};
using String = std::unique_ptr<const CFString, StringReleaser>;

MenuItemIndex Append(MenuRef menu, std::string_view text, std::uint32_t attributes = 0,
                     std::uint32_t commandID = 0) {
    MenuItemIndex index = 0;
    const String string(CFStringCreateWithUTF8(text));
    EXPECT_EQ(AppendMenuItemTextWithCFString(menu, string.get(), attributes, commandID, &index),
              kNoErr);
    return index;
}

std::string TextOf(MenuRef menu, MenuItemIndex item) {
    CFStringRef text = nullptr;
    if (CopyMenuItemTextAsCFString(menu, item, &text) != kNoErr)
        return "(none)";
    return std::string(CFStringGetUTF8(String(text).get()));
}

MenuRef NewMenu() {
    MenuRef menu = nullptr;
    EXPECT_EQ(CreateNewMenu(1, &menu), kNoErr);
    return menu;
}

class MenusTest : public test::ControlsFixture {
protected:
    void SetUp() override {
        ControlsFixture::SetUp();
        control = MakeCustom("PopupButton");
        ASSERT_NE(control, nullptr);
        button = static_cast<PopupButton*>(WidgetOf(control));
        ASSERT_EQ(GetControlData(control, kControlMenuPart, kControlPopupMenu, sizeof menu, &menu,
                                 nullptr),
                  kNoErr);
        hits.emplace(GetControlEventTarget(control), std::vector { test::kHit },
                     [this](EventRef event) {
                         EXPECT_EQ(test::PartOf(event), kControlMenuPart);
                         picks.push_back(GetControl32BitValue(control));
                         return kEventNotHandledErr;
                     });
    }
    void TearDown() override {
        hits.reset();
        ControlsFixture::TearDown();
    }
    void Show() {
        ShowWindow(window);
        widget->activateWindow();
        button->setFocus();
        ASSERT_TRUE(QTest::qWaitForWindowActive(widget));
    }
    // One registered string, two of the history, and commands, as a list of strings shows them.
    void FillWithStrings() {
        for (const char* text : { "Pan", "-", "Truck up", "Zoom", "-", "Clear history" })
            Append(menu, text);
    }
    void Wheel(int eighths) {
        const QPointF place = button->rect().center();
        QWheelEvent event(place, button->mapToGlobal(place), {}, { 0, eighths }, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(button, &event);
    }

    ControlRef control = nullptr;
    PopupButton* button = nullptr;
    MenuRef menu = nullptr;
    std::optional<test::Handler> hits;
    std::vector<std::int32_t> picks;
};

TEST_F(MenusTest, ItemsCountFromOneAndCarryTheirData) {
    Append(menu, "3");
    EXPECT_EQ(Append(menu, "-", kMenuItemAttrIgnoreMeta), 2);
    EXPECT_EQ(Append(menu, "日本 & 語"), 3);
    EXPECT_EQ(SetMenuItemRefCon(menu, 3, -7), kNoErr);
    EXPECT_EQ(CheckMenuItem(menu, 3, true), kNoErr);
    EXPECT_EQ(DeleteMenuItems(menu, 1, 1), kNoErr);

    std::int32_t refCon = 0;
    EXPECT_EQ(CountMenuItems(menu), 2);
    EXPECT_EQ(TextOf(menu, 1), "-");
    EXPECT_EQ(TextOf(menu, 2), "日本 & 語");
    EXPECT_EQ(GetMenuItemRefCon(menu, 2, &refCon), kNoErr);
    EXPECT_EQ(refCon, -7);
    EXPECT_TRUE(IsMenuItemChecked(menu, 2));
    EXPECT_FALSE(IsMenuItemChecked(menu, 1));

    EXPECT_EQ(DeleteMenuItems(menu, 3, 1), kMenuItemNotFoundErr);
    EXPECT_EQ(SetMenuItemRefCon(menu, 0, 1), kMenuItemNotFoundErr);
    EXPECT_EQ(DeleteMenuItems(menu, 1, 100), kNoErr); // as many as there are
    EXPECT_EQ(CountMenuItems(menu), 0);
}

TEST_F(MenusTest, AMenuOwnsItsSubmenus) {
    const MenuRef loose = NewMenu();
    const MenuRef below = NewMenu();
    Append(menu, "Top");
    Append(loose, "Middle");
    EXPECT_EQ(SetMenuItemHierarchicalMenu(loose, 1, below), kNoErr);
    EXPECT_EQ(SetMenuItemHierarchicalMenu(menu, 1, loose), kNoErr);

    Append(below, "Low");
    EXPECT_EQ(SetMenuItemHierarchicalMenu(below, 1, menu), kParamErr) << "no circles";
    EXPECT_EQ(SetMenuItemHierarchicalMenu(below, 1, loose), kParamErr) << "owned already";
    EXPECT_EQ(DisposeMenu(menu), kParamErr) << "the button shows it";

    EXPECT_EQ(DisposeMenu(below), kNoErr);
    MenuRef left = below;
    EXPECT_EQ(GetMenuItemHierarchicalMenu(loose, 1, &left), kNoErr);
    EXPECT_EQ(left, nullptr);
    EXPECT_EQ(DeleteMenuItems(menu, 1, 1), kNoErr);
    EXPECT_FALSE(IsValidMenu(loose));
    EXPECT_EQ(CountMenuItems(loose), 0);
    EXPECT_EQ(GetMenuEventTarget(loose), nullptr);
}

TEST_F(MenusTest, TheValueOutlivesChangesOfTheMenuWhereItCan) {
    Append(menu, "3");
    Append(menu, "4");
    EXPECT_EQ(GetControl32BitValue(control), 0) << "a new item is not picked by itself";
    SetControl32BitValue(control, 2);
    Append(menu, "5");
    EXPECT_EQ(GetControl32BitValue(control), 2);
    EXPECT_EQ(GetControl32BitMaximum(control), 3);
    CheckMenuItem(menu, 1, true);
    EXPECT_EQ(GetControl32BitValue(control), 2);
    SetControl32BitMaximum(control, 1);
    SetControl32BitValue(control, 3);
    EXPECT_EQ(GetControl32BitValue(control), 3) << "the menu says how many values there are";
    DeleteMenuItems(menu, 3, 1);
    EXPECT_EQ(GetControl32BitValue(control), 0);
    Append(menu, "-");
    SetControl32BitValue(control, 3);
    EXPECT_EQ(GetControl32BitValue(control), 3) << "a separator, since a caller asks for it";
    EXPECT_EQ(button->currentText(), "");
    SetControl32BitValue(control, 0);
    EXPECT_EQ(button->currentIndex(), -1);
    EXPECT_TRUE(picks.empty()) << "only the user picks";
}

TEST_F(MenusTest, AFormGivesItemsAsToAComboBox) {
    button->addItem(QStringLiteral("IDS_ONE"));
    button->addItem(QStringLiteral("-"));
    button->addItem(QStringLiteral("Three"));
    button->setItemText(0, QStringLiteral("One"));
    EXPECT_EQ(CountMenuItems(menu), 3);
    EXPECT_EQ(TextOf(menu, 1), "One");
    EXPECT_EQ(GetControl32BitValue(control), 1) << "a form's popup starts with its first item";
    EXPECT_FALSE(button->model()->flags(button->model()->index(1, 0)) & Qt::ItemIsEnabled);
}

TEST_F(MenusTest, StepsOfAClosedButtonStayBetweenSeparators) {
    FillWithStrings();
    SetControl32BitValue(control, 3);
    Show();
    QApplication::setKeyboardInputInterval(0); // each letter is a search of its own
    struct Row {
        Qt::Key key;
        std::int32_t value;
    };
    for (const Row& row : { Row { Qt::Key_Down, 4 }, Row { Qt::Key_Down, 4 }, Row { Qt::Key_Up, 3 },
                            Row { Qt::Key_Up, 3 }, Row { Qt::Key_End, 4 }, Row { Qt::Key_Home, 3 },
                            Row { Qt::Key_Z, 4 }, Row { Qt::Key_T, 3 } }) {
        QTest::qWait(2);
        QTest::keyClick(button, row.key);
        EXPECT_EQ(GetControl32BitValue(control), row.value) << row.key;
    }
    EXPECT_THAT(picks, testing::ElementsAre(4, 3, 4, 3, 4, 3)) << "a step to nowhere is no pick";

    QTest::qWait(2);
    QTest::keyClick(button, Qt::Key_C); // a command, beyond a separator: shown, not picked
    EXPECT_TRUE(button->view()->isVisible());
    EXPECT_EQ(GetControl32BitValue(control), 3);
    QTest::keyClick(button->view(), Qt::Key_Return);
    EXPECT_EQ(GetControl32BitValue(control), 6);
    EXPECT_EQ(picks.back(), 6);
}

TEST_F(MenusTest, TheWheelTurnsOnlyWhatHasTheFocus) {
    FillWithStrings();
    SetControl32BitValue(control, 3);
    Show();
    Wheel(-60);
    EXPECT_EQ(GetControl32BitValue(control), 3);
    Wheel(-60);
    EXPECT_EQ(GetControl32BitValue(control), 4);
    button->clearFocus();
    Wheel(120);
    EXPECT_EQ(GetControl32BitValue(control), 4);
    EXPECT_THAT(picks, testing::ElementsAre(4));
}

TEST_F(MenusTest, PickingTheSameItemAgainIsAPick) {
    FillWithStrings();
    SetControl32BitValue(control, 6);
    Show();
    for (int i = 0; i < 2; ++i) {
        QTest::keyClick(button, Qt::Key_Space);
        ASSERT_TRUE(button->view()->isVisible());
        QTest::keyClick(button->view(), Qt::Key_Return);
    }
    EXPECT_THAT(picks, testing::ElementsAre(6, 6));
}

TEST_F(MenusTest, TheOpenListSkipsWhatIsNoItemAndEscapeKeepsTheValue) {
    FillWithStrings();
    Append(menu, "Edit", kMenuItemAttrDisabled);
    Append(menu, "Last");
    SetControl32BitValue(control, 1);
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
    EXPECT_EQ(GetControl32BitValue(control), 1);
    EXPECT_TRUE(picks.empty());
}

TEST_F(MenusTest, AnItemOfASubmenuKeepsTheValueOfItsTitle) {
    const MenuRef below = NewMenu();
    Append(menu, "Plain");
    Append(menu, "More");
    Append(menu, "Last");
    Append(below, "First");
    Append(below, "Second", 0, 0x74657374);
    SetMenuItemHierarchicalMenu(menu, 2, below);
    SetControl32BitValue(control, 1);

    struct Heard {
        std::uint32_t attributes, commandID;
        MenuRef menu;
        MenuItemIndex item;
        bool operator==(const Heard&) const = default;
    };
    std::vector<Heard> heard;
    const test::Handler listener(
        GetWindowEventTarget(window), { test::kCommand }, [&](EventRef event) {
            const HICommandExtended c = test::CommandOf(event);
            heard.push_back(
                { c.attributes, c.commandID, c.source.menu.menuRef, c.source.menu.menuItemIndex });
            return kNoErr;
        });
    Show();
    button->showPopup();
    QTest::keyClick(button->view(), Qt::Key_Down); // over the title
    QTest::keyClick(button->view(), Qt::Key_Down);
    QTest::keyClick(button->view(), Qt::Key_Return);
    EXPECT_EQ(button->currentText(), "Second");
    EXPECT_THAT(picks, testing::ElementsAre(2));
    EXPECT_THAT(heard, testing::ElementsAre(Heard { kHICommandFromMenu, 0x74657374, below, 2 }));

    CheckMenuItem(below, 1, true);
    EXPECT_EQ(button->currentText(), "Second") << "the pick is remembered below its title";
    SetMenuItemHierarchicalMenu(menu, 2, nullptr);
    EXPECT_EQ(button->currentText(), "More");
    EXPECT_EQ(DisposeMenu(below), kNoErr) << "its maker's again";
}

TEST_F(MenusTest, APickMayDisposeOfTheWindow) {
    FillWithStrings();
    Show();
    const test::Handler disposer(GetControlEventTarget(control), { test::kHit }, [&](EventRef) {
        DisposeWindow(window);
        return kNoErr;
    });
    button->showPopup();
    QTest::keyClick(button->view(), Qt::Key_End);
    QTest::keyClick(button->view(), Qt::Key_Return);
    EXPECT_FALSE(IsValidWindowPtr(window));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(IsValidMenu(menu));
    widget = nullptr; // is gone
}

TEST_F(MenusTest, AnotherMenuTakesThePlaceOfAButtons) {
    const MenuRef other = NewMenu();
    Append(other, "A");
    Append(other, "B");
    Append(menu, "Old");
    SetControl32BitValue(control, 1);
    const auto set = [&](MenuRef ref) {
        return SetControlData(control, kControlMenuPart, kControlPopupMenu, sizeof ref, &ref);
    };
    EXPECT_EQ(set(menu), kNoErr) << "its own";
    EXPECT_EQ(set(other), kNoErr);
    EXPECT_FALSE(IsValidMenu(menu));
    EXPECT_EQ(GetControl32BitMaximum(control), 2);
    EXPECT_EQ(button->currentText(), "A");
    EXPECT_EQ(set(menu), kMenuNotFoundErr);
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
    Append(menu, "Before");
    Append(menu, "After");
    std::int16_t submenus = -1;
    EXPECT_EQ(CreateStandardFontMenu(menu, 1, 30000, &submenus), kNoErr);
    const std::vector<FontFamily> families = InstalledFontFamilies();
    ASSERT_FALSE(families.empty());
    EXPECT_EQ(submenus, 0);
    EXPECT_EQ(CountMenuItems(menu), families.size() + 2);
    EXPECT_EQ(TextOf(menu, CountMenuItems(menu)), "After");

    MenuItemIndex expected = 2;
    for (const FontFamily& family : families) {
        EXPECT_EQ(TextOf(menu, expected), family.name);
        FontNumber number = -1;
        EXPECT_EQ(GetFontFamilyFromMenuSelection(menu, expected, &number), kNoErr);
        std::vector<std::string> names = family.aliases;
        names.push_back(family.name);
        for (const std::string& name : names) {
            MenuItemIndex item = 0;
            EXPECT_EQ(number, NumberOf(name)) << name;
            EXPECT_EQ(FindFontFamilyInMenu(menu, NumberOf(name), &item), kNoErr) << name;
            EXPECT_EQ(item, expected) << name;
        }
        ++expected;
    }
    FontNumber number = -1;
    MenuItemIndex item = 0;
    EXPECT_EQ(GetFontFamilyFromMenuSelection(menu, 1, &number), kMenuItemNotFoundErr);
    DeleteMenuItems(menu, 2, static_cast<MenuItemIndex>(families.size()));
    EXPECT_EQ(FindFontFamilyInMenu(menu, NumberOf(families[0].name), &item), kMenuItemNotFoundErr);
}

TEST_F(MenusTest, WhatIsGoneGivesAStatus) {
    EXPECT_EQ(DisposeMenu(nullptr), kMenuNotFoundErr);
    EXPECT_EQ(CountMenuItems(nullptr), 0);
    EXPECT_EQ(CheckMenuItem(nullptr, 1, true), kMenuNotFoundErr);
    EXPECT_EQ(AppendMenuItemTextWithCFString(nullptr, nullptr, 0, 0, nullptr), kMenuNotFoundErr);
    EXPECT_EQ(CreateStandardFontMenu(nullptr, 0, 1, nullptr), kMenuNotFoundErr);
    EXPECT_EQ(SetMenuItemHierarchicalMenu(menu, 1, nullptr), kMenuItemNotFoundErr);
    const MenuRef loose = NewMenu();
    EXPECT_EQ(DisposeMenu(loose), kNoErr);
    EXPECT_EQ(DisposeMenu(loose), kMenuNotFoundErr);
}

} // namespace
} // namespace platform
