// SPDX-License-Identifier: BSD-3-Clause
// The calls of DataBrowser.h. Notifications run between the steps of a call, so each step looks the
// control up again.
#include "platform/ui/DataBrowser.h"

#include "platform/ui/QtStrings.h"
#include "platform/ui/lists/ListControl.h"

namespace platform {
namespace {

template <class Act>
OSStatus WithList(ControlRef browser, Act act) {
    ListControl* const control = ListControl::Find(browser);
    return control ? act(*control) : kErrInvalidControl;
}

void NotifyAll(ControlRef browser, std::span<const DataBrowserItemID> items,
               DataBrowserItemNotification message) {
    for (const DataBrowserItemID item : items) {
        const ListControl* const control = ListControl::Find(browser);
        if (!control || !control->callbacks.itemNotification)
            return;
        control->callbacks.itemNotification(browser, item, message);
    }
}

// Ends what goes on in rows that are about to go, so that its notifications meet whole rows.
void Release(ListControl& control, std::span<const DataBrowserItemID> items) {
    const ControlRef browser = control.Ref();
    QItemSelection rows;
    bool edited = false;
    for (const DataBrowserItemID item : items) {
        const QModelIndex index = control.View().Rows().IndexOf(item);
        if (index.isValid())
            rows.select(index, index);
        edited |= item != kDataBrowserNoItem && item == control.View().EditedItem();
    }
    control.View().selectionModel()->select(rows, QItemSelectionModel::Deselect);
    if (ListControl* const left = ListControl::Find(browser); left && edited)
        left->View().EndEdit(ListView::Text::kDrop);
}

} // namespace

OSStatus SetDataBrowserCallbacks(ControlRef browser, const DataBrowserCallbacks& callbacks) {
    return WithList(browser, [&](ListControl& control) {
        control.callbacks = callbacks;
        control.View().Rows().Update();
        return kNoErr;
    });
}

OSStatus SetDataBrowserProperty(ControlRef browser, DataBrowserPropertyID property) {
    return WithList(browser, [&](ListControl& control) {
        control.View().Rows().property = property;
        control.View().Rows().Update();
        return kNoErr;
    });
}

OSStatus AddDataBrowserItems(ControlRef browser, std::span<const DataBrowserItemID> items) {
    return WithList(browser, [&](const ListControl& control) {
        if (!control.View().Rows().Add(items))
            return kParamErr;
        NotifyAll(browser, items, kDataBrowserItemAdded);
        return kNoErr;
    });
}

OSStatus RemoveDataBrowserItems(ControlRef browser, std::span<const DataBrowserItemID> items) {
    return WithList(browser, [&](ListControl& control) {
        Release(control, items);
        std::vector<DataBrowserItemID> removed;
        for (const DataBrowserItemID item : items) {
            const ListControl* const left = ListControl::Find(browser);
            if (!left || !left->View().Rows().IndexOf(item).isValid())
                continue;
            left->View().Rows().Remove(item);
            removed.push_back(item);
        }
        NotifyAll(browser, removed, kDataBrowserItemRemoved);
        return removed.size() == items.size() ? kNoErr : kParamErr;
    });
}

OSStatus RemoveAllDataBrowserItems(ControlRef browser) {
    const std::vector<DataBrowserItemID> items = GetDataBrowserItems(browser);
    return RemoveDataBrowserItems(browser, items);
}

OSStatus UpdateDataBrowserItems(ControlRef browser) {
    return WithList(browser, [](const ListControl& control) {
        control.View().Rows().Update();
        return kNoErr;
    });
}

std::vector<DataBrowserItemID> GetDataBrowserItems(ControlRef browser) {
    const ListControl* const control = ListControl::Find(browser);
    return control ? control->View().Rows().Items() : std::vector<DataBrowserItemID>();
}

std::vector<DataBrowserItemID> GetDataBrowserSelection(ControlRef browser) {
    const ListControl* const control = ListControl::Find(browser);
    return control ? control->View().SelectedItems() : std::vector<DataBrowserItemID>();
}

OSStatus SetDataBrowserSelectedItems(ControlRef browser, std::span<const DataBrowserItemID> items) {
    return WithList(browser, [&](const ListControl& control) {
        control.View().Select(items);
        return kNoErr;
    });
}

OSStatus RevealDataBrowserItem(ControlRef browser, DataBrowserItemID item) {
    return WithList(browser, [&](const ListControl& control) {
        const QModelIndex index = control.View().Rows().IndexOf(item);
        if (!index.isValid())
            return kParamErr;
        control.View().scrollTo(index);
        return kNoErr;
    });
}

OSStatus SetDataBrowserEditItem(ControlRef browser, DataBrowserItemID item) {
    return WithList(browser, [&](const ListControl& control) {
        if (item != kDataBrowserNoItem)
            return control.View().Edit(item) ? kNoErr : kParamErr;
        control.View().EndEdit(ListView::Text::kKeep);
        return kNoErr;
    });
}

DataBrowserItemID GetDataBrowserEditItem(ControlRef browser) {
    const ListControl* const control = ListControl::Find(browser);
    return control ? control->View().EditedItem() : kDataBrowserNoItem;
}

OSStatus SetDataBrowserItemDataText(DataBrowserItemDataRef itemData, CFStringRef text) {
    if (!itemData)
        return kParamErr;
    itemData->text = QStringFrom(text);
    return kNoErr;
}

OSStatus GetDataBrowserItemDataText(DataBrowserItemDataRef itemData, CFStringRef* text) {
    if (!itemData || !text)
        return kParamErr;
    *text = CFStringCreateWithQString(itemData->text);
    return kNoErr;
}

OSStatus SetDataBrowserItemDataBooleanValue(DataBrowserItemDataRef itemData, bool value) {
    if (!itemData)
        return kParamErr;
    itemData->boolean = value;
    return kNoErr;
}

OSStatus GetDataBrowserItemDataBooleanValue(DataBrowserItemDataRef itemData, bool* value) {
    if (!itemData || !value)
        return kParamErr;
    if (!itemData->boolean)
        return kErrDataNotSupported;
    *value = *itemData->boolean;
    return kNoErr;
}

} // namespace platform
