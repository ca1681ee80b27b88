// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxBevelButton.h"

#include "platform/ui/Dialogs.h"

using namespace platform;

RGBColor HuxBevelButton::GetColor() const {
    return Ask(&Control::Color).value_or(RGBColor {});
}

OSStatus HuxBevelButton::SetColor(const RGBColor& color) {
    return Do(&Control::SetColor, color);
}

OSStatus HuxBevelButton::InstallSelf(EventTargetRef target) {
    constexpr EventTypeSpec kHit { kEventClassControl, kEventControlHit };
    return InstallCarbonEventHandler(target, 1, &kHit);
}

OSStatus HuxBevelButton::HandleEventCurrentSelf(EventHandlerCallRef, EventRef event) {
    const bool hit =
        GetEventClass(event) == kEventClassControl && GetEventKind(event) == kEventControlHit;
    return hit && m_nType == kColor ? PickColor() : kEventNotHandledErr;
}

// An unhandled click goes on to become the button's command.
OSStatus HuxBevelButton::PickColor() {
    RGBColor picked {};
    if (!platform::GetColor(Point {}, GetTitle().GetCFString(), GetColor(), &picked))
        return kNoErr;
    // The button may have ended while the picker was open.
    if (GetCurrentObject())
        SetColor(picked);
    return kEventNotHandledErr;
}
