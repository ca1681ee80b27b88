// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxDataBrowser.h"

#include <algorithm>
#include <iterator>

#include "huxCommon/huxGUI/HuxCarbonEvent.h"

using namespace platform;

// The view's questions as events -------------------------------------------------------------------

namespace {

constexpr OSType kParamItem = 0x48586974;     // "HXit", a 'magn'
constexpr OSType kParamProperty = 0x48587072; // "HXpr", a 'magn'
constexpr OSType kParamItemData = 0x48586461; // "HXda", as wide as a pointer
constexpr OSType kParamSetValue = 0x48587376; // "HXsv", a 'bool'
constexpr OSType kParamMessage = 0x48586D73;  // "HXms", a 'magn'

template <class T>
void Put(HuxCarbonEvent& event, OSType name, OSType type, const T& value) {
    if (const OSStatus status = event.SetParameter(name, type, sizeof(T), &value))
        huxThrowError(status, __FILE__, __LINE__);
}

OSStatus SendToOwner(const HuxCarbonEvent& event, ControlRef browser) {
    return SendEventToEventTarget(event.GetEventRef(),
                                  GetWindowEventTarget(GetControlOwner(browser)));
}

// The platform calls these, so nothing may be thrown out of them.
OSStatus AskItemData(ControlRef browser, DataBrowserItemID item, DataBrowserPropertyID property,
                     DataBrowserItemDataRef itemData, bool setValue) {
    try {
        HuxCarbonEvent event(kHuxEventClassDataBrowser, kHuxEventDataBrowserItemData);
        Put(event, kEventParamDirectObject, kTypeControlRef, browser);
        Put(event, kParamItem, kTypeUInt32, item);
        Put(event, kParamProperty, kTypeUInt32, property);
        Put(event, kParamItemData, kTypeUInt32, itemData);
        Put(event, kParamSetValue, kTypeBoolean, std::uint8_t { setValue });
        return SendToOwner(event, browser);
    } catch (...) {
        return kMemFullErr;
    }
}

void TellNotification(ControlRef browser, DataBrowserItemID item,
                      DataBrowserItemNotification message) {
    try {
        HuxCarbonEvent event(kHuxEventClassDataBrowser, kHuxEventDataBrowserNotification);
        Put(event, kEventParamDirectObject, kTypeControlRef, browser);
        Put(event, kParamItem, kTypeUInt32, item);
        Put(event, kParamMessage, kTypeUInt32, message);
        SendToOwner(event, browser);
    } catch (...) {
        return; // a notification is answered by nobody
    }
}

template <class T>
void Take(const HuxCarbonEvent& event, OSType name, OSType type, T* value) {
    event.GetParameter(name, type, sizeof(T), value);
}

HuxDataBrowserItemData* RowOf(ControlRef browser, DataBrowserItemID item) {
    auto const* wrapper = dynamic_cast<HuxDataBrowser*>(HuxControlImpl::FromControl(browser));
    return wrapper ? wrapper->GetItem(item) : nullptr;
}

// What both kinds of event have.
template <class Arguments>
void TakeCommon(const HuxCarbonEvent& event, Arguments* arguments) {
    Take(event, kEventParamDirectObject, kTypeControlRef, &arguments->control);
    Take(event, kParamItem, kTypeUInt32, &arguments->item);
    GetControlID(arguments->control, &arguments->id);
    arguments->row = RowOf(arguments->control, arguments->item);
}

} // namespace

bool HuxDataBrowser::ReadItemData(EventRef event, ItemDataRequest* request) {
    *request = {};
    HuxCarbonEvent const held(event, true);
    if (!held.Is(kHuxEventClassDataBrowser, kHuxEventDataBrowserItemData))
        return false;
    std::uint8_t setValue = 0;
    TakeCommon(held, request);
    Take(held, kParamProperty, kTypeUInt32, &request->property);
    Take(held, kParamItemData, kTypeUInt32, &request->itemData);
    Take(held, kParamSetValue, kTypeBoolean, &setValue);
    request->setValue = setValue != 0;
    return true;
}

bool HuxDataBrowser::ReadNotification(EventRef event, ItemNotification* notification) {
    *notification = {};
    HuxCarbonEvent const held(event, true);
    if (!held.Is(kHuxEventClassDataBrowser, kHuxEventDataBrowserNotification))
        return false;
    TakeCommon(held, notification);
    Take(held, kParamMessage, kTypeUInt32, &notification->message);
    return true;
}

OSStatus HuxDataBrowser::InstallCallbacks(DataBrowserPropertyID property) {
    if (const OSStatus status = SetDataBrowserProperty(m_hctrl, property))
        return status;
    return SetDataBrowserCallbacks(m_hctrl, { AskItemData, TellNotification });
}

// Rows ---------------------------------------------------------------------------------------------

HuxDataBrowserItemData* HuxDataBrowser::AddItem(std::unique_ptr<HuxDataBrowserItemData> item) {
    DataBrowserItemID const id = ++m_lastItem;
    item->m_item = id;
    // The view asks for the row's text at once.
    m_items.emplace(id, std::move(item));
    if (AddDataBrowserItems(m_hctrl, { &id, 1 }) != kNoErr)
        m_items.erase(id);
    return GetItem(id);
}

void HuxDataBrowser::RemoveItem(HuxDataBrowserItemData* item) {
    if (!item || GetItem(item->GetItemID()) != item)
        return;
    DataBrowserItemID const id = item->GetItemID();
    RemoveDataBrowserItems(m_hctrl, { &id, 1 });
    m_items.erase(id);
}

void HuxDataBrowser::RemoveAllItems() {
    RemoveAllDataBrowserItems(m_hctrl);
    m_items.clear();
}

void HuxDataBrowser::Detach() {
    HuxControlImpl::Detach();
    m_items.clear();
}

HuxDataBrowserItemData* HuxDataBrowser::GetItem(DataBrowserItemID item) const {
    auto const found = m_items.find(item);
    return found == m_items.end() ? nullptr : found->second.get();
}

HuxDataBrowserItemData*
HuxDataBrowser::FindItem(const std::function<bool(const HuxDataBrowserItemData&)>& test) const {
    auto const found =
        std::ranges::find_if(m_items, [&test](auto const& item) { return test(*item.second); });
    return found == m_items.end() ? nullptr : found->second.get();
}

// Selection ----------------------------------------------------------------------------------------

HuxDataBrowserItemData* HuxDataBrowser::GetSelectItem() const {
    auto const selection = GetDataBrowserSelection(m_hctrl);
    return selection.size() == 1 ? GetItem(selection.front()) : nullptr;
}

void HuxDataBrowser::SelectItem(const HuxDataBrowserItemData& item) {
    DataBrowserItemID const id = item.GetItemID();
    SetDataBrowserSelectedItems(m_hctrl, { &id, 1 });
    RevealDataBrowserItem(m_hctrl, id);
}

OSStatus HuxDataBrowser::EditItem(const HuxDataBrowserItemData& item) {
    return SetDataBrowserEditItem(m_hctrl, item.GetItemID());
}

OSStatus HuxDataBrowser::UpdateItems() {
    return UpdateDataBrowserItems(m_hctrl);
}
