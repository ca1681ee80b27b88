// SPDX-License-Identifier: BSD-3-Clause
// From coverage to pixels: over a ground of one colour, which is nearly all text, every pixel is written
// once and none is read; over a ground of any colours they are mixed in.
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

struct TwoColors {
    Pixel ground; // where coverage is 0
    Pixel text;   // where it is 255
};

// Rows of pixels and of their coverage, both width long; the strides are in bytes.
struct ColorArea {
    std::uint8_t* pixels;
    std::int64_t pixelStride;
    const std::uint8_t* coverage;
    std::int64_t coverageStride;
    std::int64_t width, height;
};

// So many pixels of a row take no longer than one.
inline constexpr std::int64_t kColorVector = 32;

// Writes each pixel as the Mix of the two colours by its coverage, with the widest vectors that the
// processor has; every way gives the same bytes.
void ColorPixels(const ColorArea& area, const TwoColors& colors);

// The ways themselves, for comparing. Null where the processor lacks what it takes.
using ColorFunction = void (*)(const ColorArea& area, const TwoColors& colors);
struct ColorWay {
    const char* name;
    ColorFunction function;
};
inline constexpr int kColorWays = 2;
ColorWay ColorWayAt(int index); // 0 is the plain one

} // namespace platform
