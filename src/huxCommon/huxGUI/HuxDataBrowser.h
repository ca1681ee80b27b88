// SPDX-License-Identifier: BSD-3-Clause
// A list view with rows that it owns. What the view asks and tells goes as 'HUXB' events to the window
// that it lies in, whose object reads them with ReadItemData and ReadNotification. The status of the
// handler is the answer.
#pragma once

#include <functional>
#include <map>
#include <memory>

#include "huxCommon/huxGUI/HuxControlImpl.h"
#include "platform/ui/DataBrowser.h"

// One row, which its list view owns. Derived classes say what it stands for.
class HuxDataBrowserItemData {
public:
    HuxDataBrowserItemData() = default;
    HuxDataBrowserItemData(const HuxDataBrowserItemData&) = delete;
    HuxDataBrowserItemData& operator=(const HuxDataBrowserItemData&) = delete;
    virtual ~HuxDataBrowserItemData() = default;

    platform::DataBrowserItemID GetItemID() const { return m_item; } // 0 before it is a row

private:
    friend class HuxDataBrowser;

    platform::DataBrowserItemID m_item = platform::kDataBrowserNoItem;
};

class HuxDataBrowser : public HuxControlImpl {
public:
    // The arguments of the callbacks. row is null for no item and for one that is no row any more.
    struct ItemDataRequest {
        platform::ControlID id;
        platform::ControlRef control;
        platform::DataBrowserItemID item;
        platform::DataBrowserPropertyID property;
        platform::DataBrowserItemDataRef itemData; // good while the event is handled
        bool setValue;                             // false: fill itemData; true: take it from there
        HuxDataBrowserItemData* row;
    };
    struct ItemNotification {
        platform::ControlID id;
        platform::ControlRef control;
        platform::DataBrowserItemID item;
        platform::DataBrowserItemNotification message;
        HuxDataBrowserItemData* row;
    };
    // False when the event is not of the kind.
    static bool ReadItemData(platform::EventRef event, ItemDataRequest* request);
    static bool ReadNotification(platform::EventRef event, ItemNotification* notification);

    void Detach() override; // ends the rows
    // Ends the editing of a row, which keeps what was typed.
    bool CheckControlValue() override;

    // From now on the view asks for texts and tells what happens; its column shows the property.
    platform::OSStatus InstallCallbacks(platform::DataBrowserPropertyID property);

    // Appends a row; lent, null (and the item is gone) on failure.
    HuxDataBrowserItemData* AddItem(std::unique_ptr<HuxDataBrowserItemData> item);
    void RemoveItem(HuxDataBrowserItemData* item); // ends it
    void RemoveAllItems();
    HuxDataBrowserItemData* GetItem(platform::DataBrowserItemID item) const; // null when none
    // The first row, as they were added, for which test is true; null when there is none.
    HuxDataBrowserItemData*
    FindItem(const std::function<bool(const HuxDataBrowserItemData&)>& test) const;
    std::size_t CountItems() const { return m_items.size(); }

    // The selected row; null unless exactly one is.
    HuxDataBrowserItemData* GetSelectItem() const;
    void SelectItem(const HuxDataBrowserItemData& item);             // it alone, and scrolls to it
    platform::OSStatus EditItem(const HuxDataBrowserItemData& item); // starts in-place editing
    platform::OSStatus UpdateItems();                                // all texts are asked for anew

private:
    std::map<platform::DataBrowserItemID, std::unique_ptr<HuxDataBrowserItemData>> m_items;
    platform::DataBrowserItemID m_lastItem = platform::kDataBrowserNoItem;
};
