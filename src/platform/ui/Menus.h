// SPDX-License-Identifier: BSD-3-Clause
// Menus of popup buttons: items with reference values, check marks, separators and submenus, and the
// standard menu of font families. User-interface thread only.
#pragma once

#include <cstdint>

#include "platform/ui/Controls.h"

namespace platform {

inline constexpr OSStatus kMenuItemNotFoundErr = -5622;
inline constexpr OSStatus kMenuNotFoundErr = -5621;
inline constexpr std::uint32_t kMenuItemAttrDisabled = 0x1;
inline constexpr std::uint32_t kMenuItemAttrSeparator = 0x40;
// Without it the text "-" makes a separator.
inline constexpr std::uint32_t kMenuItemAttrIgnoreMeta = 0x100;

OSStatus CreateNewMenu(std::int16_t menuID, MenuRef* menu);
// A popup button owns its menu, and a menu its submenus; those are ended with them.
OSStatus DisposeMenu(MenuRef menu);
bool IsValidMenu(MenuRef menu);
EventTargetRef GetMenuEventTarget(MenuRef menu);

// Items count from 1. Changing the menu of a popup button keeps the button's value where it can; a
// value past the end becomes 0.
MenuItemIndex CountMenuItems(MenuRef menu);
// index (may be null) gets the new item's.
OSStatus AppendMenuItemTextWithCFString(MenuRef menu, CFStringRef text, std::uint32_t attributes,
                                        std::uint32_t commandID, MenuItemIndex* index);
OSStatus DeleteMenuItems(MenuRef menu, MenuItemIndex first, MenuItemIndex count);
OSStatus CopyMenuItemTextAsCFString(MenuRef menu, MenuItemIndex item, CFStringRef* text);
OSStatus SetMenuItemRefCon(MenuRef menu, MenuItemIndex item, std::int32_t refCon);
OSStatus GetMenuItemRefCon(MenuRef menu, MenuItemIndex item, std::int32_t* refCon);
OSStatus CheckMenuItem(MenuRef menu, MenuItemIndex item, bool checked);
bool IsMenuItemChecked(MenuRef menu, MenuItemIndex item);
OSStatus SetMenuItemHierarchicalMenu(MenuRef menu, MenuItemIndex item, MenuRef submenu);
OSStatus GetMenuItemHierarchicalMenu(MenuRef menu, MenuItemIndex item, MenuRef* submenu);

// Appends the installed families by name after the item (0: first). firstHierMenuID numbers the
// submenus; *hierMenuCount gets how many there are.
OSStatus CreateStandardFontMenu(MenuRef menu, MenuItemIndex afterItem, std::int16_t firstHierMenuID,
                                std::int16_t* hierMenuCount);
// The family that an item of such a menu stands for, and the item that stands for a family;
// kMenuItemNotFoundErr when there is none.
OSStatus GetFontFamilyFromMenuSelection(MenuRef menu, MenuItemIndex item, FontNumber* family);
OSStatus FindFontFamilyInMenu(MenuRef menu, FontNumber family, MenuItemIndex* item);

} // namespace platform
