// SPDX-License-Identifier: BSD-3-Clause
// The standard menu of font families: one item per installed family, by name.
#include <algorithm>
#include <optional>
#include <string>

#include "platform/Fonts.h"
#include "platform/TextEncoding.h"
#include "platform/ui/menus/Menu.h"

namespace platform {
namespace {

// The number of the family that the item stands for. None when the item is no family, or its name
// cannot be written in the application's encoding.
std::optional<FontNumber> FamilyOf(const MenuItem& item) {
    if (!item.fontFamily)
        return std::nullopt;
    const EncodedText name = EncodeText(item.text.toStdString());
    if (!name.complete || name.bytes.size() > 255)
        return std::nullopt;
    std::string pascal(1, static_cast<char>(name.bytes.size()));
    pascal += name.bytes;
    FontNumber number = 0;
    GetFNum(reinterpret_cast<const std::uint8_t*>(pascal.data()), &number);
    return number;
}

QString NameOf(FontNumber family) {
    std::uint8_t name[256];
    GetFontName(family, name);
    const std::string_view bytes(reinterpret_cast<const char*>(name) + 1, name[0]);
    return QString::fromStdString(DecodeText(bytes));
}

// The first item, from 1, that the test holds for; 0 when there is none.
template <class Test>
MenuItemIndex FirstItem(const Menu& menu, Test test) {
    for (std::size_t item = 1; item <= menu.Count(); ++item) {
        if (test(*menu.Item(static_cast<MenuItemIndex>(item))))
            return static_cast<MenuItemIndex>(item);
    }
    return 0;
}

} // namespace

OSStatus CreateStandardFontMenu(MenuRef menu, MenuItemIndex afterItem,
                                std::int16_t /*firstHierMenuID*/, std::int16_t* hierMenuCount) {
    Menu* const found = Menu::Find(menu);
    if (!found)
        return kMenuNotFoundErr;
    if (afterItem > found->Count())
        return kMenuItemNotFoundErr;
    std::vector<MenuItem> items;
    for (const FontFamily& family : InstalledFontFamilies()) {
        MenuItem item;
        item.text = QString::fromStdString(family.name);
        item.attributes = kMenuItemAttrIgnoreMeta;
        item.fontFamily = true;
        items.push_back(std::move(item));
    }
    found->Insert(static_cast<MenuItemIndex>(afterItem + 1), std::move(items));
    // One flat list: typing finds a family in it faster than any grouping would.
    if (hierMenuCount)
        *hierMenuCount = 0;
    return kNoErr;
}

OSStatus GetFontFamilyFromMenuSelection(MenuRef menu, MenuItemIndex item, FontNumber* family) {
    const Menu* const found = Menu::Find(menu);
    if (!found)
        return kMenuNotFoundErr;
    const MenuItem* const foundItem = found->Item(item);
    const std::optional<FontNumber> number = foundItem ? FamilyOf(*foundItem) : std::nullopt;
    if (!number)
        return kMenuItemNotFoundErr;
    *family = *number;
    return kNoErr;
}

OSStatus FindFontFamilyInMenu(MenuRef menu, FontNumber family, MenuItemIndex* item) {
    const Menu* const found = Menu::Find(menu);
    if (!found)
        return kMenuNotFoundErr;
    const QString name = NameOf(family);
    MenuItemIndex place = FirstItem(*found, [&](const MenuItem& candidate) {
        return candidate.fontFamily && candidate.text.compare(name, Qt::CaseInsensitive) == 0;
    });
    // Two names can mean one family, and a name may have lost characters to the encoding.
    if (place == 0)
        place = FirstItem(*found, [&](const MenuItem& it) { return FamilyOf(it) == family; });
    if (place == 0)
        return kMenuItemNotFoundErr;
    *item = place;
    return kNoErr;
}

} // namespace platform
