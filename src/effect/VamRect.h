// SPDX-License-Identifier: BSD-3-Clause
// From the host's rectangles to those of the platform's drawing.
#pragma once

#include <cstdint>

#include <epi/epi.h>

#include "platform/Drawing.h"

// The low 16 bits of each side; a side that does not fit them wraps around.
inline platform::Rect vamRECTToRect(tagRECT rect) {
    const auto low = [](std::int32_t side) { return static_cast<std::int16_t>(side); };
    platform::Rect result;
    platform::SetRect(&result, low(rect.left), low(rect.top), low(rect.right), low(rect.bottom));
    return result;
}
