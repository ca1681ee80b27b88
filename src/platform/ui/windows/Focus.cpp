// SPDX-License-Identifier: BSD-3-Clause
// Giving the keyboard to a window and to a control in it.
#include <algorithm>

#include <QApplication>

#include "platform/ui/controls/Control.h"
#include "platform/ui/windows/FocusChange.h"
#include "platform/ui/windows/Window.h"

namespace platform {

namespace {

// The host's window with an embedded one in it may have the focus in a widget of its own.
void FocusSomethingIn(QWidget& widget) {
    QWidget const* const focus = widget.window()->focusWidget();
    if (focus && widget.isAncestorOf(focus))
        return;
    if (QWidget* const last = widget.focusWidget())
        return last->setFocus(Qt::OtherFocusReason);
    for (QWidget* next = widget.nextInFocusChain(); next && next != &widget;
         next = next->nextInFocusChain()) {
        if (widget.isAncestorOf(next) && next->isEnabled() && next->isVisibleTo(&widget) &&
            next->focusPolicy() & Qt::TabFocus)
            return next->setFocus(Qt::OtherFocusReason);
    }
}

bool CanFocus(const Window& window, const Control& control) {
    QWidget const& widget = control.Widget();
    return control.FocusPart() != kControlNoPart && widget.isEnabled() &&
           widget.isVisibleTo(&window.Widget());
}

} // namespace

OSStatus SetUserFocusWindow(WindowRef window) {
    if (window == kUserFocusAuto)
        window = QApplication::activeWindow() ? nullptr : FrontNonFloatingWindow();
    else if (!Window::Find(window))
        return kErrInvalidWindow;
    Window const* const found = Window::Find(window);
    if (!found)
        return kNoErr; // some window has it already, or there is none to give it to
    QPointer<QWidget> const widget(&found->Widget());
    FocusSomethingIn(*widget);
    if (widget)
        widget->window()->activateWindow();
    return kNoErr;
}

OSStatus GetKeyboardFocus(WindowRef window, ControlRef* control) {
    if (!control)
        return kParamErr;
    *control = nullptr;
    Window const* const found = Window::Find(window);
    if (!found)
        return kErrInvalidWindow;
    if (Control const* const focus = found->FocusControl())
        *control = focus->Ref();
    return kNoErr;
}

OSStatus SetKeyboardFocus(WindowRef window, ControlRef control, std::int16_t part) {
    Window* const found = Window::Find(window);
    if (!found)
        return kErrInvalidWindow;
    Control const* const target = Control::Find(control);
    if (!target || &target->Owner() != found)
        return kErrInvalidControl;
    bool const takes = part == kControlNoPart;
    if (takes && found->FocusControl() != target)
        return kNoErr;
    if (!takes && !CanFocus(*found, *target))
        return kErrCouldNotFocus;
    QWidget& widget = takes ? *found->Widget().window()->focusWidget() : target->Widget();
    if (takes)
        widget.clearFocus();
    else
        widget.setFocus(Qt::OtherFocusReason);
    // The widgets of an inactive window say nothing about it.
    if (Window* const still = Window::Find(window); still && !still->Widget().isActiveWindow())
        TellFocus(*still, takes ? nullptr : Control::Find(control));
    return kNoErr;
}

} // namespace platform
