// SPDX-License-Identifier: BSD-3-Clause
// What stands behind a MenuRef: items, some of them with a menu of their own. Knows no widget; whoever
// shows it is told of changes.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <vector>

#include <QString>

#include "platform/ui/Menus.h"
#include "platform/ui/UIObject.h"

namespace platform {

class Menu;

struct MenuItem {
    QString text;
    std::uint32_t attributes = 0;
    std::uint32_t commandID = 0;
    std::int32_t refCon = 0;
    bool checked = false;
    bool fontFamily = false; // text is the English name of an installed family
    std::unique_ptr<Menu> submenu;

    bool IsSeparator() const { return attributes & kMenuItemAttrSeparator; }
    bool IsPickable() const {
        return !submenu && !(attributes & (kMenuItemAttrSeparator | kMenuItemAttrDisabled));
    }
};

class Menu final : public UIObject {
public:
    Menu();

    static Menu* Find(MenuRef menu) {
        return static_cast<Menu*>(UIObject::Find(menu, ObjectKind::kMenu));
    }
    MenuRef Ref() const { return As<MenuRef>(); }

    // Menus that neither a button nor another menu owns yet. Taking one that is owned gives null.
    static Menu* MakeLoose();
    static std::unique_ptr<Menu> TakeLoose(MenuRef menu);
    static void GiveLoose(std::unique_ptr<Menu> menu);

    // Items count from 1; null past the ends.
    const MenuItem* Item(MenuItemIndex item) const;
    MenuItemIndex Count() const { return static_cast<MenuItemIndex>(m_items.size()); }

    // Before the item (Count() + 1: at the end); what is more than a menu can count is left out.
    void Insert(MenuItemIndex before, std::vector<MenuItem> items);
    void Delete(MenuItemIndex first, MenuItemIndex count);
    // False when there is no such item.
    bool SetText(MenuItemIndex item, const QString& text); // "-" makes a separator
    bool SetChecked(MenuItemIndex item, bool checked);
    bool SetRefCon(MenuItemIndex item, std::int32_t refCon); // shows nowhere, so nobody is told
    // Of an item that is there. Gives the submenu that it had.
    std::unique_ptr<Menu> SetSubmenu(MenuItemIndex item, std::unique_ptr<Menu> submenu);
    Menu* Parent() const { return m_parent; }
    // The item of the parent that this menu hangs on; 0 without a parent.
    MenuItemIndex ItemInParent() const;

    // Called after each change of the menu or one below it.
    std::function<void()> whenChanged;

private:
    void Changed();

    std::vector<MenuItem> m_items;
    Menu* m_parent = nullptr;
};

} // namespace platform
