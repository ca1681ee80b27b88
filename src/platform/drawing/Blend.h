// SPDX-License-Identifier: BSD-3-Clause
// Colour over pixels by coverage: the exact arithmetic, and text over a ground of any colours.
#pragma once

#include <cstdint>

#include "platform/drawing/Pixels.h"

namespace platform {

// x / 255 to the nearest, for x in 0..65025; never ambiguous, since 255 is odd.
constexpr std::uint32_t Div255(std::uint32_t x) {
    return (x + 128 + ((x + 128) >> 8)) >> 8;
}

// What coverage of color leaves of under: exactly under at 0 and exactly color at 255.
constexpr std::uint8_t Mix(std::uint8_t under, std::uint8_t color, std::uint8_t coverage) {
    return static_cast<std::uint8_t>(Div255(under * (255u - coverage) + color * coverage));
}

// Mixes color into count pixels, each by its coverage.
void BlendPixels(std::uint8_t* pixels, const std::uint8_t* coverage, std::int64_t count,
                 Pixel color);

} // namespace platform
