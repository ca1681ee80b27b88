// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxDataBrowser.h"

#include <algorithm>

#include "huxCommon/huxGUI/HuxCarbonEvent.h"

using namespace platform;

// The view's questions as events -----------------------------------------------------------------

namespace {

constexpr OSType kParamArguments = 0x48586172; // "HXar", the address of the arguments

HuxDataBrowserItemData* RowOf(ControlRef browser, DataBrowserItemID item) {
    const auto* wrapper = dynamic_cast<HuxDataBrowser*>(HuxControlImpl::FromControl(browser));
    return wrapper ? wrapper->GetItem(item) : nullptr;
}

// The platform calls for this, so nothing may be thrown out of it.
template <class Arguments>
OSStatus SendToOwner(std::uint32_t kind, Arguments arguments) {
    try {
        const Control* const control = Control::Find(arguments.control);
        if (!control)
            return kErrInvalidControl;
        arguments.id = control->id.value_or(ControlID {});
        arguments.row = RowOf(arguments.control, arguments.item);
        const Arguments* const address = &arguments;
        HuxCarbonEvent event(kHuxEventClassDataBrowser, kind);
        event.SetParameter(kEventParamDirectObject, kTypeControlRef, sizeof(ControlRef),
                           &arguments.control);
        event.SetParameter(kParamArguments, kTypeUInt32, sizeof address, &address);
        return SendEventToEventTarget(event.GetEventRef(), control->Owner().Target());
    } catch (...) {
        return kMemFullErr;
    }
}

OSStatus AskItemData(ControlRef browser, DataBrowserItemID item, DataBrowserPropertyID property,
                     DataBrowserItemDataRef itemData, bool setValue) {
    return SendToOwner(kHuxEventDataBrowserItemData,
                       HuxDataBrowser::ItemDataRequest {
                           {}, browser, item, property, itemData, setValue, nullptr });
}

void TellNotification(ControlRef browser, DataBrowserItemID item,
                      DataBrowserItemNotification message) {
    SendToOwner(kHuxEventDataBrowserNotification,
                HuxDataBrowser::ItemNotification { {}, browser, item, message, nullptr });
}

template <class Arguments>
bool Read(EventRef event, std::uint32_t kind, Arguments* arguments) {
    *arguments = {};
    const HuxCarbonEvent held(event, true);
    const Arguments* sent = nullptr;
    if (!held.Is(kHuxEventClassDataBrowser, kind) ||
        held.GetParameter(kParamArguments, kTypeUInt32, sizeof sent, &sent) != kNoErr)
        return false;
    *arguments = *sent;
    return true;
}

} // namespace

bool HuxDataBrowser::ReadItemData(EventRef event, ItemDataRequest* request) {
    return Read(event, kHuxEventDataBrowserItemData, request);
}

bool HuxDataBrowser::ReadNotification(EventRef event, ItemNotification* notification) {
    return Read(event, kHuxEventDataBrowserNotification, notification);
}

OSStatus HuxDataBrowser::InstallCallbacks(DataBrowserPropertyID property) {
    return Do(&DataBrowser::SetSource, property, { AskItemData, TellNotification });
}

// Rows -------------------------------------------------------------------------------------------

HuxDataBrowserItemData* HuxDataBrowser::AddItem(std::unique_ptr<HuxDataBrowserItemData> item) {
    const DataBrowserItemID id = ++m_lastItem;
    item->m_item = id;
    // The view asks for the row's text at once.
    m_items.emplace(id, std::move(item));
    if (Do(&DataBrowser::AddItems, { &id, 1 }) != kNoErr)
        m_items.erase(id);
    return GetItem(id);
}

void HuxDataBrowser::RemoveItem(HuxDataBrowserItemData* item) {
    if (!item || GetItem(item->GetItemID()) != item)
        return;
    const DataBrowserItemID id = item->GetItemID();
    Do(&DataBrowser::RemoveItems, { &id, 1 });
    m_items.erase(id);
}

void HuxDataBrowser::RemoveAllItems() {
    Do(&DataBrowser::RemoveItems, Ask(&DataBrowser::AllItems));
    m_items.clear();
}

void HuxDataBrowser::Detach() {
    HuxControlImpl::Detach();
    m_items.clear();
}

bool HuxDataBrowser::CheckControlValue() {
    Do(&DataBrowser::EditItem, kDataBrowserNoItem);
    return true;
}

HuxDataBrowserItemData* HuxDataBrowser::GetItem(DataBrowserItemID item) const {
    const auto found = m_items.find(item);
    return found == m_items.end() ? nullptr : found->second.get();
}

HuxDataBrowserItemData*
HuxDataBrowser::FindItem(const std::function<bool(const HuxDataBrowserItemData&)>& test) const {
    const auto found =
        std::ranges::find_if(m_items, [&test](const auto& item) { return test(*item.second); });
    return found == m_items.end() ? nullptr : found->second.get();
}

// Selection --------------------------------------------------------------------------------------

HuxDataBrowserItemData* HuxDataBrowser::GetSelectItem() const {
    const auto selection = Ask(&DataBrowser::SelectedItems);
    return selection.size() == 1 ? GetItem(selection.front()) : nullptr;
}

void HuxDataBrowser::SelectItem(const HuxDataBrowserItemData& item) {
    const DataBrowserItemID id = item.GetItemID();
    Do(&DataBrowser::SelectItems, { &id, 1 });
    Do(&DataBrowser::RevealItem, id);
}

OSStatus HuxDataBrowser::EditItem(const HuxDataBrowserItemData& item) {
    return Do(&DataBrowser::EditItem, item.GetItemID());
}

OSStatus HuxDataBrowser::UpdateItems() {
    return Do(&DataBrowser::UpdateItems);
}
