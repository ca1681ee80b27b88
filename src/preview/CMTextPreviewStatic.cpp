// SPDX-License-Identifier: BSD-3-Clause
#include "preview/CMTextPreviewStatic.h"

#include <optional>

#include "huxCommon/huxGUI/HuxCarbonEvent.h"
#include "preview/CTextEditDlg.h"
#include "preview/PreviewCursors.h"
#include "preview/PreviewMouse.h"

namespace {

constexpr platform::ControlPartCode kPreviewPart = 1;
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

void CMTextPreviewStatic::InitPreview(platform::CFBundleRef bundle) {
    RegisterPreviewCursors(bundle);
    m_patcher.SetHandler(this, s_HandlePatchEvent);
    const platform::EventTypeSpec types[] = {
        { platform::kEventClassMouse, platform::kEventMouseMoved },
        { platform::kEventClassMouse, platform::kEventMouseWheelMoved },
    };
    m_patcher.InstallCarbonEventHandler(platform::GetWindowEventTarget(GetOwner()),
                                        std::size(types), types);
}

void CMTextPreviewStatic::TermPreview() {
    m_patcher.Remove();
}

platform::OSStatus CMTextPreviewStatic::InstallSelf(platform::EventTargetRef target) {
    const platform::EventTypeSpec types[] = {
        { platform::kEventClassControl, platform::kEventControlDraw },
        { platform::kEventClassControl, platform::kEventControlHitTest },
        { platform::kEventClassControl, platform::kEventControlTrack },
        { platform::kEventClassKeyboard, platform::kEventRawKeyDown },
        { platform::kEventClassKeyboard, platform::kEventRawKeyRepeat },
    };
    return InstallCarbonEventHandler(target, std::size(types), types);
}

platform::OSStatus CMTextPreviewStatic::HandleEventCurrentSelf(platform::EventHandlerCallRef,
                                                               platform::EventRef event) {
    if (platform::GetEventClass(event) == platform::kEventClassKeyboard)
        return HandleKey(event);
    switch (platform::GetEventKind(event)) {
    case platform::kEventControlDraw:
        return HandleDraw();
    case platform::kEventControlHitTest:
        return HandleHitTest(event);
    case platform::kEventControlTrack:
        return HandleTrack(event);
    default:
        return platform::kEventNotHandledErr;
    }
}

platform::OSStatus CMTextPreviewStatic::HandleDraw() {
    const platform::Rect bounds = GetBounds();
    m_view.FitArea(bounds.right - bounds.left, bounds.bottom - bounds.top);
    const platform::Rect whole { 0, 0, static_cast<std::int16_t>(bounds.bottom - bounds.top),
                                 static_cast<std::int16_t>(bounds.right - bounds.left) };
    if (const platform::GWorldPtr buffer = m_view.Buffer())
        platform::CopyBits(buffer, whole, platform::GetPort(), whole);
    return platform::kNoErr;
}

platform::OSStatus CMTextPreviewStatic::HandleHitTest(platform::EventRef event) {
    return platform::SetEventParameter(event, platform::kEventParamControlPart,
                                       platform::kTypeControlPartCode, sizeof kPreviewPart,
                                       &kPreviewPart);
}

platform::OSStatus CMTextPreviewStatic::HandleTrack(platform::EventRef event) {
    const auto place = PressedAt(GetControlRef(), event);
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

platform::OSStatus CMTextPreviewStatic::s_HandlePatchEvent(platform::EventHandlerCallRef,
                                                           platform::EventRef event,
                                                           void* userData) {
    return static_cast<CMTextPreviewStatic*>(userData)->HandlePatchEvent(event);
}

// The mouse is somewhere over the window.
platform::OSStatus CMTextPreviewStatic::HandlePatchEvent(platform::EventRef event) {
    const auto place = MouseOver(GetControlRef(), event);
    if (!place)
        return platform::kEventNotHandledErr;
    if (platform::GetEventKind(event) == platform::kEventMouseWheelMoved)
        return HandleWheel(event);
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
