// SPDX-License-Identifier: BSD-3-Clause
// Where an item of a window lies.
#pragma once

#include "platform/ui/Windows.h"

// Puts the bounds of the control with the signature 'VELM' and the id into *out. Without one, gives
// the error of the search and leaves *out. On success the result is what getting the bounds gives,
// the address of out as a number: its low 32 bits, or 1 when those are zero. So success is never 0,
// and callers do not look at it.
platform::OSStatus vamGetWindowItemAsRect(platform::WindowRef window, long id, platform::Rect* out);
