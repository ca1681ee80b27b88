// SPDX-License-Identifier: BSD-3-Clause
// Colour over pixels by coverage: the exact arithmetic, and the loops over rows.
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

// Rows of coverage over rows of pixels, both width long; the strides are in bytes.
struct BlendArea {
    std::uint8_t* pixels;
    std::int64_t pixelStride;
    const std::uint8_t* coverage;
    std::int64_t coverageStride;
    std::int64_t width, height;
};

// By the widest vectors that the processor has; every way gives the same bytes.
void Blend(const BlendArea& area, Pixel color);

// The ways themselves, for comparing. Null where the processor lacks what it takes.
using BlendFunction = void (*)(const BlendArea& area, Pixel color);
struct BlendWay {
    const char* name;
    BlendFunction function;
};
inline constexpr int kBlendWays = 3;
BlendWay BlendWayAt(int index); // 0 is the plain one

} // namespace platform
