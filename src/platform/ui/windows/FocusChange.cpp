// SPDX-License-Identifier: BSD-3-Clause
// Focus events of the widgets and of the controls. A widget loses its focus for a while when a popup
// opens or another window becomes active; the control keeps it.
#include "platform/ui/windows/FocusChange.h"

#include <utility>

#include <QApplication>
#include <QFocusEvent>

#include "platform/ui/controls/Control.h"
#include "platform/ui/windows/MadeEvent.h"
#include "platform/ui/windows/Passage.h"
#include "platform/ui/windows/Window.h"

namespace platform {

namespace {

constexpr EventTypeSpec kSetFocusPart { kEventClassControl, kEventControlSetFocusPart };

bool LeavesTheWindow(Qt::FocusReason reason) {
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
           reason == Qt::MenuBarFocusReason;
}

void SetParameters(MadeEvent& event, const Control& control, ControlPartCode part) {
    constexpr unsigned char kFocusEverything = 0;
    event.Set(kEventParamDirectObject, kTypeControlRef, control.Ref());
    event.Set(kEventParamControlPart, kTypeControlPartCode, part);
    event.Set(kEventParamControlFocusEverything, kTypeBoolean, kFocusEverything);
}

// Gives whether the widget got its event on the way.
bool Turn(const Control& control, ControlPartCode part, QWidget& receiver, QFocusEvent& qtEvent) {
    if (CountEventHandlers(control.Target(), kSetFocusPart) <= 1) // the standard handler
        return false;
    MadeEvent event(kEventClassControl, kEventControlSetFocusPart);
    SetParameters(event, control, part);
    Passage const passage(receiver, qtEvent, event.Get());
    SendEventToEventTarget(event.Get(), control.Target());
    // The focus has moved whatever a handler says, so the widget has to know.
    return passage.WasFed() || !passage.Receiver();
}

void Tell(const Control& control, ControlPartCode part) {
    MadeEvent event(kEventClassControl, kEventControlSetFocusPart);
    SetParameters(event, control, part);
    SendEventToEventTarget(event.Get(), control.Target());
}

} // namespace

bool TurnFocus(Window& window, QWidget& receiver, QFocusEvent& event) {
    Control const* const control = Control::Of(&receiver);
    if (event.gotFocus()) {
        ControlRef const now = control ? control->Ref() : nullptr;
        ControlRef const before = std::exchange(window.toldOfFocus, now);
        return control && now != before && control->FocusPart() != kControlNoPart &&
               Turn(*control, control->FocusPart(), receiver, event);
    }
    if (!control || window.toldOfFocus != control->Ref() || LeavesTheWindow(event.reason()))
        return false;
    if (Control::Of(QApplication::focusWidget()) == control)
        return false; // to another widget of the same control
    window.toldOfFocus = nullptr;
    return Turn(*control, kControlNoPart, receiver, event);
}

OSStatus HandleFocus(EventRef event) {
    if (Passage* const passage = Passage::Of(event))
        passage->Feed();
    return kNoErr;
}

void TellFocus(Window& window, const Control* control) {
    ControlRef const now = control ? control->Ref() : nullptr;
    ControlRef const before = std::exchange(window.toldOfFocus, now);
    if (now == before)
        return;
    if (Control const* const old = Control::Find(before))
        Tell(*old, kControlNoPart);
    if (Control const* const found = Control::Find(now))
        Tell(*found, found->FocusPart());
}

} // namespace platform
