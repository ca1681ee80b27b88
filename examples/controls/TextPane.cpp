// SPDX-License-Identifier: BSD-3-Clause
#include "controls/TextPane.h"

#include <array>

using namespace platform;

namespace {

constexpr RGBColor kPaper { 0xA0A0, 0xA0A0, 0xA0A0 };
constexpr RGBColor kLine { 0x6060, 0x6060, 0x6060 };
constexpr EventTime kTrackSeconds = 0.1;

} // namespace

void TextPane::SetText(std::string text) {
    m_text = std::move(text);
    Update();
}

void TextPane::SetColor(const RGBColor& color) {
    m_color = color;
    Update();
}

void TextPane::SetFont(FontNumber font) {
    m_font = font;
    Update();
}

void TextPane::SetPoints(short points) {
    m_points = points;
    Update();
}

OSStatus TextPane::InstallSelf(EventTargetRef target) {
    constexpr std::array kTypes { EventTypeSpec { kEventClassControl, kEventControlDraw },
                                  EventTypeSpec { kEventClassControl, kEventControlTrack } };
    return InstallCarbonEventHandler(target, kTypes.size(), kTypes.data());
}

OSStatus TextPane::HandleEventCurrentSelf(EventHandlerCallRef, EventRef event) {
    if (GetEventClass(event) != kEventClassControl)
        return kEventNotHandledErr;
    switch (GetEventKind(event)) {
    case kEventControlDraw:
        return HandleDraw();
    case kEventControlTrack:
        return HandleTrack(event);
    default:
        return kEventNotHandledErr;
    }
}

OSStatus TextPane::HandleDraw() {
    const Rect bounds = GetBounds();
    const auto width = static_cast<short>(bounds.right - bounds.left);
    const auto height = static_cast<short>(bounds.bottom - bounds.top);
    RGBBackColor(kPaper);
    EraseRect({ 0, 0, height, width });
    RGBForeColor(kLine); // the baseline, and where it starts
    PaintRect({ m_place.v, 0, static_cast<short>(m_place.v + 1), width });
    PaintRect({ 0, m_place.h, height, static_cast<short>(m_place.h + 1) });
    FrameRect({ 0, 0, height, width });
    RGBForeColor(m_color);
    TextFont(m_font);
    TextSize(m_points);
    platform::MoveTo(m_place.h, m_place.v);
    DrawText(m_text.data(), 0, static_cast<std::int32_t>(m_text.size()));
    return kNoErr;
}

OSStatus TextPane::HandleTrack(EventRef event) {
    HIPoint start {};
    GetEventParameter(event, kEventParamMouseLocation, kTypeHIPoint, nullptr, sizeof start, nullptr,
                      &start);
    MoveTo({ static_cast<short>(start.y), static_cast<short>(start.x) });
    const WindowRef window = GetOwner();
    MouseTracking what = MouseTracking::kMouseDown;
    while (what != MouseTracking::kMouseUp && what != MouseTracking::kUserCancelled) {
        Point mouse {};
        if (Window* const tracked = Window::Find(window))
            what = tracked->TrackMouse(kTrackSeconds, &mouse);
        const Window* const owner = Window::Find(window);
        if (!owner || !GetCurrentObject())
            return kNoErr; // the window is gone, and perhaps this object
        mouse = owner->ToLocal(mouse);
        const Rect bounds = GetBounds();
        MoveTo({ static_cast<short>(mouse.v - bounds.top),
                 static_cast<short>(mouse.h - bounds.left) });
    }
    return PostCommand(0);
}

void TextPane::MoveTo(Point place) {
    if (place.v == m_place.v && place.h == m_place.h)
        return;
    m_place = place;
    Draw(true);
    FlushPortBuffer();
}
