// SPDX-License-Identifier: BSD-3-Clause
// The calls of Menus.h on menus and their items.
#include <utility>

#include "platform/ui/QtStrings.h"
#include "platform/ui/menus/Menu.h"

namespace platform {
namespace {

// Runs act(Menu&, const MenuItem&) on an item that is there.
template <class Act>
OSStatus WithItem(MenuRef menu, MenuItemIndex item, Act act) {
    Menu* const found = Menu::Find(menu);
    if (!found)
        return kMenuNotFoundErr;
    const MenuItem* const foundItem = found->Item(item);
    if (!foundItem)
        return kMenuItemNotFoundErr;
    return act(*found, *foundItem);
}

bool IsInside(const Menu* menu, const Menu* outer) {
    while (menu && menu != outer)
        menu = menu->Parent();
    return menu;
}

} // namespace

OSStatus CreateNewMenu(std::int16_t /*menuID*/, MenuRef* menu) {
    if (!menu)
        return kParamErr;
    *menu = Menu::MakeLoose()->Ref();
    return kNoErr;
}

OSStatus DisposeMenu(MenuRef menu) {
    Menu* const found = Menu::Find(menu);
    if (!found)
        return kMenuNotFoundErr;
    if (Menu* const parent = found->Parent()) {
        parent->SetSubmenu(found->ItemInParent(), nullptr);
        return kNoErr;
    }
    return Menu::TakeLoose(menu) ? kNoErr : kParamErr; // a button goes on showing its menu
}

bool IsValidMenu(MenuRef menu) {
    return Menu::Find(menu) != nullptr;
}

EventTargetRef GetMenuEventTarget(MenuRef menu) {
    const Menu* const found = Menu::Find(menu);
    return found ? found->Target() : nullptr;
}

MenuItemIndex CountMenuItems(MenuRef menu) {
    const Menu* const found = Menu::Find(menu);
    return found ? found->Count() : MenuItemIndex { 0 };
}

OSStatus AppendMenuItemTextWithCFString(MenuRef menu, CFStringRef text, std::uint32_t attributes,
                                        std::uint32_t commandID, MenuItemIndex* index) {
    Menu* const found = Menu::Find(menu);
    if (!found)
        return kMenuNotFoundErr;
    MenuItem item;
    item.text = QStringFrom(text);
    item.attributes = attributes;
    item.commandID = commandID;
    if (item.text == QLatin1String("-") && !(attributes & kMenuItemAttrIgnoreMeta))
        item.attributes |= kMenuItemAttrSeparator;
    const MenuItemIndex before = found->Count();
    std::vector<MenuItem> items;
    items.push_back(std::move(item));
    found->Insert(static_cast<MenuItemIndex>(before + 1), std::move(items));
    if (index)
        *index = found->Count();
    return found->Count() > before ? kNoErr : kMemFullErr;
}

OSStatus DeleteMenuItems(MenuRef menu, MenuItemIndex first, MenuItemIndex count) {
    Menu* const found = Menu::Find(menu);
    if (!found)
        return kMenuNotFoundErr;
    if (count == 0)
        return kNoErr;
    if (!found->Item(first))
        return kMenuItemNotFoundErr;
    found->Delete(first, count);
    return kNoErr;
}

OSStatus CopyMenuItemTextAsCFString(MenuRef menu, MenuItemIndex item, CFStringRef* text) {
    return WithItem(menu, item, [&](Menu&, const MenuItem& found) {
        *text = CFStringCreateWithQString(found.text);
        return kNoErr;
    });
}

OSStatus SetMenuItemRefCon(MenuRef menu, MenuItemIndex item, std::int32_t refCon) {
    Menu* const found = Menu::Find(menu);
    if (!found)
        return kMenuNotFoundErr;
    return found->SetRefCon(item, refCon) ? kNoErr : kMenuItemNotFoundErr;
}

OSStatus GetMenuItemRefCon(MenuRef menu, MenuItemIndex item, std::int32_t* refCon) {
    return WithItem(menu, item, [&](Menu&, const MenuItem& found) {
        *refCon = found.refCon;
        return kNoErr;
    });
}

OSStatus CheckMenuItem(MenuRef menu, MenuItemIndex item, bool checked) {
    Menu* const found = Menu::Find(menu);
    if (!found)
        return kMenuNotFoundErr;
    return found->SetChecked(item, checked) ? kNoErr : kMenuItemNotFoundErr;
}

bool IsMenuItemChecked(MenuRef menu, MenuItemIndex item) {
    const Menu* const found = Menu::Find(menu);
    const MenuItem* const foundItem = found ? found->Item(item) : nullptr;
    return foundItem && foundItem->checked;
}

OSStatus SetMenuItemHierarchicalMenu(MenuRef menu, MenuItemIndex item, MenuRef submenu) {
    return WithItem(menu, item, [&](Menu& found, const MenuItem& foundItem) {
        if (foundItem.submenu && foundItem.submenu->Ref() == submenu)
            return kNoErr;
        if (submenu && IsInside(&found, Menu::Find(submenu)))
            return kParamErr;
        std::unique_ptr<Menu> taken = Menu::TakeLoose(submenu);
        if (submenu && !taken)
            return IsValidMenu(submenu) ? kParamErr : kMenuNotFoundErr;
        // The menu that hung there is its maker's again.
        Menu::GiveLoose(found.SetSubmenu(item, std::move(taken)));
        return kNoErr;
    });
}

OSStatus GetMenuItemHierarchicalMenu(MenuRef menu, MenuItemIndex item, MenuRef* submenu) {
    return WithItem(menu, item, [&](Menu&, const MenuItem& found) {
        *submenu = found.submenu ? found.submenu->Ref() : nullptr;
        return kNoErr;
    });
}

} // namespace platform
