// SPDX-License-Identifier: BSD-3-Clause
#include "preview/PreviewMouse.h"

#include "huxCommon/huxGUI/HuxCarbonEvent.h"

namespace {

std::optional<tagPOINT> LocationIn(platform::EventRef event, platform::OSType name) {
    platform::HIPoint point {};
    if (HuxCarbonEvent(event, true)
            .GetParameter(name, platform::kTypeHIPoint, sizeof point, &point) != platform::kNoErr)
        return std::nullopt;
    return tagPOINT { static_cast<std::int32_t>(point.x), static_cast<std::int32_t>(point.y) };
}

} // namespace

std::optional<tagPOINT> MouseOver(platform::ControlRef control, platform::EventRef event) {
    const auto place = LocationIn(event, platform::kEventParamWindowMouseLocation);
    const platform::Control* const found = platform::Control::Find(control);
    const platform::Rect bounds = found ? found->Bounds() : platform::Rect {};
    if (!place || place->x < bounds.left || place->y < bounds.top || place->x >= bounds.right ||
        place->y >= bounds.bottom)
        return std::nullopt;
    return tagPOINT { place->x - bounds.left, place->y - bounds.top };
}

std::optional<platform::Point> PressedAt(platform::ControlRef control, platform::EventRef event) {
    const auto place = LocationIn(event, platform::kEventParamMouseLocation);
    const platform::Control* const found = platform::Control::Find(control);
    if (!place || !found)
        return std::nullopt;
    const platform::Rect bounds = found->Bounds();
    platform::Point point { static_cast<std::int16_t>(place->y + bounds.top),
                            static_cast<std::int16_t>(place->x + bounds.left) };
    platform::WindowToGlobal(found->OwnerRef(), &point);
    return point;
}
