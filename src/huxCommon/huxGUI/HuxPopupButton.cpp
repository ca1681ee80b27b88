// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxPopupButton.h"

using namespace platform;

namespace {

void ClearChecks(MenuRef menu) {
    MenuItemIndex const count = CountMenuItems(menu);
    for (MenuItemIndex item = 1; item <= count; ++item) {
        CheckMenuItem(menu, item, false);
        MenuRef submenu = nullptr;
        if (GetMenuItemHierarchicalMenu(menu, item, &submenu) == kNoErr && submenu)
            ClearChecks(submenu);
    }
}

} // namespace

MenuRef HuxPopupButton::GetMenu() const {
    MenuRef menu = nullptr;
    return GetData(kControlEntireControl, kControlPopupMenu, &menu) == kNoErr ? menu : nullptr;
}

// Items --------------------------------------------------------------------------------------------

MenuItemIndex HuxPopupButton::CountItems() const {
    return CountMenuItems(GetMenu());
}

void HuxPopupButton::DeleteAllItems() {
    if (MenuItemIndex const count = CountItems())
        DeleteMenuItems(GetMenu(), 1, count);
}

MenuItemIndex HuxPopupButton::AppendItem(const HuxString& text, std::int32_t refCon,
                                         std::uint32_t attributes) {
    MenuRef const menu = GetMenu();
    MenuItemIndex item = 0;
    if (AppendMenuItemTextWithCFString(menu, text.GetCFString(), attributes, 0, &item) != kNoErr)
        return 0;
    SetMenuItemRefCon(menu, item, refCon);
    return item;
}

void HuxPopupButton::AppendSeparator() {
    AppendItem(HuxString(), 0, kMenuItemAttrSeparator);
}

HuxString HuxPopupButton::GetItemText(MenuItemIndex item) const {
    CFStringRef text = nullptr;
    return CopyMenuItemTextAsCFString(GetMenu(), item, &text) == kNoErr ? HuxString::Adopt(text)
                                                                        : HuxString();
}

// Reference values ---------------------------------------------------------------------------------

std::int32_t HuxPopupButton::GetItemRefCon(MenuItemIndex item) const {
    std::int32_t refCon = 0;
    return GetMenuItemRefCon(GetMenu(), item, &refCon) == kNoErr ? refCon : 0;
}

OSStatus HuxPopupButton::SetItemRefCon(MenuItemIndex item, std::int32_t refCon) {
    return SetMenuItemRefCon(GetMenu(), item, refCon);
}

MenuItemIndex HuxPopupButton::FindItem(std::int32_t refCon) const {
    MenuItemIndex const count = CountItems();
    for (MenuItemIndex item = 1; item <= count; ++item) {
        if (GetItemRefCon(item) == refCon)
            return item;
    }
    return 0;
}

MenuItemIndex HuxPopupButton::FindLastItem(std::int32_t refCon) const {
    for (MenuItemIndex item = CountItems(); item > 0; --item) {
        if (GetItemRefCon(item) == refCon)
            return item;
    }
    return 0;
}

std::optional<std::int32_t> HuxPopupButton::GetSelectRefCon() const {
    std::int32_t const value = GetValue();
    if (value < 1 || value > CountItems())
        return std::nullopt;
    return GetItemRefCon(static_cast<MenuItemIndex>(value));
}

// Check marks --------------------------------------------------------------------------------------

void HuxPopupButton::CheckItem(MenuItemIndex item, bool checked) {
    CheckMenuItem(GetMenu(), item, checked);
}

bool HuxPopupButton::IsItemChecked(MenuItemIndex item) const {
    return IsMenuItemChecked(GetMenu(), item);
}

void HuxPopupButton::ClearCheckMarks() {
    ClearChecks(GetMenu());
}

// Font families ------------------------------------------------------------------------------------

OSStatus HuxPopupButton::AppendFontMenu(short firstSubmenuID) {
    std::int16_t submenus = 0;
    const OSStatus status =
        CreateStandardFontMenu(GetMenu(), CountItems(), firstSubmenuID, &submenus);
    SetMaximum(CountItems());
    return status;
}

bool HuxPopupButton::SetFontFamilyName(const unsigned char* name) {
    MenuItemIndex item = 0;
    // An unknown name has the default family's number, which must not be picked for it.
    HuxString const text(name);
    if (ResolveFontFamily(text.GetUTF8()).match != FontMatch::kUnknown) {
        FontNumber family = 0;
        GetFNum(name, &family);
        if (FindFontFamilyInMenu(GetMenu(), family, &item) != kNoErr)
            item = 0;
    }
    SetValue(item);
    return item != 0;
}

bool HuxPopupButton::GetFontFamilyName(unsigned char* name) const {
    name[0] = 0;
    std::int32_t const value = GetValue();
    FontNumber family = 0;
    if (value < 1 || value > CountItems() ||
        GetFontFamilyFromMenuSelection(GetMenu(), static_cast<MenuItemIndex>(value), &family) !=
            kNoErr)
        return false;
    GetFontName(family, name);
    return name[0] != 0;
}
