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

// The control --------------------------------------------------------------------------------------

OSStatus HuxControlImpl::Attach(ControlRef control) {
    if (m_hctrl)
        Detach();
    m_hctrl = control;
    if (!control)
        return kNoErr;
    std::uint32_t const commandID = GetCommandID();
    if (commandID == 0 || commandID == kBlankCommandID)
        SetCommandID(static_cast<std::uint32_t>(GetID().id));
    HuxControlImpl* const self = this;
    if (const OSStatus status = SetControlProperty(control, kHuxPropertyCreator, kHuxPropertyObject,
                                                   sizeof(HuxControlImpl*), &self))
        return status;
    return Install(GetEventTarget());
}

void HuxControlImpl::Detach() {
    Remove();
    ControlRef const control = std::exchange(m_hctrl, nullptr);
    if (IsAt(control, this))
        RemoveControlProperty(control, kHuxPropertyCreator, kHuxPropertyObject);
}

HuxControlImpl* HuxControlImpl::FromControl(ControlRef control) {
    HuxControlImpl* wrapper = nullptr;
    const OSStatus status = GetControlProperty(control, kHuxPropertyCreator, kHuxPropertyObject,
                                               sizeof(HuxControlImpl*), nullptr, &wrapper);
    return status == kNoErr ? wrapper : nullptr;
}

bool HuxControlImpl::IsAt(ControlRef control, const HuxControlImpl* wrapper) {
    return control && FromControl(control) == wrapper;
}

// State --------------------------------------------------------------------------------------------

OSStatus HuxControlImpl::Activate() {
    return ActivateControl(m_hctrl);
}

OSStatus HuxControlImpl::Deactivate() {
    return DeactivateControl(m_hctrl);
}

OSStatus HuxControlImpl::SetVisibility(bool visible, bool redraw) {
    return SetControlVisibility(m_hctrl, visible, redraw);
}

OSStatus HuxControlImpl::Show(bool redraw) {
    return SetVisibility(true, redraw);
}

OSStatus HuxControlImpl::Hide(bool redraw) {
    return SetVisibility(false, redraw);
}

OSStatus HuxControlImpl::Enable() {
    return EnableControl(m_hctrl);
}

OSStatus HuxControlImpl::Disable() {
    return DisableControl(m_hctrl);
}

OSStatus HuxControlImpl::Draw(bool now) {
    return now ? DrawOneControl(m_hctrl) : Update();
}

OSStatus HuxControlImpl::Update() {
    return InvalidateControl(m_hctrl);
}

OSStatus HuxControlImpl::FlushPortBuffer() {
    WindowRef const owner = GetOwner();
    if (!IsWindowBuffered(owner))
        return kNoErr;
    Rect const bounds = GetBounds();
    return FlushWindowBuffer(owner, &bounds);
}

OSStatus HuxControlImpl::GetFontStyle(ControlFontStyleRec* style) {
    return GetControlFontStyle(m_hctrl, style);
}

OSStatus HuxControlImpl::SetFontStyle(const ControlFontStyleRec* style) {
    return style ? SetControlFontStyle(m_hctrl, *style) : kParamErr;
}

OSStatus HuxControlImpl::SetControlSize(unsigned short size) {
    return SetControlSizeVariant(m_hctrl, size);
}

OSStatus HuxControlImpl::Move(long left, long top) {
    return MoveControl(m_hctrl, Coordinate(left), Coordinate(top));
}

OSStatus HuxControlImpl::SetSize(long width, long height) {
    return SizeControl(m_hctrl, Coordinate(width), Coordinate(height));
}

// Embedding ----------------------------------------------------------------------------------------

OSStatus HuxControlImpl::Embed(ControlRef container) {
    return EmbedControl(m_hctrl, container);
}

OSStatus HuxControlImpl::GetSuper(ControlRef* super) {
    return GetSuperControl(m_hctrl, super);
}

ControlRef HuxControlImpl::GetSuper() {
    ControlRef super = nullptr;
    return GetSuper(&super) == kNoErr ? super : nullptr;
}

OSStatus HuxControlImpl::CountSub(long* count) {
    std::uint16_t controls = 0;
    const OSStatus status = CountSubControls(m_hctrl, &controls);
    if (status == kNoErr)
        *count = controls;
    return status;
}

long HuxControlImpl::CountSub() {
    long count = 0;
    return CountSub(&count) == kNoErr ? count : 0;
}

OSStatus HuxControlImpl::GetIndexedSub(long index, ControlRef* sub) {
    if (!std::in_range<std::uint16_t>(index))
        return kParamErr;
    return GetIndexedSubControl(m_hctrl, static_cast<std::uint16_t>(index), sub);
}

ControlRef HuxControlImpl::GetIndexedSub(long index) {
    ControlRef sub = nullptr;
    return GetIndexedSub(index, &sub) == kNoErr ? sub : nullptr;
}

// Events -------------------------------------------------------------------------------------------

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
