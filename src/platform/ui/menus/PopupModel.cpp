// SPDX-License-Identifier: BSD-3-Clause
// Rows from items, made anew after each change of the menu.
#include "platform/ui/menus/PopupModel.h"

#include <algorithm>

namespace platform {
namespace {

const MenuItem* ItemOf(const PopupModel::Row& row) {
    const Menu* const menu = Menu::Find(row.menu);
    return menu ? menu->Item(row.item) : nullptr;
}

} // namespace

PopupModel::PopupModel(QObject* parent) : QAbstractListModel(parent) {
    m_menu->whenChanged = [this] { Rebuild(); };
}

void PopupModel::Rebuild() {
    if (beforeReset)
        beforeReset();
    beginResetModel();
    m_rows.clear();
    m_hasCheckMarks = false;
    AddRows(*m_menu, 0, 0);
    endResetModel();
    if (afterReset)
        afterReset();
}

void PopupModel::AddRows(const Menu& menu, MenuItemIndex topItem, int depth) {
    for (std::size_t i = 1; i <= menu.Count(); ++i) {
        const auto number = static_cast<MenuItemIndex>(i);
        const MenuItem& item = *menu.Item(number);
        const MenuItemIndex top = depth == 0 ? number : topItem;
        m_rows.push_back({ menu.Ref(), number, top, depth, item.IsPickable(), item.IsSeparator(),
                           item.submenu != nullptr });
        m_hasCheckMarks |= item.checked;
        if (item.submenu)
            AddRows(*item.submenu, top, depth + 1);
    }
}

const PopupModel::Row* PopupModel::At(int row) const {
    const bool there = row >= 0 && static_cast<std::size_t>(row) < m_rows.size();
    return there ? &m_rows[static_cast<std::size_t>(row)] : nullptr;
}

int PopupModel::RowOfTopItem(std::int32_t item) const {
    const auto row = std::ranges::lower_bound(
        m_rows, item, {}, [](const Row& candidate) { return std::int32_t { candidate.topItem }; });
    const bool found = row != m_rows.end() && row->topItem == item;
    return found ? static_cast<int>(row - m_rows.begin()) : -1;
}

int PopupModel::RowOf(MenuRef menu, MenuItemIndex item) const {
    const auto row = std::ranges::find_if(
        m_rows, [=](const Row& r) { return r.menu == menu && r.item == item; });
    return row != m_rows.end() ? static_cast<int>(row - m_rows.begin()) : -1;
}

int PopupModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant PopupModel::data(const QModelIndex& index, int role) const {
    const Row* const row = At(index.row());
    const MenuItem* const item = row ? ItemOf(*row) : nullptr;
    if (!item)
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return row->separator ? QString() : QString::fromStdString(item->text);
    case Qt::CheckStateRole: // none, so that readers of the screen call only marked items checked
        return item->checked ? QVariant(Qt::Checked) : QVariant();
    case Qt::AccessibleDescriptionRole: // which is how a combo box knows separators
        return row->separator ? QStringLiteral("separator") : QString();
    case kDepth:
        return row->depth;
    case kTitle:
        return row->title;
    case kSeparator:
        return row->separator;
    default:
        return {};
    }
}

Qt::ItemFlags PopupModel::flags(const QModelIndex& index) const {
    const Row* const row = At(index.row());
    if (!row || !row->pickable)
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

bool PopupModel::insertRows(int row, int count, const QModelIndex& parent) {
    if (parent.isValid() || row < 0 || row > rowCount() || count <= 0)
        return false;
    const Row* const before = At(row);
    if (before && before->depth > 0)
        return false;
    const auto place = static_cast<MenuItemIndex>(before ? before->item : m_menu->Count() + 1);
    m_menu->Insert(place, std::vector<MenuItem>(static_cast<std::size_t>(count)));
    return true;
}

bool PopupModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    const Row* const row = At(index.row());
    Menu* const menu = row ? Menu::Find(row->menu) : nullptr;
    if (!menu || (role != Qt::EditRole && role != Qt::DisplayRole))
        return false;
    return menu->SetText(row->item, value.toString().toStdString());
}

} // namespace platform
