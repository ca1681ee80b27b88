// SPDX-License-Identifier: BSD-3-Clause
// What becomes of a key: the chains of the window and of the control, the default and cancel buttons,
// the widget.
#pragma once

#include "platform/Events.h"

class QKeyEvent;
class QWidget;

namespace platform {

class Window;

// Gives whether the key was dealt with; else the widget gets it. The window may be gone afterwards.
bool TurnKey(Window& window, QWidget& receiver, QKeyEvent& key);
// The end of a window's chain.
OSStatus HandleKey(Window& window, EventRef event);

} // namespace platform
