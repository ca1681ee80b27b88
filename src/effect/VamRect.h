// SPDX-License-Identifier: BSD-3-Clause
// From the host's rectangles to those of the platform's drawing.
#pragma once

#include <epi/epi.h>

#include "platform/Drawing.h"

// The low 16 bits of each side; a side that does not fit them wraps around.
platform::Rect vamRECTToRect(tagRECT rect);
