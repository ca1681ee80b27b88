// SPDX-License-Identifier: BSD-3-Clause
// List views: rows that are known by numbers, whose texts are asked for when they are shown and
// given back when the user has edited them in place. User-interface thread only.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/ui/Controls.h"

namespace platform {

using DataBrowserItemID = std::uint32_t; // not 0; the caller's choice
using DataBrowserPropertyID = OSType;    // of a column, or one of those below
inline constexpr DataBrowserItemID kDataBrowserNoItem = 0;
inline constexpr DataBrowserPropertyID kDataBrowserItemIsEditableProperty = 3;

// What is asked of an item, or given back; which of them, the property says.
struct DataBrowserItemData {
    std::string text; // UTF-8
    bool boolean = false;
};
using DataBrowserItemDataRef = DataBrowserItemData*; // good during the callback

// setValue false: fill itemData with the property of the item; true: take it from there. Not 0: the
// property stays as it was.
using DataBrowserItemDataProc = OSStatus (*)(ControlRef browser, DataBrowserItemID item,
                                             DataBrowserPropertyID property,
                                             DataBrowserItemDataRef itemData, bool setValue);
using DataBrowserItemNotification = std::uint32_t;
inline constexpr DataBrowserItemNotification kDataBrowserItemAdded = 1;
inline constexpr DataBrowserItemNotification kDataBrowserItemRemoved = 2;
inline constexpr DataBrowserItemNotification kDataBrowserEditStarted = 3;
inline constexpr DataBrowserItemNotification kDataBrowserEditStopped = 4;
inline constexpr DataBrowserItemNotification kDataBrowserItemSelected = 5;
inline constexpr DataBrowserItemNotification kDataBrowserItemDeselected = 6;
inline constexpr DataBrowserItemNotification kDataBrowserItemDoubleClicked = 7;
using DataBrowserItemNotificationProc = void (*)(ControlRef browser, DataBrowserItemID item,
                                                 DataBrowserItemNotification message);
struct DataBrowserCallbacks {
    DataBrowserItemDataProc itemData = nullptr;                 // may be null
    DataBrowserItemNotificationProc itemNotification = nullptr; // may be null
};

// What a ListView does beside what all controls do. Notifications run within the calls that change
// rows, selection or editing; the list may be gone afterwards. kParamErr: an item is not there, is
// there already, or cannot be edited.
class DataBrowser {
public:
    using Items = std::span<const DataBrowserItemID>;

    static DataBrowser* Find(ControlRef control); // null for controls of other families as well

    // The one column shows the property.
    virtual void SetSource(DataBrowserPropertyID property,
                           const DataBrowserCallbacks& callbacks) = 0;
    virtual OSStatus AddItems(Items items) = 0; // at the end
    virtual OSStatus RemoveItems(Items items) = 0;
    virtual void UpdateItems() = 0;                              // all texts are asked for anew
    virtual std::vector<DataBrowserItemID> AllItems() const = 0; // in their order
    virtual std::vector<DataBrowserItemID> SelectedItems() const = 0;
    virtual void SelectItems(Items items) = 0;
    virtual OSStatus RevealItem(DataBrowserItemID item) = 0;
    // Starts in-place editing of the item; kDataBrowserNoItem ends it, keeping the text.
    virtual OSStatus EditItem(DataBrowserItemID item) = 0;
    virtual DataBrowserItemID EditedItem() const = 0;

protected:
    ~DataBrowser() = default;
};

} // namespace platform
