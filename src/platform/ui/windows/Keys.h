// SPDX-License-Identifier: BSD-3-Clause
// Keys and modifiers as the handlers know them, from those of the widgets.
#pragma once

#include <cstdint>

#include <Qt>

class QKeyEvent;

namespace platform {

struct KeyCodes {
    std::uint32_t keyCode; // a virtual key code
    std::int16_t charCode; // as a key filter gets it; 0: the key neither types nor moves
};
KeyCodes TranslateKey(const QKeyEvent& key);
bool IsModifierKey(int key); // of Qt::Key
std::uint32_t TranslateModifiers(Qt::KeyboardModifiers modifiers);

} // namespace platform
