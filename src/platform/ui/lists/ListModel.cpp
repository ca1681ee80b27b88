// SPDX-License-Identifier: BSD-3-Clause
// Rows by item number, texts by asking.
#include "platform/ui/lists/ListModel.h"

#include <algorithm>
#include <unordered_set>

namespace platform {

DataBrowserItemID ListModel::ItemAt(const QModelIndex& index) const {
    const auto row = static_cast<std::size_t>(index.row()); // past all rows when invalid
    return row < m_items.size() ? m_items[row] : kDataBrowserNoItem;
}

QModelIndex ListModel::IndexOf(DataBrowserItemID item) const {
    const auto found = std::ranges::find(m_items, item);
    return found != m_items.end() ? index(static_cast<int>(found - m_items.begin()))
                                  : QModelIndex();
}

bool ListModel::Add(std::span<const DataBrowserItemID> items) {
    std::unordered_set<DataBrowserItemID> known(m_items.begin(), m_items.end());
    for (const DataBrowserItemID item : items)
        if (item == kDataBrowserNoItem || !known.insert(item).second)
            return false;
    if (items.empty())
        return true;
    beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(items.size()) - 1);
    m_items.insert(m_items.end(), items.begin(), items.end());
    endInsertRows();
    return true;
}

void ListModel::Remove(DataBrowserItemID item) {
    const int row = IndexOf(item).row();
    if (row < 0)
        return;
    beginRemoveRows({}, row, row);
    m_items.erase(m_items.begin() + row);
    endRemoveRows();
}

void ListModel::Update() {
    if (!m_items.empty())
        emit dataChanged(index(0), index(rowCount() - 1));
}

OSStatus ListModel::Ask(DataBrowserItemID item, DataBrowserPropertyID asked,
                        DataBrowserItemData& data, bool set) const {
    const Source ask = source; // stays whole when the answer replaces it
    return ask ? ask(item, asked, data, set) : kErrDataNotSupported;
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_items.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    const DataBrowserItemID item = ItemAt(index);
    DataBrowserItemData data;
    const bool asked = role == Qt::DisplayRole || role == Qt::EditRole;
    if (!asked || item == kDataBrowserNoItem || Ask(item, property, data, false) != kNoErr)
        return {};
    return QString::fromStdString(data.text);
}

bool ListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    const DataBrowserItemID item = ItemAt(index);
    DataBrowserItemData data { value.toString().toStdString() };
    if (role != Qt::EditRole || item == kDataBrowserNoItem ||
        Ask(item, property, data, true) != kNoErr)
        return false;
    if (const QModelIndex now = IndexOf(item); now.isValid())
        emit dataChanged(now, now);
    return true;
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const {
    const DataBrowserItemID item = ItemAt(index);
    if (item == kDataBrowserNoItem)
        return Qt::NoItemFlags;
    DataBrowserItemData data;
    const OSStatus status = Ask(item, kDataBrowserItemIsEditableProperty, data, false);
    const bool editable = status == kNoErr && data.boolean;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren |
           (editable ? Qt::ItemIsEditable : Qt::NoItemFlags);
}

} // namespace platform
