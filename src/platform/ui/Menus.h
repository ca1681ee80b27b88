// SPDX-License-Identifier: BSD-3-Clause
// Menus of popup buttons: what stands behind a MenuRef. Items with reference values and check marks,
// separators, and the installed font families as items. Knows no widget; whoever shows it is told of
// changes. User-interface thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/Fonts.h"
#include "platform/ui/UIObject.h"

namespace platform {

inline constexpr std::uint32_t kMenuItemAttrDisabled = 0x1;
inline constexpr std::uint32_t kMenuItemAttrSeparator = 0x40;
// Without it the text "-" makes a separator.
inline constexpr std::uint32_t kMenuItemAttrIgnoreMeta = 0x100;

struct MenuItem {
    std::string text; // UTF-8
    std::uint32_t attributes = 0;
    std::int32_t refCon = 0;
    bool checked = false;
    bool fontFamily = false; // text is the English name of an installed family

    bool IsSeparator() const { return attributes & kMenuItemAttrSeparator; }
    bool IsPickable() const {
        return !(attributes & (kMenuItemAttrSeparator | kMenuItemAttrDisabled));
    }
};

// A popup button owns its menu, which ends with it.
class Menu final : public UIObject {
public:
    Menu();

    static Menu* Find(MenuRef menu) { // null when it is gone
        return static_cast<Menu*>(UIObject::Find(menu, ObjectKind::kMenu));
    }
    MenuRef Ref() const { return As<MenuRef>(); }

    // Items count from 1; null past the ends.
    const MenuItem* Item(MenuItemIndex item) const;
    MenuItemIndex Count() const { return static_cast<MenuItemIndex>(m_items.size()); }

    // Changing the menu of a popup button keeps the button's value where it can; a value past the end
    // becomes 0. What there is no item for does nothing, and gives false.

    // Before the item (Count() + 1: at the end); what is more than a menu can count is left out.
    void Insert(MenuItemIndex before, std::vector<MenuItem> items);
    // The new item's index; 0 when the menu is full.
    MenuItemIndex Append(std::string text, std::int32_t refCon = 0, std::uint32_t attributes = 0);
    void Delete(MenuItemIndex first, MenuItemIndex count);
    bool SetText(MenuItemIndex item, std::string text);
    bool SetChecked(MenuItemIndex item, bool checked);
    void ClearChecks();

    // The installed families by name, after the item (0: first). One flat list: typing finds a family
    // in it faster than any grouping would.
    void InsertFontFamilies(MenuItemIndex afterItem);
    // The number of the family that an item stands for. None when the item is no family, or its name
    // cannot be written in the application's encoding.
    std::optional<FontNumber> FontFamilyOf(MenuItemIndex item) const;
    // The item that stands for a family, under whichever of its names; 0 when there is none.
    MenuItemIndex FindFontFamily(FontNumber family) const;

    // Called after each change of the menu.
    std::function<void()> whenChanged;

private:
    MenuItem* At(MenuItemIndex item);
    void Changed();

    std::vector<MenuItem> m_items;
};

} // namespace platform
