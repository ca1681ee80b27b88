// SPDX-License-Identifier: BSD-3-Clause
// A button with a menu. Its value is the picked item, from 1; 0 when none is picked.
#pragma once

#include <optional>

#include "huxCommon/huxGUI/HuxControlImpl.h"
#include "platform/ui/Menus.h"

class HuxPopupButton : public HuxControlImpl {
public:
    platform::Menu* GetMenu() const; // lent; null without a control
    platform::MenuItemIndex CountItems() const;
    void DeleteAllItems();
    // The new item's index; 0 on failure. attributes: kMenuItemAttr...
    platform::MenuItemIndex AppendItem(const HuxString& text, std::int32_t refCon = 0,
                                       std::uint32_t attributes = 0);
    void AppendSeparator();

    std::int32_t GetItemRefCon(platform::MenuItemIndex item) const; // 0 without one
    // The first or last item with the reference value; 0 when there is none.
    platform::MenuItemIndex FindItem(std::int32_t refCon) const;
    platform::MenuItemIndex FindLastItem(std::int32_t refCon) const;
    // Of the picked item; nothing when none is picked.
    std::optional<std::int32_t> GetSelectRefCon() const;

    void CheckItem(platform::MenuItemIndex item, bool checked);
    void ClearCheckMarks();

    // Appends the installed font families and makes the item count the maximum.
    platform::OSStatus AppendFontMenu();
    // Picks the family with the length-prefixed name; picks none, and false, when it is not in the
    // menu.
    bool SetFontFamilyName(const unsigned char* name);
    // The picked family's; name has room for 256 bytes. False, and name empty, when none is picked.
    bool GetFontFamilyName(unsigned char* name) const;

private:
    const platform::MenuItem* GetItem(platform::MenuItemIndex item) const; // null for none
};
