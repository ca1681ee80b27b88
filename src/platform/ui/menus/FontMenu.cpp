// SPDX-License-Identifier: BSD-3-Clause
// The installed font families as items of a menu: one item per family, by name.
#include <string>
#include <utility>

#include <QString>

#include "platform/TextEncoding.h"
#include "platform/ui/Menus.h"

namespace platform {
namespace {

QString NameOf(FontNumber family) {
    std::uint8_t name[256];
    GetFontName(family, name);
    const std::string_view bytes(reinterpret_cast<const char*>(name) + 1, name[0]);
    return QString::fromStdString(DecodeText(bytes));
}

// The first item, from 1, that the test holds for; 0 when there is none.
template <class Test>
MenuItemIndex FirstItem(const Menu& menu, Test test) {
    for (std::size_t item = 1; item <= menu.Count(); ++item)
        if (test(static_cast<MenuItemIndex>(item)))
            return static_cast<MenuItemIndex>(item);
    return 0;
}

} // namespace

void Menu::InsertFontFamilies(MenuItemIndex afterItem) {
    std::vector<MenuItem> items;
    for (const FontFamily& family : InstalledFontFamilies()) {
        MenuItem item;
        item.text = family.name;
        item.attributes = kMenuItemAttrIgnoreMeta;
        item.fontFamily = true;
        items.push_back(std::move(item));
    }
    Insert(static_cast<MenuItemIndex>(afterItem + 1), std::move(items));
}

std::optional<FontNumber> Menu::FontFamilyOf(MenuItemIndex item) const {
    const MenuItem* const found = Item(item);
    if (!found || !found->fontFamily)
        return std::nullopt;
    const EncodedText name = EncodeText(found->text);
    if (!name.complete || name.bytes.size() > 255)
        return std::nullopt;
    std::string pascal(1, static_cast<char>(name.bytes.size()));
    pascal += name.bytes;
    FontNumber number = 0;
    GetFNum(reinterpret_cast<const std::uint8_t*>(pascal.data()), &number);
    return number;
}

MenuItemIndex Menu::FindFontFamily(FontNumber family) const {
    const QString name = NameOf(family);
    const MenuItemIndex named = FirstItem(*this, [&](MenuItemIndex item) {
        const MenuItem& candidate = *Item(item);
        return candidate.fontFamily &&
               name.compare(QString::fromStdString(candidate.text), Qt::CaseInsensitive) == 0;
    });
    // Two names can mean one family, and a name may have lost characters to the encoding.
    return named
               ? named
               : FirstItem(*this, [&](MenuItemIndex item) { return FontFamilyOf(item) == family; });
}

} // namespace platform
