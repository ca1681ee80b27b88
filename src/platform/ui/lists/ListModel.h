// SPDX-License-Identifier: BSD-3-Clause
// The rows of a list view: item numbers in an order. Texts are asked for when they are shown, and what
// was edited is given back.
#pragma once

#include <functional>
#include <span>
#include <vector>

#include <QAbstractListModel>

#include "platform/ui/DataBrowser.h"

namespace platform {

class ListModel final : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    // Asks for a property of an item, or gives it when set. What it calls may change the list.
    using Source = std::function<OSStatus(DataBrowserItemID item, DataBrowserPropertyID property,
                                          DataBrowserItemData& data, bool set)>;
    Source source;
    DataBrowserPropertyID property = 0; // that the rows show

    const std::vector<DataBrowserItemID>& Items() const { return m_items; }
    DataBrowserItemID ItemAt(const QModelIndex& index) const; // kDataBrowserNoItem for none
    QModelIndex IndexOf(DataBrowserItemID item) const;        // invalid for none

    // False, and nothing added, for an item that is there already or kDataBrowserNoItem.
    bool Add(std::span<const DataBrowserItemID> items);
    void Remove(DataBrowserItemID item);
    void Update();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    OSStatus Ask(DataBrowserItemID item, DataBrowserPropertyID asked, DataBrowserItemData& data,
                 bool set) const;

    std::vector<DataBrowserItemID> m_items;
};

} // namespace platform
