// SPDX-License-Identifier: BSD-3-Clause
// Which control has the keyboard focus of its window, and who is told when that changes.
#pragma once

#include "platform/Events.h"

class QFocusEvent;
class QWidget;

namespace platform {

class Control;
class Window;

// Gives whether the event was dealt with; else the widget gets it.
bool TurnFocus(Window& window, QWidget& receiver, QFocusEvent& event);
// The end of a control's chain: the widget follows.
OSStatus HandleFocus(EventRef event);
// Tells the controls that the focus moves to one of them (null: to none), where no widget says so:
// in a window that is not active.
void TellFocus(Window& window, const Control* control);

} // namespace platform
