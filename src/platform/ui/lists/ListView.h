// SPDX-License-Identifier: BSD-3-Clause
// The widget of a list: one column of rows, several of which may be selected, edited in place after F2
// or a double click. Knows items, but no controls.
#pragma once

#include <functional>

#include <QLineEdit>
#include <QListView>
#include <QPointer>

#include "platform/ui/lists/ListModel.h"

namespace platform {

class ListView final : public QListView {
public:
    explicit ListView(QWidget* parent = nullptr);

    ListModel& Rows() const { return *m_rows; }

    // Told after the fact. May change the list or dispose its control.
    std::function<void(DataBrowserItemID, DataBrowserItemNotification)> notify;

    std::vector<DataBrowserItemID> SelectedItems() const; // in the order of the rows
    void Select(std::span<const DataBrowserItemID> items);

    // Selects the item, shows it and opens its editor. False when it cannot be edited.
    bool Edit(DataBrowserItemID item);
    enum class Text { kKeep, kDrop };
    void EndEdit(Text edited);
    DataBrowserItemID EditedItem() const { return m_editedItem; } // kDataBrowserNoItem for none
    QLineEdit* Editor() const { return m_editor; }                // null when no row is edited

protected:
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;

private:
    class Delegate;

    void Notify(DataBrowserItemID item, DataBrowserItemNotification message) const;
    void NotifyAll(const QItemSelection& rows, DataBrowserItemNotification message) const;

    ListModel* m_rows;
    QPointer<QLineEdit> m_editor;
    DataBrowserItemID m_editedItem = kDataBrowserNoItem;
};

} // namespace platform
