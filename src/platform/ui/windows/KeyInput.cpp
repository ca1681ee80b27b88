// SPDX-License-Identifier: BSD-3-Clause
// The order in which a key is offered. Most keys are wanted by no handler, and no event is made of
// those; what is left of the order is the same.
#include "platform/ui/windows/KeyInput.h"

#include <QAbstractItemView>
#include <QKeyEvent>

#include "platform/ui/controls/Control.h"
#include "platform/ui/windows/Keys.h"
#include "platform/ui/windows/MadeEvent.h"
#include "platform/ui/windows/Passage.h"
#include "platform/ui/windows/Window.h"

namespace platform {

namespace {

std::uint32_t KindOf(const QKeyEvent& key) {
    if (key.type() == QEvent::KeyRelease)
        return kEventRawKeyUp;
    return key.isAutoRepeat() ? kEventRawKeyRepeat : kEventRawKeyDown;
}

bool IsWanted(const Window& window, const Control* control, std::uint32_t kind) {
    EventTypeSpec const type { kEventClassKeyboard, kind };
    return CountEventHandlers(window.Target(), type) > 1 || // one is the standard handler
           (control && CountEventHandlers(control->Target(), type) > 0);
}

struct Key {
    KeyCodes codes;
    std::uint32_t modifiers;
    bool repeats;

    explicit Key(const QKeyEvent& key)
        : codes(TranslateKey(key)), modifiers(TranslateModifiers(key.modifiers())),
          repeats(key.isAutoRepeat()) {}
    explicit Key(EventRef event) : codes { 0, 0 }, modifiers(0), repeats(false) {
        GetEventParameter(event, kEventParamKeyCode, kTypeUInt32, nullptr, sizeof codes.keyCode,
                          nullptr, &codes.keyCode);
        GetEventParameter(event, kEventParamKeyModifiers, kTypeUInt32, nullptr, sizeof modifiers,
                          nullptr, &modifiers);
        repeats = GetEventKind(event) == kEventRawKeyRepeat;
    }
    bool IsReturn() const {
        return modifiers == 0 &&
               (codes.keyCode == kVirtualKeyReturn || codes.keyCode == kVirtualKeyEnter);
    }
    bool IsEscape() const { return modifiers == 0 && codes.keyCode == kVirtualKeyEscape; }
};

bool Press(const Control* control, const Key& key) {
    if (key.repeats) // holding the key is one press
        return control && control->Widget().isEnabled();
    return Window::PressButton(control);
}

// A row that is edited in a list: its Return and Escape end the editing.
bool IsRowEditor(const QWidget* widget) {
    QWidget const* const viewport = widget ? widget->parentWidget() : nullptr;
    return viewport && qobject_cast<const QAbstractItemView*>(viewport->parentWidget());
}

// What the platform itself does with a key press before the widget gets it: whether it is done.
bool PressButtonOrBlock(Window& window, Control* control, const QWidget* receiver, const Key& key) {
    if (!IsRowEditor(receiver)) {
        if (key.IsReturn()) {
            bool const own = control && control->TakesReturn();
            if (Press(own ? control : window.DefaultButton(), key))
                return true;
        }
        if (key.IsEscape() && Press(window.CancelButton(), key))
            return true;
    }
    constexpr std::uint32_t kShortcuts = kCmdKey | kOptionKey | kControlKey;
    bool const types = key.codes.charCode != 0 && (key.modifiers & kShortcuts) == 0;
    return types && control &&
           control->BlocksKey(key.codes.keyCode, key.codes.charCode, key.modifiers);
}

void SetParameters(MadeEvent& event, const Window& window, const QKeyEvent& key) {
    KeyCodes const codes = TranslateKey(key);
    event.Set(kEventParamDirectObject, kTypeWindowRef, window.Ref());
    event.Set(kEventParamKeyCode, kTypeUInt32, codes.keyCode);
    event.Set(kEventParamKeyMacCharCodes, kTypeChar,
              static_cast<char>(codes.charCode > 0 ? codes.charCode : 0));
    event.Set(kEventParamKeyModifiers, kTypeUInt32, TranslateModifiers(key.modifiers()));
}

OSStatus SendToControl(const Window& window, const Passage* passage, EventRef event) {
    QWidget const* const receiver = passage ? passage->Receiver() : nullptr;
    Control const* const control = passage ? Control::Of(receiver) : window.FocusControl();
    return control ? SendEventToEventTarget(event, control->Target()) : kEventNotHandledErr;
}

} // namespace

bool TurnKey(Window& window, QWidget& receiver, QKeyEvent& key) {
    std::uint32_t const kind = KindOf(key);
    bool const releasesWhileHeld = kind == kEventRawKeyUp && key.isAutoRepeat();
    if (releasesWhileHeld || IsModifierKey(key.key()))
        return false;
    Control* const control = Control::Of(&receiver);
    if (!IsWanted(window, control, kind))
        return kind != kEventRawKeyUp && PressButtonOrBlock(window, control, &receiver, Key(key));
    MadeEvent event(kEventClassKeyboard, kind);
    SetParameters(event, window, key);
    Passage const passage(receiver, key, event.Get());
    SendEventToEventTarget(event.Get(), window.Target());
    return true;
}

OSStatus HandleKey(Window& window, EventRef event) {
    WindowRef const reference = window.Ref();
    Passage* const passage = Passage::Of(event);
    OSStatus const status = SendToControl(window, passage, event);
    if (status != kEventNotHandledErr)
        return status;
    Window* const found = Window::Find(reference);
    QWidget* const receiver = passage ? passage->Receiver() : nullptr;
    if (!found || (passage && !receiver))
        return kNoErr; // nobody is left whose key it would be
    Key const key = passage ? Key(static_cast<QKeyEvent&>(passage->Event())) : Key(event);
    Control* const control = passage ? Control::Of(receiver) : found->FocusControl();
    if (GetEventKind(event) != kEventRawKeyUp && PressButtonOrBlock(*found, control, receiver, key))
        return kNoErr;
    if (!passage)
        return kEventNotHandledErr;
    passage->Feed();
    return kNoErr;
}

} // namespace platform
