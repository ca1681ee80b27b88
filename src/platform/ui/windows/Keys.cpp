// SPDX-License-Identifier: BSD-3-Clause
// The table of keys.
#include "platform/ui/windows/Keys.h"

#include <algorithm>
#include <array>

#include <QKeyEvent>

#include "platform/ui/Windows.h"

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
    QString const text = key.text();
    if (text.isEmpty())
        return 0;
    ushort const unit = text.front().unicode();
    return static_cast<std::int16_t>(text.size() == 1 && unit < 128 ? unit : -1);
}

} // namespace

KeyCodes TranslateKey(const QKeyEvent& key) {
    auto const* const found = std::ranges::find(kNamedKeys, key.key(), &NamedKey::key);
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
    for (NamedModifier const& named : kModifiers)
        bits |= modifiers & named.modifier ? named.bit : 0U;
    return bits;
}

} // namespace platform
