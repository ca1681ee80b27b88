// SPDX-License-Identifier: BSD-3-Clause
// The items of a menu.
#include "platform/ui/Menus.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

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
    const auto end = begin + std::min<std::ptrdiff_t>(count, m_items.end() - begin);
    // The submenus end only when nobody can find them among the items any more.
    const std::vector<MenuItem> ended(std::make_move_iterator(begin), std::make_move_iterator(end));
    m_items.erase(begin, end);
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
    for (std::size_t item = 1; item <= m_items.size(); ++item) {
        SetChecked(static_cast<MenuItemIndex>(item), false);
        if (Menu* const submenu = m_items[item - 1].submenu.get())
            submenu->ClearChecks();
    }
}

bool Menu::SetSubmenu(MenuItemIndex item, std::unique_ptr<Menu> submenu) {
    MenuItem* const changed = At(item);
    if (!changed)
        return false;
    if (submenu)
        submenu->m_parent = this;
    std::swap(changed->submenu, submenu);
    Changed();
    return true;
}

void Menu::Changed() {
    for (Menu* menu = this; menu; menu = menu->m_parent)
        if (menu->whenChanged)
            menu->whenChanged();
}

} // namespace platform
