// SPDX-License-Identifier: BSD-3-Clause
// What becomes of the mouse over a window.
#pragma once

#include "platform/Events.h"

class QMouseEvent;
class QWheelEvent;
class QWidget;

namespace platform {

class Window;

// Give whether the event was dealt with; else the widget gets it. The window may be gone afterwards.
bool TurnMouse(Window& window, QWidget& receiver, QMouseEvent& mouse);
bool TurnWheel(Window& window, QWidget& receiver, QWheelEvent& wheel);
// The end of a window's chain.
OSStatus HandleMouse(EventRef event);

} // namespace platform
