// SPDX-License-Identifier: BSD-3-Clause
// The control over a list view. Notifications run between the steps of an operation, so each step looks
// whether the list is still there.
#include "platform/ui/DataBrowser.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/lists/ListView.h"
#include "platform/ui/windows/Input.h"

namespace platform {
namespace {

class ListControl final : public WidgetControl, public DataBrowser {
public:
    ListControl(ListView& view, Window& owner);

    ControlPartCode FocusPart() const override { return kControlListBoxPart; }
    bool DoEditCommand(std::uint32_t commandID) override;

    void SetSource(DataBrowserPropertyID property, const DataBrowserCallbacks& callbacks) override {
        m_callbacks = callbacks;
        Rows().property = property;
        Rows().Update();
    }
    OSStatus AddItems(Items items) override;
    OSStatus RemoveItems(Items items) override;
    void UpdateItems() override { Rows().Update(); }
    std::vector<DataBrowserItemID> AllItems() const override { return Rows().Items(); }
    std::vector<DataBrowserItemID> SelectedItems() const override { return m_view.SelectedItems(); }
    void SelectItems(Items items) override { m_view.Select(items); }
    OSStatus RevealItem(DataBrowserItemID item) override;
    OSStatus EditItem(DataBrowserItemID item) override;
    DataBrowserItemID EditedItem() const override { return m_view.EditedItem(); }

private:
    ListModel& Rows() const { return m_view.Rows(); }
    OSStatus Ask(DataBrowserItemID item, DataBrowserPropertyID property, DataBrowserItemData& data,
                 bool set) const;
    void Tell(DataBrowserItemID item, DataBrowserItemNotification message) const;
    void TellOfAll(Items items, DataBrowserItemNotification message) const;
    void LetGo(Items items);

    ListView& m_view;
    DataBrowserCallbacks m_callbacks;
};

// The view may outlive this control by some calls.
ListControl::ListControl(ListView& view, Window& owner) : WidgetControl(view, owner), m_view(view) {
    const Alive alive(*this);
    view.Rows().source = [this, alive](DataBrowserItemID item, DataBrowserPropertyID property,
                                       DataBrowserItemData& data, bool set) {
        return alive ? Ask(item, property, data, set) : kErrDataNotSupported;
    };
    view.notify = [this, alive](DataBrowserItemID item, DataBrowserItemNotification message) {
        if (alive)
            Tell(item, message);
    };
}

// The view calls from inside its own work, which an exception would tear.
OSStatus ListControl::Ask(DataBrowserItemID item, DataBrowserPropertyID property,
                          DataBrowserItemData& data, bool set) const {
    if (!m_callbacks.itemData)
        return kErrDataNotSupported;
    OSStatus status = kParamErr;
    Guarded([&] { status = m_callbacks.itemData(Ref(), item, property, &data, set); });
    return status;
}

void ListControl::Tell(DataBrowserItemID item, DataBrowserItemNotification message) const {
    if (m_callbacks.itemNotification)
        Guarded([&] { m_callbacks.itemNotification(Ref(), item, message); });
}

void ListControl::TellOfAll(Items items, DataBrowserItemNotification message) const {
    const Alive alive(*this);
    for (const DataBrowserItemID item : items)
        if (alive)
            Tell(item, message);
}

// Rows -------------------------------------------------------------------------------------------

OSStatus ListControl::AddItems(Items items) {
    if (!Rows().Add(items))
        return kParamErr;
    TellOfAll(items, kDataBrowserItemAdded);
    return kNoErr;
}

// Ends what goes on in rows that are about to go, so that its notifications meet whole rows.
void ListControl::LetGo(Items items) {
    const Alive alive(*this);
    QItemSelection rows;
    bool edited = false;
    for (const DataBrowserItemID item : items) {
        const QModelIndex index = Rows().IndexOf(item);
        if (index.isValid())
            rows.select(index, index);
        edited |= item != kDataBrowserNoItem && item == EditedItem();
    }
    m_view.selectionModel()->select(rows, QItemSelectionModel::Deselect);
    if (alive && edited)
        m_view.EndEdit(ListView::Text::kDrop);
}

OSStatus ListControl::RemoveItems(Items items) {
    const Alive alive(*this);
    LetGo(items);
    std::vector<DataBrowserItemID> removed;
    for (const DataBrowserItemID item : items) {
        if (!alive || !Rows().IndexOf(item).isValid())
            continue;
        Rows().Remove(item);
        removed.push_back(item);
    }
    if (alive)
        TellOfAll(removed, kDataBrowserItemRemoved);
    return removed.size() == items.size() ? kNoErr : kParamErr;
}

OSStatus ListControl::RevealItem(DataBrowserItemID item) {
    const QModelIndex index = Rows().IndexOf(item);
    if (!index.isValid())
        return kParamErr;
    m_view.scrollTo(index);
    return kNoErr;
}

OSStatus ListControl::EditItem(DataBrowserItemID item) {
    if (item != kDataBrowserNoItem)
        return m_view.Edit(item) ? kNoErr : kParamErr;
    m_view.EndEdit(ListView::Text::kKeep);
    return kNoErr;
}

bool ListControl::DoEditCommand(std::uint32_t commandID) {
    static constexpr std::pair<std::uint32_t, void (*)(QLineEdit&)> kOfEditor[] = {
        { kHICommandUndo, [](QLineEdit& editor) { editor.undo(); } },
        { kHICommandRedo, [](QLineEdit& editor) { editor.redo(); } },
        { kHICommandCut, [](QLineEdit& editor) { editor.cut(); } },
        { kHICommandCopy, [](QLineEdit& editor) { editor.copy(); } },
        { kHICommandPaste, [](QLineEdit& editor) { editor.paste(); } },
        { kHICommandClear, [](QLineEdit& editor) { editor.del(); } },
        { kHICommandSelectAll, [](QLineEdit& editor) { editor.selectAll(); } },
    };
    QLineEdit* const editor = m_view.Editor();
    if (!editor) {
        if (commandID == kHICommandSelectAll)
            m_view.selectAll();
        return commandID == kHICommandSelectAll;
    }
    for (const auto& [command, act] : kOfEditor)
        if (command == commandID)
            return act(*editor), true;
    return false;
}

} // namespace

DataBrowser* DataBrowser::Find(ControlRef control) {
    return dynamic_cast<DataBrowser*>(Control::Find(control));
}

Control* MakeListControl(QWidget& widget, Window& owner) {
    auto* const view = dynamic_cast<ListView*>(&widget);
    return view ? new ListControl(*view, owner) : nullptr;
}

} // namespace platform
