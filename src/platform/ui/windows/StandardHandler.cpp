// SPDX-License-Identifier: BSD-3-Clause
// The last handler of every chain: what the platform itself does with what nobody else took.
#include "platform/ui/windows/StandardHandler.h"

#include <algorithm>
#include <array>

#include <QDialog>

#include "platform/ui/controls/Control.h"
#include "platform/ui/windows/FocusChange.h"
#include "platform/ui/windows/KeyInput.h"
#include "platform/ui/windows/MouseInput.h"
#include "platform/ui/windows/Passage.h"
#include "platform/ui/windows/Window.h"

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
    Control* const control = window.FocusControl();
    return control && control->DoEditCommand(command.commandID) ? kNoErr : kEventNotHandledErr;
}

OSStatus Close(Window& window, EventRef event) {
    if (window.CancelButton()) {
        window.PressButton(window.CancelButton());
    } else if (qobject_cast<QDialog*>(&window.Widget())) {
        if (Passage* const passage = Passage::Of(event)) // it has a way of its own
            passage->Feed();
    } else {
        DisposeWindow(window.Ref());
    }
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
        return HandleMouse(event);
    case kEventClassWindow:
        return Close(*window, event);
    default:
        return DoCommand(*window, event);
    }
}

OSStatus HandleForControl(EventHandlerCallRef /*call*/, EventRef event, void* /*reference*/) {
    return HandleFocus(event);
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

} // namespace platform
