// SPDX-License-Identifier: BSD-3-Clause
#include "preview/CMTextPreviewStatic.h"

#include <optional>

#include "huxCommon/huxGUI/HuxCarbonEvent.h"
#include "preview/CTextEditDlg.h"

namespace {

constexpr long kKeyStep = 1; // image pixels
constexpr long kShiftKeyStep = 10;

struct Step {
    long x, y;
};

std::optional<Step> StepOf(std::uint32_t keyCode) {
    switch (keyCode) {
    case platform::kVirtualKeyLeft:
        return Step { -1, 0 };
    case platform::kVirtualKeyRight:
        return Step { 1, 0 };
    case platform::kVirtualKeyUp:
        return Step { 0, -1 };
    case platform::kVirtualKeyDown:
        return Step { 0, 1 };
    default:
        return std::nullopt;
    }
}

} // namespace

platform::OSStatus CMTextPreviewStatic::InstallSelf(platform::EventTargetRef target) {
    const platform::OSStatus status = PreviewControl::InstallSelf(target);
    const platform::EventTypeSpec types[] = {
        { platform::kEventClassKeyboard, platform::kEventRawKeyDown },
        { platform::kEventClassKeyboard, platform::kEventRawKeyRepeat },
    };
    return status ? status : InstallCarbonEventHandler(target, std::size(types), types);
}

platform::OSStatus CMTextPreviewStatic::HandleEventCurrentSelf(platform::EventHandlerCallRef call,
                                                               platform::EventRef event) {
    return platform::GetEventClass(event) == platform::kEventClassKeyboard
               ? HandleKey(event)
               : PreviewControl::HandleEventCurrentSelf(call, event);
}

platform::OSStatus CMTextPreviewStatic::HandleControlDraw(platform::EventRef /*event*/) {
    const Size size = ControlSize();
    m_view.FitArea(size.width, size.height);
    DrawBuffer(m_view.Buffer());
    return platform::kNoErr;
}

platform::OSStatus CMTextPreviewStatic::HandleControlTrack(platform::EventRef event) {
    const auto place = PressedAt(event);
    if (!place)
        return platform::kEventNotHandledErr;
    m_view.ClickPreviewArea({ place->h, place->v }); // this wrapper may be gone afterwards
    return platform::kNoErr;
}

platform::OSStatus CMTextPreviewStatic::HandleKey(platform::EventRef event) {
    const HuxCarbonEvent key(event, true);
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;
    key.GetParameter(platform::kEventParamKeyCode, platform::kTypeUInt32, sizeof keyCode, &keyCode);
    key.GetParameter(platform::kEventParamKeyModifiers, platform::kTypeUInt32, sizeof modifiers,
                     &modifiers);
    const auto step = StepOf(keyCode);
    if (!step)
        return platform::kEventNotHandledErr;
    const long pixels = (modifiers & platform::kShiftKey) != 0 ? kShiftKeyStep : kKeyStep;
    m_view.MoveText(step->x * pixels, step->y * pixels);
    return platform::kNoErr;
}

platform::OSStatus CMTextPreviewStatic::HandleDispatcherEvent(platform::EventRef event) {
    if (platform::GetEventKind(event) == platform::kEventMouseWheelMoved)
        return HandleWheel(event);
    if (const auto place = MouseOver(event))
        m_view.ChangePreviewCursor(*place);
    return platform::kNoErr;
}

// A wheel shows the picture larger and smaller, as the two buttons do.
platform::OSStatus CMTextPreviewStatic::HandleWheel(platform::EventRef event) {
    std::int32_t notches = 0;
    HuxCarbonEvent(event, true)
        .GetParameter(platform::kEventParamMouseWheelDelta, platform::kTypeSInt32, sizeof notches,
                      &notches);
    if (notches == 0)
        return platform::kEventNotHandledErr;
    m_view.ZoomBy(notches > 0 ? 1 : -1);
    return platform::kNoErr;
}
