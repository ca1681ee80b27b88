// SPDX-License-Identifier: BSD-3-Clause
// Selecting and editing the rows of a list.
#include "platform/ui/lists/ListView.h"

#include <algorithm>

#include <QStyledItemDelegate>

namespace platform {

// Sees editors come and go, whoever opens or closes them.
class ListView::Delegate final : public QStyledItemDelegate {
public:
    explicit Delegate(ListView* view) : QStyledItemDelegate(view), m_view(*view) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        QWidget* const editor = QStyledItemDelegate::createEditor(parent, option, index);
        m_view.m_editor = dynamic_cast<QLineEdit*>(editor);
        m_view.m_editedItem = m_view.Rows().ItemAt(index);
        return editor;
    }

    void destroyEditor(QWidget* editor, const QModelIndex& index) const override {
        QStyledItemDelegate::destroyEditor(editor, index);
        if (editor != m_view.m_editor)
            return;
        m_view.m_editor = nullptr;
        m_view.Notify(std::exchange(m_view.m_editedItem, kDataBrowserNoItem),
                      kDataBrowserEditStopped);
    }

private:
    ListView& m_view;
};

ListView::ListView(QWidget* parent) : QListView(parent), m_rows(new ListModel(this)) {
    setModel(m_rows);
    setItemDelegate(new Delegate(this));
    setUniformItemSizes(true);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(DoubleClicked | EditKeyPressed);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected, const QItemSelection& deselected) {
                NotifyAll(deselected, kDataBrowserItemDeselected);
                NotifyAll(selected, kDataBrowserItemSelected);
            });
    connect(this, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex& index) {
        Notify(m_rows->ItemAt(index), kDataBrowserItemDoubleClicked);
    });
}

void ListView::Notify(DataBrowserItemID item, DataBrowserItemNotification message) const {
    const auto tell = notify; // stays whole when it is replaced meanwhile
    if (tell && item != kDataBrowserNoItem)
        tell(item, message);
}

void ListView::NotifyAll(const QItemSelection& rows, DataBrowserItemNotification message) const {
    std::vector<DataBrowserItemID> items;
    for (const QModelIndex& index : rows.indexes())
        items.push_back(m_rows->ItemAt(index));
    for (const DataBrowserItemID item : items)
        Notify(item, message);
}

std::vector<DataBrowserItemID> ListView::SelectedItems() const {
    QModelIndexList indexes = selectionModel()->selectedIndexes();
    std::ranges::sort(indexes, {}, &QModelIndex::row);
    std::vector<DataBrowserItemID> items;
    for (const QModelIndex& index : indexes)
        items.push_back(m_rows->ItemAt(index));
    return items;
}

void ListView::Select(std::span<const DataBrowserItemID> items) {
    QItemSelection selection;
    QModelIndex current;
    for (const DataBrowserItemID item : items) {
        const QModelIndex index = m_rows->IndexOf(item);
        if (!index.isValid())
            continue;
        selection.select(index, index);
        current = index;
    }
    // Where the arrow keys go on from.
    if (current.isValid())
        selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

bool ListView::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    const QPointer<QLineEdit> before = m_editor;
    const bool editing = QListView::edit(index, trigger, event);
    if (m_editor && m_editor != before)
        Notify(m_editedItem, kDataBrowserEditStarted);
    return editing;
}

bool ListView::Edit(DataBrowserItemID item) {
    if (m_editedItem == item)
        return true;
    EndEdit(Text::kKeep);
    const QModelIndex index = m_rows->IndexOf(item);
    if (!(index.flags() & Qt::ItemIsEditable))
        return false;
    setCurrentIndex(index);
    scrollTo(index);
    // The notifications of the selection may have changed the rows.
    const QModelIndex now = m_rows->IndexOf(item);
    return now.isValid() && edit(now, AllEditTriggers, nullptr);
}

void ListView::EndEdit(Text edited) {
    const QPointer<QLineEdit> editor = m_editor;
    if (editor && edited == Text::kKeep)
        commitData(editor);
    if (editor && editor == m_editor)
        closeEditor(editor, edited == Text::kKeep ? QAbstractItemDelegate::NoHint
                                                  : QAbstractItemDelegate::RevertModelCache);
}

} // namespace platform
