// SPDX-License-Identifier: BSD-3-Clause
#include "effect/VamRect.h"

platform::Rect vamRECTToRect(tagRECT rect) {
    platform::Rect result;
    platform::SetRect(&result, static_cast<std::int16_t>(rect.left),
                      static_cast<std::int16_t>(rect.top), static_cast<std::int16_t>(rect.right),
                      static_cast<std::int16_t>(rect.bottom));
    return result;
}
