// SPDX-License-Identifier: BSD-3-Clause
// The default and the cancel button. They belong to the window, not to a dialog of Qt's that a host may
// have around it.
#include "platform/ui/windows/DefaultButtons.h"

#include <QPushButton>

#include "platform/ui/controls/Control.h"
#include "platform/ui/windows/Window.h"

namespace platform {

namespace {

// Styles draw it with an accent.
void ShowAsDefault(const Control* control, bool isDefault) {
    if (auto* const button = control ? qobject_cast<QPushButton*>(&control->Widget()) : nullptr) {
        button->setAutoDefault(false);
        button->setDefault(isDefault);
    }
}

// Null is allowed; a control must be one of the window's.
OSStatus FindButton(WindowRef window, ControlRef button, Window** owner, Control** control) {
    *owner = Window::Find(window);
    *control = Control::Find(button);
    if (!*owner)
        return kErrInvalidWindow;
    bool const fits = *control ? &(*control)->Owner() == *owner : !button;
    return fits ? kNoErr : kErrInvalidControl;
}

OSStatus GetButton(WindowRef window, Control* (Window::*which)() const, ControlRef* button) {
    if (!button)
        return kParamErr;
    Window const* const found = Window::Find(window);
    Control const* const control = found ? (found->*which)() : nullptr;
    *button = control ? control->Ref() : nullptr;
    return found ? kNoErr : kErrInvalidWindow;
}

} // namespace

void MakeDefaultButton(Window& window, Control* button) {
    ShowAsDefault(window.DefaultButton(), false);
    window.defaultButton = button ? button->Ref() : nullptr;
    ShowAsDefault(button, true);
}

void MakeCancelButton(Window& window, Control* button) {
    window.cancelButton = button ? button->Ref() : nullptr;
}

OSStatus SetWindowDefaultButton(WindowRef window, ControlRef button) {
    Window* owner = nullptr;
    Control* control = nullptr;
    OSStatus const status = FindButton(window, button, &owner, &control);
    if (status == kNoErr)
        MakeDefaultButton(*owner, control);
    return status;
}

OSStatus SetWindowCancelButton(WindowRef window, ControlRef button) {
    Window* owner = nullptr;
    Control* control = nullptr;
    OSStatus const status = FindButton(window, button, &owner, &control);
    if (status == kNoErr)
        MakeCancelButton(*owner, control);
    return status;
}

OSStatus GetWindowDefaultButton(WindowRef window, ControlRef* button) {
    return GetButton(window, &Window::DefaultButton, button);
}

OSStatus GetWindowCancelButton(WindowRef window, ControlRef* button) {
    return GetButton(window, &Window::CancelButton, button);
}

} // namespace platform
