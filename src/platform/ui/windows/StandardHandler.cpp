// SPDX-License-Identifier: BSD-3-Clause
// The last handler of every chain: what the platform itself does with what nobody else took.
#include <algorithm>
#include <array>

#include <QAbstractButton>
#include <QDialog>

#include "platform/ui/Windows.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/windows/Input.h"

namespace platform {

namespace {

constexpr std::array kWindowTypes {
    EventTypeSpec { kEventClassKeyboard, kEventRawKeyDown },
    EventTypeSpec { kEventClassKeyboard, kEventRawKeyRepeat },
    EventTypeSpec { kEventClassKeyboard, kEventRawKeyUp },
    EventTypeSpec { kEventClassMouse, kEventMouseDown },
    EventTypeSpec { kEventClassMouse, kEventMouseUp },
    EventTypeSpec { kEventClassMouse, kEventMouseMoved },
    EventTypeSpec { kEventClassMouse, kEventMouseDragged },
    EventTypeSpec { kEventClassMouse, kEventMouseWheelMoved },
    EventTypeSpec { kEventClassWindow, kEventWindowClose },
    EventTypeSpec { kEventClassCommand, kEventCommandProcess },
};
constexpr std::array kControlTypes {
    EventTypeSpec { kEventClassControl, kEventControlSetFocusPart },
};

constexpr std::array kEditCommands {
    kHICommandUndo,  kHICommandRedo,      kHICommandCut,   kHICommandCopy,
    kHICommandPaste, kHICommandSelectAll, kHICommandClear,
};

OSStatus DoCommand(const Window& window, EventRef event) {
    HICommandExtended command {};
    if (GetEventParameter(event, kEventParamDirectObject, kTypeHICommand, nullptr, sizeof command,
                          nullptr, &command))
        return kEventNotHandledErr;
    if (std::ranges::find(kEditCommands, command.commandID) == kEditCommands.end())
        return kEventNotHandledErr;
    Control* const control = window.KeyboardFocus();
    return control && control->DoEditCommand(command.commandID) ? kNoErr : kEventNotHandledErr;
}

// To the widget that Qt meant.
OSStatus Feed(EventRef event) {
    Passage* const passage = Passage::Of(event);
    if (passage)
        passage->Feed();
    return passage ? kNoErr : kEventNotHandledErr;
}

OSStatus Close(Window& window, EventRef event) {
    if (window.CancelButton()) {
        PressButton(window.CancelButton());
        return kNoErr;
    }
    if (qobject_cast<QDialog*>(&window.Widget())) // it has a way of its own
        return Feed(event);
    window.Dispose();
    return kNoErr;
}

OSStatus HandleForWindow(EventHandlerCallRef /*call*/, EventRef event, void* reference) {
    Window* const window = Window::Find(static_cast<WindowRef>(reference));
    if (!window)
        return kEventNotHandledErr;
    switch (GetEventClass(event)) {
    case kEventClassKeyboard:
        return HandleKey(*window, event);
    case kEventClassMouse:
        return Feed(event);
    case kEventClassWindow:
        return Close(*window, event);
    default:
        return DoCommand(*window, event);
    }
}

OSStatus HandleForControl(EventHandlerCallRef /*call*/, EventRef event, void* /*reference*/) {
    Feed(event); // the widget follows
    return kNoErr;
}

} // namespace

void InstallStandardHandler(const UIObject& object) {
    if (object.Kind() == ObjectKind::kWindow)
        InstallEventHandler(object.Target(), HandleForWindow, kWindowTypes.size(),
                            kWindowTypes.data(), object.As<void*>(), nullptr);
    if (object.Kind() == ObjectKind::kControl)
        InstallEventHandler(object.Target(), HandleForControl, kControlTypes.size(),
                            kControlTypes.data(), object.As<void*>(), nullptr);
}

bool PressButton(const Control* control) {
    auto* const button = control ? qobject_cast<QAbstractButton*>(&control->Widget()) : nullptr;
    if (!button || !button->isEnabled())
        return false;
    button->click();
    return true;
}

} // namespace platform
