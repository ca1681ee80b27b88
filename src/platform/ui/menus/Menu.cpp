// SPDX-License-Identifier: BSD-3-Clause
// The items of a menu, the installed font families among them.
#include "platform/ui/Menus.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <string>
#include <utility>

#include <QString>

#include "platform/TextEncoding.h"

namespace platform {

Menu::Menu() : UIObject(ObjectKind::kMenu, nullptr) {}

const MenuItem* Menu::Item(MenuItemIndex item) const {
    return item >= 1 && item <= m_items.size() ? &m_items[item - 1u] : nullptr;
}

MenuItem* Menu::At(MenuItemIndex item) {
    return const_cast<MenuItem*>(std::as_const(*this).Item(item));
}

void Menu::Insert(MenuItemIndex before, std::vector<MenuItem> items) {
    const std::size_t room = std::numeric_limits<MenuItemIndex>::max() - m_items.size();
    if (items.size() > room)
        items.resize(room);
    const auto place = std::clamp<std::size_t>(before, 1, m_items.size() + 1) - 1;
    m_items.insert(m_items.begin() + static_cast<std::ptrdiff_t>(place),
                   std::make_move_iterator(items.begin()), std::make_move_iterator(items.end()));
    Changed();
}

MenuItemIndex Menu::Append(std::string text, std::int32_t refCon, std::uint32_t attributes) {
    const MenuItemIndex before = Count();
    if (before == std::numeric_limits<MenuItemIndex>::max())
        return 0;
    std::vector<MenuItem> items(1);
    if (text == "-" && !(attributes & kMenuItemAttrIgnoreMeta))
        attributes |= kMenuItemAttrSeparator;
    items[0].text = std::move(text);
    items[0].attributes = attributes;
    items[0].refCon = refCon;
    const auto added = static_cast<MenuItemIndex>(before + 1);
    Insert(added, std::move(items));
    return added;
}

void Menu::Delete(MenuItemIndex first, MenuItemIndex count) {
    if (!Item(first) || count == 0)
        return;
    const auto begin = m_items.begin() + (first - 1);
    m_items.erase(begin, begin + std::min<std::ptrdiff_t>(count, m_items.end() - begin));
    Changed();
}

bool Menu::SetText(MenuItemIndex item, std::string text) {
    MenuItem* const changed = At(item);
    if (!changed)
        return false;
    if (text == "-")
        changed->attributes |= kMenuItemAttrSeparator;
    changed->text = std::move(text);
    Changed();
    return true;
}

bool Menu::SetChecked(MenuItemIndex item, bool checked) {
    MenuItem* const changed = At(item);
    // Callers clear the marks of all items before they set one.
    if (changed && std::exchange(changed->checked, checked) != checked)
        Changed();
    return changed;
}

void Menu::ClearChecks() {
    for (std::size_t item = 1; item <= m_items.size(); ++item)
        SetChecked(static_cast<MenuItemIndex>(item), false);
}

void Menu::Changed() {
    if (whenChanged)
        whenChanged();
}

// Font families ----------------------------------------------------------------------------------

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
