// SPDX-License-Identifier: BSD-3-Clause
#include "preview/PreviewControl.h"

#include <algorithm>

#include "effect/VamRect.h"
#include "huxCommon/huxGUI/HuxCarbonEvent.h"
#include "huxCommon/huxUtility/VamCursor.h"
#include "render/Rounding.h"

namespace {

constexpr platform::ControlPartCode kPreviewPart = 1;

std::optional<tagPOINT> LocationIn(platform::EventRef event, platform::OSType name) {
    platform::HIPoint point {};
    if (HuxCarbonEvent(event, true)
            .GetParameter(name, platform::kTypeHIPoint, sizeof point, &point) != platform::kNoErr)
        return std::nullopt;
    return tagPOINT { static_cast<std::int32_t>(point.x), static_cast<std::int32_t>(point.y) };
}

} // namespace

void SetPreviewCursor(const char* name) {
    vamSetNamedCursor(HuxString(name).GetCFString());
}

std::int32_t ScrollFor(long center, long area, long view) {
    if (area >= view)
        return SaturateToInt32(view / 2 - area / 2);
    return SaturateToInt32(std::clamp(center - area / 2, 0L, view - area));
}

void PreviewControl::FollowMouse(platform::CFBundleRef bundle) {
    for (const char* name : { kHandCursor, kDragCursor })
        vamRegisterNamedCursorFromBundle(bundle, HuxString(name).GetCFString(), nullptr);
    m_dispatcher.SetHandler(this, s_HandleDispatcherEvent);
    const platform::EventTypeSpec types[] = {
        { platform::kEventClassMouse, platform::kEventMouseMoved },
        { platform::kEventClassMouse, platform::kEventMouseWheelMoved },
    };
    m_dispatcher.InstallCarbonEventHandler(platform::UIObject::TargetOf(GetOwner()),
                                           std::size(types), types);
}

platform::OSStatus PreviewControl::InstallSelf(platform::EventTargetRef target) {
    const platform::EventTypeSpec types[] = {
        { platform::kEventClassControl, platform::kEventControlDraw },
        { platform::kEventClassControl, platform::kEventControlHitTest },
        { platform::kEventClassControl, platform::kEventControlTrack },
    };
    return InstallCarbonEventHandler(target, std::size(types), types);
}

platform::OSStatus PreviewControl::HandleEventCurrentSelf(platform::EventHandlerCallRef,
                                                          platform::EventRef event) {
    if (platform::GetEventClass(event) != platform::kEventClassControl)
        return platform::kEventNotHandledErr;
    switch (platform::GetEventKind(event)) {
    case platform::kEventControlDraw:
        return HandleControlDraw(event);
    case platform::kEventControlHitTest:
        return HandleControlHitTest(event);
    case platform::kEventControlTrack:
        return HandleControlTrack(event);
    default:
        return platform::kEventNotHandledErr;
    }
}

platform::OSStatus PreviewControl::HandleControlHitTest(platform::EventRef event) {
    platform::SetEventParameter(event, platform::kEventParamControlPart,
                                platform::kTypeControlPartCode, sizeof kPreviewPart, &kPreviewPart);
    return platform::kNoErr;
}

platform::OSStatus PreviewControl::s_HandleDispatcherEvent(platform::EventHandlerCallRef,
                                                           platform::EventRef event,
                                                           void* userData) {
    auto& self = *static_cast<PreviewControl*>(userData);
    return self.MouseOver(event) ? self.HandleDispatcherEvent(event)
                                 : platform::kEventNotHandledErr;
}

PreviewControl::Size PreviewControl::ControlSize() const {
    const platform::Rect bounds = GetBounds();
    return { bounds.right - bounds.left, bounds.bottom - bounds.top };
}

void PreviewControl::DrawBuffer(platform::GWorldPtr buffer) const {
    const Size size = ControlSize();
    const platform::Rect whole =
        vamRECTToRect({ 0, 0, SaturateToInt32(size.width), SaturateToInt32(size.height) });
    if (buffer)
        platform::CopyBits(buffer, whole, platform::GetPort(), whole);
}

std::optional<tagPOINT> PreviewControl::MouseOver(platform::EventRef event) const {
    const auto place = LocationIn(event, platform::kEventParamWindowMouseLocation);
    const platform::Rect bounds = GetBounds();
    if (!place || place->x < bounds.left || place->y < bounds.top || place->x >= bounds.right ||
        place->y >= bounds.bottom)
        return std::nullopt;
    return tagPOINT { place->x - bounds.left, place->y - bounds.top };
}

std::optional<platform::Point> PreviewControl::PressedAt(platform::EventRef event) const {
    const auto place = LocationIn(event, platform::kEventParamMouseLocation);
    if (!place)
        return std::nullopt;
    const platform::Rect bounds = GetBounds();
    platform::Point point { static_cast<std::int16_t>(place->y + bounds.top),
                            static_cast<std::int16_t>(place->x + bounds.left) };
    if (const platform::Window* const window = platform::Window::Find(GetOwner()))
        point = window->ToGlobal(point);
    return point;
}
