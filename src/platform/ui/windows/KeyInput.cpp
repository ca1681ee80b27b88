// SPDX-License-Identifier: BSD-3-Clause
// The order in which a key is offered. Most keys are wanted by no handler, and no event is made of
// those; what is left of the order is the same.
#include <algorithm>
#include <array>

#include <QAbstractItemView>
#include <QKeyEvent>

#include "platform/ui/Windows.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/windows/Input.h"

namespace platform {

namespace {

struct NamedKey {
    int key;
    KeyCodes codes;
};
constexpr std::array kNamedKeys {
    NamedKey { Qt::Key_Return, { kVirtualKeyReturn, 13 } },
    NamedKey { Qt::Key_Enter, { kVirtualKeyEnter, 3 } },
    NamedKey { Qt::Key_Escape, { kVirtualKeyEscape, 27 } },
    NamedKey { Qt::Key_Tab, { kVirtualKeyTab, 9 } },
    NamedKey { Qt::Key_Backtab, { kVirtualKeyTab, 9 } },
    NamedKey { Qt::Key_Space, { kVirtualKeySpace, ' ' } },
    NamedKey { Qt::Key_Backspace, { kVirtualKeyBackspace, 8 } },
    NamedKey { Qt::Key_Delete, { kVirtualKeyForwardDelete, 127 } },
    NamedKey { Qt::Key_Home, { kVirtualKeyHome, 1 } },
    NamedKey { Qt::Key_End, { kVirtualKeyEnd, 4 } },
    NamedKey { Qt::Key_PageUp, { kVirtualKeyPageUp, 11 } },
    NamedKey { Qt::Key_PageDown, { kVirtualKeyPageDown, 12 } },
    NamedKey { Qt::Key_Left, { kVirtualKeyLeft, 28 } },
    NamedKey { Qt::Key_Right, { kVirtualKeyRight, 29 } },
    NamedKey { Qt::Key_Up, { kVirtualKeyUp, 30 } },
    NamedKey { Qt::Key_Down, { kVirtualKeyDown, 31 } },
};

struct NamedModifier {
    Qt::KeyboardModifier modifier;
    std::uint32_t bit;
};
constexpr std::array kModifiers {
    NamedModifier { Qt::ControlModifier, kCmdKey },
    NamedModifier { Qt::ShiftModifier, kShiftKey },
    NamedModifier { Qt::AltModifier, kOptionKey },
    NamedModifier { Qt::MetaModifier, kControlKey },
};

// With Control a key's text is a control character, which would look like Home and the like; the
// key's own character says more.
std::int16_t TypedCharacter(const QKeyEvent& key) {
    if (key.modifiers() & (Qt::ControlModifier | Qt::MetaModifier))
        return key.key() >= Qt::Key_A && key.key() <= Qt::Key_Z
                   ? static_cast<std::int16_t>(key.key() - Qt::Key_A + 'a')
                   : static_cast<std::int16_t>(key.key() < 128 ? key.key() : 0);
    const QString text = key.text();
    if (text.isEmpty())
        return 0;
    const ushort unit = text.front().unicode();
    return static_cast<std::int16_t>(text.size() == 1 && unit < 128 ? unit : -1);
}

std::uint32_t KindOf(const QKeyEvent& key) {
    if (key.type() == QEvent::KeyRelease)
        return kEventRawKeyUp;
    return key.isAutoRepeat() ? kEventRawKeyRepeat : kEventRawKeyDown;
}

bool IsWanted(const Window& window, const Control* control, std::uint32_t kind) {
    const EventTypeSpec type { kEventClassKeyboard, kind };
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
    return PressButton(control);
}

// A row that is edited in a list: its Return and Escape end the editing.
bool IsRowEditor(const QWidget* widget) {
    const QWidget* const viewport = widget ? widget->parentWidget() : nullptr;
    return viewport && qobject_cast<const QAbstractItemView*>(viewport->parentWidget());
}

// What the platform itself does with a key press before the widget gets it: whether it is done.
bool PressButtonOrBlock(Window& window, Control* control, const QWidget* receiver, const Key& key) {
    if (!IsRowEditor(receiver)) {
        if (key.IsReturn()) {
            const bool own = control && control->TakesReturn();
            if (Press(own ? control : window.DefaultButton(), key))
                return true;
        }
        if (key.IsEscape() && Press(window.CancelButton(), key))
            return true;
    }
    constexpr std::uint32_t kShortcuts = kCmdKey | kOptionKey | kControlKey;
    const bool types = key.codes.charCode != 0 && (key.modifiers & kShortcuts) == 0;
    return types && control &&
           control->BlocksKey(key.codes.keyCode, key.codes.charCode, key.modifiers);
}

void SetParameters(const MadeEvent& event, const Window& window, const QKeyEvent& key) {
    const KeyCodes codes = TranslateKey(key);
    event.Set(kEventParamDirectObject, kTypeWindowRef, window.Ref());
    event.Set(kEventParamKeyCode, kTypeUInt32, codes.keyCode);
    event.Set(kEventParamKeyMacCharCodes, kTypeChar,
              static_cast<char>(codes.charCode > 0 ? codes.charCode : 0));
    event.Set(kEventParamKeyModifiers, kTypeUInt32, TranslateModifiers(key.modifiers()));
}

OSStatus SendToControl(const Window& window, const Passage* passage, EventRef event) {
    const QWidget* const receiver = passage ? passage->Receiver() : nullptr;
    const Control* const control = passage ? Control::Of(receiver) : window.KeyboardFocus();
    return control ? SendEventToEventTarget(event, control->Target()) : kEventNotHandledErr;
}

} // namespace

KeyCodes TranslateKey(const QKeyEvent& key) {
    const auto* const found = std::ranges::find(kNamedKeys, key.key(), &NamedKey::key);
    if (found != kNamedKeys.end())
        return found->codes;
    return { kVirtualKeyOther, TypedCharacter(key) };
}

bool IsModifierKey(int key) {
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Meta:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
        return true;
    default:
        return false;
    }
}

std::uint32_t TranslateModifiers(Qt::KeyboardModifiers modifiers) {
    std::uint32_t bits = 0;
    for (const NamedModifier& named : kModifiers)
        bits |= modifiers & named.modifier ? named.bit : 0U;
    return bits;
}

bool TurnKey(Window& window, QWidget& receiver, QKeyEvent& key) {
    const std::uint32_t kind = KindOf(key);
    const bool releasesWhileHeld = kind == kEventRawKeyUp && key.isAutoRepeat();
    if (releasesWhileHeld || IsModifierKey(key.key()))
        return false;
    Control* const control = Control::Of(&receiver);
    if (!IsWanted(window, control, kind))
        return kind != kEventRawKeyUp && PressButtonOrBlock(window, control, &receiver, Key(key));
    const MadeEvent event(kEventClassKeyboard, kind);
    SetParameters(event, window, key);
    const Passage passage(receiver, key, event.Get());
    SendEventToEventTarget(event.Get(), window.Target());
    return true;
}

OSStatus HandleKey(Window& window, EventRef event) {
    const Alive alive(window);
    Passage* const passage = Passage::Of(event);
    const OSStatus status = SendToControl(window, passage, event);
    if (status != kEventNotHandledErr)
        return status;
    QWidget* const receiver = passage ? passage->Receiver() : nullptr;
    if (!alive || (passage && !receiver))
        return kNoErr; // nobody is left whose key it would be
    const Key key = passage ? Key(static_cast<QKeyEvent&>(passage->Event())) : Key(event);
    Control* const control = passage ? Control::Of(receiver) : window.KeyboardFocus();
    if (GetEventKind(event) != kEventRawKeyUp && PressButtonOrBlock(window, control, receiver, key))
        return kNoErr;
    if (!passage)
        return kEventNotHandledErr;
    passage->Feed();
    return kNoErr;
}

} // namespace platform
