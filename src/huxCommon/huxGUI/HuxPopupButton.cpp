// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxPopupButton.h"

using namespace platform;

Menu* HuxPopupButton::GetMenu() const {
    return Ask(&Control::PopupMenu);
}

// Items ------------------------------------------------------------------------------------------

MenuItemIndex HuxPopupButton::CountItems() const {
    const Menu* const menu = GetMenu();
    return menu ? menu->Count() : MenuItemIndex { 0 };
}

void HuxPopupButton::DeleteAllItems() {
    if (Menu* const menu = GetMenu())
        menu->Delete(1, menu->Count());
}

MenuItemIndex HuxPopupButton::AppendItem(const HuxString& text, std::int32_t refCon,
                                         std::uint32_t attributes) {
    Menu* const menu = GetMenu();
    return menu ? menu->Append(std::string(text.GetUTF8()), refCon, attributes)
                : MenuItemIndex { 0 };
}

void HuxPopupButton::AppendSeparator() {
    AppendItem(HuxString(), 0, kMenuItemAttrSeparator);
}

const MenuItem* HuxPopupButton::GetItem(MenuItemIndex item) const {
    const Menu* const menu = GetMenu();
    return menu ? menu->Item(item) : nullptr;
}

// Reference values -------------------------------------------------------------------------------

std::int32_t HuxPopupButton::GetItemRefCon(MenuItemIndex item) const {
    const MenuItem* const found = GetItem(item);
    return found ? found->refCon : 0;
}

MenuItemIndex HuxPopupButton::FindItem(std::int32_t refCon) const {
    const MenuItemIndex count = CountItems();
    for (MenuItemIndex item = 1; item <= count; ++item)
        if (GetItemRefCon(item) == refCon)
            return item;
    return 0;
}

MenuItemIndex HuxPopupButton::FindLastItem(std::int32_t refCon) const {
    for (MenuItemIndex item = CountItems(); item > 0; --item)
        if (GetItemRefCon(item) == refCon)
            return item;
    return 0;
}

std::optional<std::int32_t> HuxPopupButton::GetSelectRefCon() const {
    const MenuItem* const picked = GetItem(static_cast<MenuItemIndex>(GetValue()));
    return picked ? std::optional(picked->refCon) : std::nullopt;
}

// Check marks ------------------------------------------------------------------------------------

void HuxPopupButton::CheckItem(MenuItemIndex item, bool checked) {
    if (Menu* const menu = GetMenu())
        menu->SetChecked(item, checked);
}

void HuxPopupButton::ClearCheckMarks() {
    if (Menu* const menu = GetMenu())
        menu->ClearChecks();
}

// Font families ----------------------------------------------------------------------------------

OSStatus HuxPopupButton::AppendFontMenu() {
    Menu* const menu = GetMenu();
    if (!menu)
        return kErrInvalidControl;
    menu->InsertFontFamilies(menu->Count());
    SetMaximum(CountItems());
    return kNoErr;
}

bool HuxPopupButton::SetFontFamilyName(const unsigned char* name) {
    MenuItemIndex item = 0;
    const Menu* const menu = GetMenu();
    // An unknown name has the default family's number, which must not be picked for it.
    const HuxString text(name);
    if (menu && ResolveFontFamily(text.GetUTF8()).match != FontMatch::kUnknown) {
        FontNumber family = 0;
        GetFNum(name, &family);
        item = menu->FindFontFamily(family);
    }
    SetValue(item);
    return item != 0;
}

bool HuxPopupButton::GetFontFamilyName(unsigned char* name) const {
    name[0] = 0;
    const Menu* const menu = GetMenu();
    const auto family =
        menu ? menu->FontFamilyOf(static_cast<MenuItemIndex>(GetValue())) : std::nullopt;
    if (family)
        GetFontName(*family, name);
    return name[0] != 0;
}
