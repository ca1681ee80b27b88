// SPDX-License-Identifier: BSD-3-Clause
// The keyboard focus: giving it to a window and to a control in it, and who is told when it moves. A
// widget loses its focus for a while when a popup opens or another window becomes active; the control
// keeps it.
#include <utility>

#include <QApplication>
#include <QFocusEvent>

#include "platform/ui/Windows.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/windows/Input.h"

namespace platform {

namespace {

// The host's window with an embedded one in it may have the focus in a widget of its own.
void FocusSomethingIn(QWidget& widget) {
    const QWidget* const focus = widget.window()->focusWidget();
    if (focus && widget.isAncestorOf(focus))
        return;
    if (QWidget* const last = widget.focusWidget())
        return last->setFocus(Qt::OtherFocusReason);
    for (QWidget* next = widget.nextInFocusChain(); next && next != &widget;
         next = next->nextInFocusChain())
        if (widget.isAncestorOf(next) && next->isEnabled() && next->isVisibleTo(&widget) &&
            next->focusPolicy() & Qt::TabFocus)
            return next->setFocus(Qt::OtherFocusReason);
}

bool CanFocus(const Window& window, const Control& control) {
    const QWidget& widget = control.Widget();
    return &control.Owner() == &window && control.FocusPart() != kControlNoPart &&
           widget.isEnabled() && widget.isVisibleTo(&window.Widget());
}

bool LeavesTheWindow(Qt::FocusReason reason) {
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
           reason == Qt::MenuBarFocusReason;
}

void SetParameters(const MadeEvent& event, const Control& control, ControlPartCode part) {
    constexpr unsigned char kFocusEverything = 0;
    event.Set(kEventParamDirectObject, kTypeControlRef, control.Ref());
    event.Set(kEventParamControlPart, kTypeControlPartCode, part);
    event.Set(kEventParamControlFocusEverything, kTypeBoolean, kFocusEverything);
}

// Gives whether the widget got its event on the way.
bool Turn(const Control& control, ControlPartCode part, QWidget& receiver, QFocusEvent& qtEvent) {
    constexpr EventTypeSpec kSetFocusPart { kEventClassControl, kEventControlSetFocusPart };
    if (CountEventHandlers(control.Target(), kSetFocusPart) <= 1) // the standard handler
        return false;
    const MadeEvent event(kEventClassControl, kEventControlSetFocusPart);
    SetParameters(event, control, part);
    const Passage passage(receiver, qtEvent, event.Get());
    SendEventToEventTarget(event.Get(), control.Target());
    // The focus has moved whatever a handler says, so the widget has to know.
    return passage.WasFed() || !passage.Receiver();
}

void Tell(const Control& control, ControlPartCode part) {
    const MadeEvent event(kEventClassControl, kEventControlSetFocusPart);
    SetParameters(event, control, part);
    SendEventToEventTarget(event.Get(), control.Target());
}

} // namespace

// Moving it --------------------------------------------------------------------------------------

void Window::TakeUserFocus() {
    const QPointer<QWidget> widget(m_widget);
    FocusSomethingIn(*widget);
    if (widget)
        widget->window()->activateWindow();
}

void FocusFrontWindow() {
    Window* const front = QApplication::activeWindow() ? nullptr : FrontWindow();
    if (front)
        front->TakeUserFocus();
}

// That of the window, active or not.
Control* Window::KeyboardFocus() const {
    const QWidget* const widget = m_widget->window()->focusWidget();
    return widget && Of(widget) == this ? Control::Of(widget) : nullptr;
}

bool Window::SetKeyboardFocus(const Control* control) {
    if (control && !CanFocus(*this, *control))
        return false;
    if (!control && !KeyboardFocus())
        return true;
    const ControlRef reference = control ? control->Ref() : nullptr;
    const Alive alive(*this);
    if (control)
        control->Widget().setFocus(Qt::OtherFocusReason);
    else
        m_widget->window()->focusWidget()->clearFocus();
    // The widgets of an inactive window say nothing about it.
    if (alive && !m_widget->isActiveWindow())
        TellFocus(Control::Find(reference));
    return true;
}

// Telling of it ----------------------------------------------------------------------------------

bool TurnFocus(Window& window, QWidget& receiver, QFocusEvent& event) {
    const Control* const control = Control::Of(&receiver);
    if (event.gotFocus()) {
        const ControlRef now = control ? control->Ref() : nullptr;
        const ControlRef before = std::exchange(window.toldOfFocus, now);
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

void Window::TellFocus(const Control* control) {
    const ControlRef now = control ? control->Ref() : nullptr;
    const ControlRef before = std::exchange(toldOfFocus, now);
    if (now == before)
        return;
    if (const Control* const old = Control::Find(before))
        Tell(*old, kControlNoPart);
    if (const Control* const found = Control::Find(now))
        Tell(*found, found->FocusPart());
}

} // namespace platform
