// SPDX-License-Identifier: BSD-3-Clause
// Where the mouse is, from the events that reach a preview.
#pragma once

#include <optional>

#include <epi/epi.h>

#include "platform/ui/Controls.h"

// The place within the control of a mouse event of its window; none when it is not over the control.
std::optional<tagPOINT> MouseOver(platform::ControlRef control, platform::EventRef event);

// The place of the desktop at which the button of a track event went down; none when the event does
// not say.
std::optional<platform::Point> PressedAt(platform::ControlRef control, platform::EventRef event);
