// SPDX-License-Identifier: BSD-3-Clause
// Draws a part of an image into pixels of a drawing world at another size.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/Drawing.h"
#include "render/PIOffscreen.h"

// Pixels of a drawing world: 4 bytes each, unused, red, green, blue.
struct WorldPixels {
    std::uint8_t* base;
    std::ptrdiff_t rowBytes;
    std::int32_t width, height;
};

struct SizedWorld {
    platform::GWorldPtr world;
    std::int32_t width, height;
};

// Draws the part from of a 32-bit image, which must lie within it, onto the part to of the world, of
// which only what lies in the world is drawn. Where the picture shrinks, a pixel is the mean of those that it
// stands for; where it grows, pixels repeat, so that single ones can be counted. At one size it is
// an exact copy. Alpha is not looked at. Empty parts draw nothing. A pixel may stand for up to 2^23
// others. False when nothing is drawn.
bool CopyScaled(const WorldPixels& world, const tagRECT& to, const render::LockedPixels& image,
                const tagRECT& from);

// The same of a host's image, which is locked meanwhile, as the world is. The part from is cut at the
// image's right and bottom edges.
bool CopyScaled(const SizedWorld& to, const tagRECT& place, PIOffscreen& image,
                const tagRECT& from);
