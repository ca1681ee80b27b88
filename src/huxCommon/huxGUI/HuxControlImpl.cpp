// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxControlImpl.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "huxCommon/huxGUI/HuxAttachedControls.h"
#include "huxCommon/huxGUI/HuxCarbonEvent.h"

using namespace platform;

namespace {

constexpr std::uint32_t kBlankCommandID = 0x20202020; // four blanks: none was given in the form

std::int16_t Coordinate(long value) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<long>(value, Limits::min(), Limits::max()));
}

} // namespace

HuxControlImpl::~HuxControlImpl() {
    if (m_pAttachedTo)
        m_pAttachedTo->Remove(*this);
    HuxControlImpl::Detach();
}

// The control ------------------------------------------------------------------------------------

OSStatus HuxControlImpl::Attach(ControlRef control) {
    if (m_hctrl)
        Detach();
    m_hctrl = control;
    if (!control)
        return kNoErr;
    Control* const found = Control::Find(control);
    if (!found)
        return kErrInvalidControl;
    if (found->commandID == 0 || found->commandID == kBlankCommandID)
        found->commandID = static_cast<std::uint32_t>(GetID().id);
    found->SetProperty(kHuxPropertyCreator, kHuxPropertyObject, this);
    return Install(found->Target());
}

void HuxControlImpl::Detach() {
    Remove();
    const ControlRef control = std::exchange(m_hctrl, nullptr);
    if (FromControl(control) == this)
        Control::Find(control)->SetProperty(kHuxPropertyCreator, kHuxPropertyObject, nullptr);
}

HuxControlImpl* HuxControlImpl::FromControl(ControlRef control) {
    const Control* const found = Control::Find(control);
    return found ? static_cast<HuxControlImpl*>(
                       found->Property(kHuxPropertyCreator, kHuxPropertyObject))
                 : nullptr;
}

// State ------------------------------------------------------------------------------------------

OSStatus HuxControlImpl::Activate() {
    return Do(&Control::SetActive, true);
}

OSStatus HuxControlImpl::Deactivate() {
    return Do(&Control::SetActive, false);
}

// The window's buffer is kept right whether that is asked for or not.
OSStatus HuxControlImpl::SetVisibility(bool visible, bool /*redraw*/) {
    return Do(&Control::SetVisible, visible);
}

OSStatus HuxControlImpl::Show(bool redraw) {
    return SetVisibility(true, redraw);
}

OSStatus HuxControlImpl::Hide(bool redraw) {
    return SetVisibility(false, redraw);
}

OSStatus HuxControlImpl::Enable() {
    return Do(&Control::SetEnabled, true);
}

OSStatus HuxControlImpl::Disable() {
    return Do(&Control::SetEnabled, false);
}

OSStatus HuxControlImpl::Draw(bool now) {
    return now ? Do(&Control::Draw) : Update();
}

OSStatus HuxControlImpl::Update() {
    return Do(&Control::Invalidate);
}

OSStatus HuxControlImpl::FlushPortBuffer() {
    if (Window* const owner = Window::Find(GetOwner()))
        owner->Flush();
    return kNoErr;
}

OSStatus HuxControlImpl::GetFontStyle(ControlFontStyleRec* style) {
    *style = Ask(&Control::FontStyle);
    return IsValid() ? kNoErr : kErrInvalidControl;
}

OSStatus HuxControlImpl::SetFontStyle(const ControlFontStyleRec* style) {
    return style ? Do(&Control::SetFontStyle, *style) : kParamErr;
}

OSStatus HuxControlImpl::SetControlSize(unsigned short size) {
    return Do(&Control::SetSizeVariant, size);
}

OSStatus HuxControlImpl::Move(long left, long top) {
    return Do(&Control::Move, Coordinate(left), Coordinate(top));
}

OSStatus HuxControlImpl::SetSize(long width, long height) {
    return Do(&Control::Resize, Coordinate(width), Coordinate(height));
}

// Embedding --------------------------------------------------------------------------------------

OSStatus HuxControlImpl::Embed(ControlRef container) {
    Control* const into = Control::Find(container);
    return into ? Do(&Control::EmbedIn, *into) : kErrInvalidControl;
}

OSStatus HuxControlImpl::GetSuper(ControlRef* super) {
    const Control* const around = Ask(&Control::Super);
    *super = around ? around->Ref() : nullptr;
    return IsValid() ? kNoErr : kErrInvalidControl;
}

ControlRef HuxControlImpl::GetSuper() {
    ControlRef super = nullptr;
    GetSuper(&super);
    return super;
}

OSStatus HuxControlImpl::CountSub(long* count) {
    *count = static_cast<long>(Ask(&Control::Subs).size());
    return IsValid() ? kNoErr : kErrInvalidControl;
}

long HuxControlImpl::CountSub() {
    long count = 0;
    CountSub(&count);
    return count;
}

OSStatus HuxControlImpl::GetIndexedSub(long index, ControlRef* sub) {
    const std::vector<Control*> subs = Ask(&Control::Subs);
    const bool there = index >= 1 && std::cmp_less_equal(index, subs.size());
    *sub = there ? subs[static_cast<std::size_t>(index) - 1]->Ref() : nullptr;
    return there ? kNoErr : kErrControlNotFound;
}

ControlRef HuxControlImpl::GetIndexedSub(long index) {
    ControlRef sub = nullptr;
    GetIndexedSub(index, &sub);
    return sub;
}

// Events -----------------------------------------------------------------------------------------

bool HuxControlImpl::CheckControlValue() {
    return true;
}

OSStatus HuxControlImpl::PostCommand(long value) {
    if (!IsValid())
        return kErrInvalidControl;
    return HuxCarbonEvent::PostEventCommand(GetEventTarget(), m_hctrl, GetCommandID(), value);
}

OSStatus HuxControlImpl::SendCommand(long value, void* data) {
    if (!IsValid())
        return kErrInvalidControl;
    return HuxCarbonEvent::SendEventCommand(GetEventTarget(), m_hctrl, GetCommandID(), value, data);
}

OSStatus HuxControlImpl::Install(EventTargetRef target) {
    const OSStatus status = HuxCarbonEventHandler::Install(target);
    constexpr EventTypeSpec kDisposed { kEventClassControl, kEventControlDisposed };
    const OSStatus own = InstallCarbonEventHandler(target, 1, &kDisposed);
    return status == kNoErr ? own : status;
}

OSStatus HuxControlImpl::HandleEventEnd(EventHandlerCallRef call, EventRef event) {
    const OSStatus status = HuxCarbonEventHandler::HandleEventEnd(call, event);
    if (!GetCurrentObject() || GetEventClass(event) != kEventClassControl ||
        GetEventKind(event) != kEventControlDisposed)
        return status;
    if (m_pAttachedTo)
        Detach();
    else
        delete this;
    return status;
}
