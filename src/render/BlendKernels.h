// SPDX-License-Identifier: BSD-3-Clause
// The inner loops that put a drawn text into an image: a plain version that knows every layout, and
// vector versions of it for the layout that drawing produces. Knows pixels only; clipping and locks
// are its callers' business.
#pragma once

#include <cstddef>
#include <cstdint>

#include "render/PixelRow.h"

namespace render {

// Where the colour bytes lie in a source pixel.
struct SourceLayout {
    std::int32_t stride, red, green, blue;
    bool operator==(const SourceLayout&) const = default;
};
inline constexpr SourceLayout kSourceXrgb32 { 4, 1, 2, 3 };

// One rectangle to blend. It lies wholly inside both pictures.
//
//   each destination channel  d = d + floor(w * (s - d) / 256)       8-bit channels
//                             d = d + floor(257w * (257s - d) / 65536)       16-bit
//
//   plain mode  s is the text's colour, w = floor(opacity * (255 - source byte 1) / 256)
//   box mode    s is the source's colour, w = opacity, and opacity 255 replaces d by s
//
// Source pixels of the colour 0xFEFEFE leave the destination alone; any other makes it opaque.
struct BlendJob {
    std::uint8_t* dst = nullptr; // first pixel of the rectangle's top row
    std::ptrdiff_t dstRowBytes = 0;
    // From dst to the end of the image's row: a channel that would lie behind it is left out.
    std::ptrdiff_t dstReach = 0;
    std::int32_t depth = 32; // bits in a destination pixel: 24, 32 or 64 (16-bit channels)
    ChannelOrder order {};
    const std::uint8_t* src = nullptr; // the pixel that goes to dst
    std::ptrdiff_t srcRowBytes = 0;    // negative when the source's rows are stored bottom up
    SourceLayout layout = kSourceXrgb32;
    std::int32_t width = 0;   // pixels, above 0; bytes of a source row beyond them are not read
    std::int32_t height = 0;  // rows
    std::uint8_t red = 0;     // the text's colour
    std::uint8_t green = 0;   //
    std::uint8_t blue = 0;    //
    std::uint8_t opacity = 0; // full at 255
    bool box = false;         // box mode, else plain mode
};

enum class BlendVersion { kPlain, kSse41, kAvx2 };

// Whether this build and this machine have the version.
bool HasBlendVersion(BlendVersion version);

// Blends with the fastest version that the machine has and the job's layout allows. Any thread.
void BlendText(const BlendJob& job);
// The same with one version, which the machine has. A layout that the vector versions do not know
// takes the plain one. All versions give the same bytes.
void BlendText(const BlendJob& job, BlendVersion version);

// The vector versions themselves. They take kSourceXrgb32, and orders whose channels lie inside the
// pixel, each at a place of its own.
void BlendTextSse41(const BlendJob& job);
void BlendTextAvx2(const BlendJob& job);

} // namespace render
