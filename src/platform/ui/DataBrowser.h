// SPDX-License-Identifier: BSD-3-Clause
// List views: rows that are known by numbers, whose texts are asked for when they are shown and
// given back when the user has edited them in place. User-interface thread only.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "platform/ui/Controls.h"

namespace platform {

using DataBrowserItemID = std::uint32_t; // not 0; the caller's choice
using DataBrowserPropertyID = OSType;    // of a column, or one of those below
inline constexpr DataBrowserItemID kDataBrowserNoItem = 0;
inline constexpr DataBrowserPropertyID kDataBrowserItemIsEditableProperty = 3;

struct OpaqueItemData;
using DataBrowserItemDataRef = OpaqueItemData*; // good during the callback

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
    DataBrowserItemDataProc itemData;                 // may be null
    DataBrowserItemNotificationProc itemNotification; // may be null
};
OSStatus SetDataBrowserCallbacks(ControlRef browser, const DataBrowserCallbacks& callbacks);
// The one column shows this property.
OSStatus SetDataBrowserProperty(ControlRef browser, DataBrowserPropertyID property);

OSStatus AddDataBrowserItems(ControlRef browser, std::span<const DataBrowserItemID> items);
OSStatus RemoveDataBrowserItems(ControlRef browser, std::span<const DataBrowserItemID> items);
OSStatus RemoveAllDataBrowserItems(ControlRef browser);
OSStatus UpdateDataBrowserItems(ControlRef browser); // all texts are asked for anew
std::vector<DataBrowserItemID> GetDataBrowserItems(ControlRef browser); // in their order
std::vector<DataBrowserItemID> GetDataBrowserSelection(ControlRef browser);
OSStatus SetDataBrowserSelectedItems(ControlRef browser, std::span<const DataBrowserItemID> items);
OSStatus RevealDataBrowserItem(ControlRef browser, DataBrowserItemID item);
// Starts in-place editing of the item, when it is editable; kDataBrowserNoItem ends it, keeping the
// text.
OSStatus SetDataBrowserEditItem(ControlRef browser, DataBrowserItemID item);
DataBrowserItemID GetDataBrowserEditItem(ControlRef browser);

OSStatus SetDataBrowserItemDataText(DataBrowserItemDataRef itemData, CFStringRef text);
OSStatus GetDataBrowserItemDataText(DataBrowserItemDataRef itemData, CFStringRef* text); // counted
OSStatus SetDataBrowserItemDataBooleanValue(DataBrowserItemDataRef itemData, bool value);
OSStatus GetDataBrowserItemDataBooleanValue(DataBrowserItemDataRef itemData, bool* value);

} // namespace platform
