// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxWindowImplT.h"

#include <iterator>

using namespace platform;

template <class Base>
HuxWindowImplT<Base>::~HuxWindowImplT() {
    m_vectorControls.DetachAll();
    HuxCarbonEventHandler::Remove();
}

// Where the window comes from --------------------------------------------------------------------

template <class Base>
const char* HuxWindowImplT<Base>::GetWindowName() {
    return nullptr;
}

template <class Base>
const char* HuxWindowImplT<Base>::GetNibName() {
    return nullptr;
}

template <class Base>
const char* HuxWindowImplT<Base>::GetBundleName() {
    return nullptr;
}

template <class Base>
CFBundleRef HuxWindowImplT<Base>::GetBundle() {
    if (m_bundle)
        return m_bundle.Get();
    const char* const name = GetBundleName();
    return name ? CFBundleGetBundleWithIdentifier(name) : nullptr;
}

template <class Base>
void HuxWindowImplT<Base>::SetBundle(CFBundleRef bundle) {
    m_bundle = HuxCFObject<CFBundleRef>(bundle);
}

// The beginning ----------------------------------------------------------------------------------

template <class Base>
OSStatus HuxWindowImplT<Base>::CreateNibWindow(const char* windowName, const char* nibName,
                                               CFBundleRef bundle) {
    if (this->IsValid())
        return kParamErr;
    m_fInitFailed = false;
    OSStatus status = this->OpenNibWindow(windowName, nibName, bundle);
    if (status != kNoErr)
        return status;
    const Alive alive(*this);
    status = Install(this->GetEventTarget());
    if (status == kNoErr)
        status = SendEventInitializWindow();
    if (status == kEventNotHandledErr)
        status = kNoErr;
    if (status != kNoErr && alive)
        this->Dispose();
    return status;
}

template <class Base>
OSStatus HuxWindowImplT<Base>::Install(EventTargetRef target) {
    const OSStatus status = HuxCarbonEventHandler::Install(target);
    constexpr EventTypeSpec kTypes[] = {
        { kHuxEventClassWindow, kHuxEventWindowInitialize },
        { kHuxEventClassWindow, kHuxEventWindowInitializeError },
        { kHuxEventClassDataBrowser, kHuxEventDataBrowserItemData },
        { kHuxEventClassDataBrowser, kHuxEventDataBrowserNotification },
        { kEventClassWindow, kEventWindowClosed },
    };
    const OSStatus own = InstallCarbonEventHandler(target, std::size(kTypes), kTypes);
    return status == kNoErr ? own : status;
}

template <class Base>
OSStatus HuxWindowImplT<Base>::SendEventInitializWindow() {
    return SendToSelf(kHuxEventWindowInitialize);
}

template <class Base>
OSStatus HuxWindowImplT<Base>::SendEventInitializWindowError() {
    return SendToSelf(kHuxEventWindowInitializeError);
}

template <class Base>
OSStatus HuxWindowImplT<Base>::SendToSelf(std::uint32_t kind) {
    HuxCarbonEvent event(kHuxEventClassWindow, kind);
    const EventTargetRef target = this->GetEventTarget();
    const WindowRef window = this->m_hwnd;
    event.SetParameter(kEventParamPostTarget, kTypeEventTargetRef, sizeof(EventTargetRef), &target);
    event.SetParameter(kEventParamDirectObject, kTypeWindowRef, sizeof(WindowRef), &window);
    return SendEventToEventTarget(event.GetEventRef(), target);
}

// Events -----------------------------------------------------------------------------------------

template <class Base>
OSStatus HuxWindowImplT<Base>::HandleEventCurrent(EventHandlerCallRef call, EventRef event) {
    const OSStatus status = HuxCarbonEventHandler::HandleEventCurrent(call, event);
    if (status != kEventNotHandledErr || !GetCurrentObject())
        return status;
    if (GetEventClass(event) == kHuxEventClassWindow &&
        GetEventKind(event) == kHuxEventWindowInitialize)
        return HandleInitialize();
    return status;
}

template <class Base>
OSStatus HuxWindowImplT<Base>::HandleInitialize() {
    // Until the end is reached: an exception leaves no other trace in this object.
    m_fInitFailed = true;
    _AttachControls();
    if (!GetCurrentObject())
        return kParamErr;
    const bool usable = HandleInitWindow();
    if (!GetCurrentObject())
        return kParamErr;
    if (!usable) {
        SendEventInitializWindowError();
        return kParamErr;
    }
    m_fInitFailed = false;
    return kNoErr;
}

template <class Base>
OSStatus HuxWindowImplT<Base>::HandleEventEnd(EventHandlerCallRef call, EventRef event) {
    const OSStatus status = HuxCarbonEventHandler::HandleEventEnd(call, event);
    if (GetCurrentObject() && GetEventClass(event) == kEventClassWindow &&
        GetEventKind(event) == kEventWindowClosed) {
        m_vectorControls.DetachAll();
        Remove();
        this->m_hwnd = nullptr;
    }
    return status;
}

// Controls ---------------------------------------------------------------------------------------

template <class Base>
void HuxWindowImplT<Base>::_AttachControls() {}

template <class Base>
bool HuxWindowImplT<Base>::HandleInitWindow() {
    return true;
}

template <class Base>
bool HuxWindowImplT<Base>::CheckControlValue() {
    return m_vectorControls.CheckControlValues();
}

template <class Base>
void HuxWindowImplT<Base>::AttachControl(HuxControlImpl& wrapper, const ControlID& id) {
    m_vectorControls.Add(wrapper);
    wrapper.Attach(this->FindControl(id));
}

template class HuxWindowImplT<HuxWindowBase>;
