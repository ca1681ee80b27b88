// SPDX-License-Identifier: BSD-3-Clause
// From coverage to pixels where the ground has one colour and the text another: every pixel is
// written once and none is read.
#pragma once

#include <cstdint>

#include "platform/drawing/Pixels.h"

namespace platform {

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

// Writes each pixel as the Mix of the two colours by its coverage, with the widest vectors that the
// processor has; every way gives the same bytes. Where the rows have no gaps, the coverage may lie in
// the last quarter of the pixels' own memory: a pixel ends no later than its byte of that quarter, so
// that each byte is read before it is overwritten.
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
