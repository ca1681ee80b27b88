// SPDX-License-Identifier: BSD-3-Clause
// Rows from items, made anew after each change of the menu.
#include "platform/ui/menus/PopupModel.h"

namespace platform {

PopupModel::PopupModel(QObject* parent) : QAbstractListModel(parent) {
    m_menu->whenChanged = [this] { Rebuild(); };
}

void PopupModel::Rebuild() {
    if (beforeReset)
        beforeReset();
    beginResetModel();
    m_count = m_menu->Count();
    m_hasCheckMarks = false;
    for (int row = 0; row < m_count; ++row)
        m_hasCheckMarks |= At(row)->checked;
    endResetModel();
    if (afterReset)
        afterReset();
}

const MenuItem* PopupModel::At(int row) const {
    const bool there = row >= 0 && row < m_count;
    return there ? m_menu->Item(static_cast<MenuItemIndex>(row + 1)) : nullptr;
}

int PopupModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_count;
}

QVariant PopupModel::data(const QModelIndex& index, int role) const {
    const MenuItem* const item = At(index.row());
    if (!item)
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return item->IsSeparator() ? QString() : QString::fromStdString(item->text);
    case Qt::CheckStateRole: // none, so that readers of the screen call only marked items checked
        return item->checked ? QVariant(Qt::Checked) : QVariant();
    case Qt::AccessibleDescriptionRole: // which is how a combo box knows separators
        return item->IsSeparator() ? QStringLiteral("separator") : QString();
    case kSeparator:
        return item->IsSeparator();
    default:
        return {};
    }
}

Qt::ItemFlags PopupModel::flags(const QModelIndex& index) const {
    const MenuItem* const item = At(index.row());
    if (!item || !item->IsPickable())
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

bool PopupModel::insertRows(int row, int count, const QModelIndex& parent) {
    if (parent.isValid() || row < 0 || row > rowCount() || count <= 0)
        return false;
    m_menu->Insert(static_cast<MenuItemIndex>(row + 1),
                   std::vector<MenuItem>(static_cast<std::size_t>(count)));
    return true;
}

bool PopupModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!At(index.row()) || (role != Qt::EditRole && role != Qt::DisplayRole))
        return false;
    return m_menu->SetText(static_cast<MenuItemIndex>(index.row() + 1),
                           value.toString().toStdString());
}

} // namespace platform
