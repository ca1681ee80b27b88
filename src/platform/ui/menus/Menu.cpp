// SPDX-License-Identifier: BSD-3-Clause
// The items of a menu and who owns it.
#include "platform/ui/menus/Menu.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <unordered_map>
#include <utility>

namespace platform {
namespace {

using LooseMenus = std::unordered_map<MenuRef, std::unique_ptr<Menu>>;

LooseMenus& Loose() {
    // Never ended: its menus would look for a registry that may have ended before.
    static LooseMenus& menus = *new LooseMenus;
    return menus;
}

} // namespace

Menu::Menu() : UIObject(ObjectKind::kMenu, nullptr) {}

Menu* Menu::MakeLoose() {
    auto menu = std::make_unique<Menu>();
    Menu* const made = menu.get();
    GiveLoose(std::move(menu));
    return made;
}

std::unique_ptr<Menu> Menu::TakeLoose(MenuRef menu) {
    auto node = Loose().extract(menu);
    return node ? std::move(node.mapped()) : nullptr;
}

void Menu::GiveLoose(std::unique_ptr<Menu> menu) {
    if (menu)
        Loose().emplace(menu->Ref(), std::move(menu));
}

const MenuItem* Menu::Item(MenuItemIndex item) const {
    return item >= 1 && item <= m_items.size() ? &m_items[item - 1u] : nullptr;
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

bool Menu::SetText(MenuItemIndex item, const QString& text) {
    if (!Item(item))
        return false;
    MenuItem& changed = m_items[item - 1u];
    changed.text = text;
    if (text == QLatin1String("-"))
        changed.attributes |= kMenuItemAttrSeparator;
    Changed();
    return true;
}

bool Menu::SetChecked(MenuItemIndex item, bool checked) {
    if (!Item(item))
        return false;
    // Callers clear the marks of all items before they set one.
    if (std::exchange(m_items[item - 1u].checked, checked) != checked)
        Changed();
    return true;
}

bool Menu::SetRefCon(MenuItemIndex item, std::int32_t refCon) {
    if (!Item(item))
        return false;
    m_items[item - 1u].refCon = refCon;
    return true;
}

std::unique_ptr<Menu> Menu::SetSubmenu(MenuItemIndex item, std::unique_ptr<Menu> submenu) {
    if (submenu)
        submenu->m_parent = this;
    std::swap(m_items[item - 1u].submenu, submenu);
    if (submenu)
        submenu->m_parent = nullptr;
    Changed();
    return submenu;
}

MenuItemIndex Menu::ItemInParent() const {
    if (!m_parent)
        return 0;
    const auto& items = m_parent->m_items;
    const auto mine = std::find_if(items.begin(), items.end(),
                                   [this](const auto& item) { return item.submenu.get() == this; });
    return static_cast<MenuItemIndex>(mine - items.begin() + 1);
}

void Menu::Changed() {
    for (Menu* menu = this; menu; menu = menu->m_parent) {
        if (menu->whenChanged)
            menu->whenChanged();
    }
}

} // namespace platform
