// SPDX-License-Identifier: BSD-3-Clause
// Draws a part of an image into pixels of a drawing world at another size.
#pragma once

#include <cstddef>
#include <cstdint>

#include "render/LockedPixels.h"

// Pixels of a drawing world: 4 bytes each, unused, red, green, blue.
struct WorldPixels {
    std::uint8_t* base;
    std::ptrdiff_t rowBytes;
    std::int32_t width, height;
};

struct PixelBox {
    std::int32_t left, top, right, bottom; // right and bottom lie outside
};

// Draws the part from of a 32-bit image, which must lie within it, onto the part to of the world, of
// which only what lies in the world is drawn. Where the picture shrinks, a pixel is the mean of those that it
// stands for; where it grows, pixels repeat, so that single ones can be counted. At one size it is
// an exact copy. Alpha is not looked at. Empty parts draw nothing. A pixel may stand for up to 2^23
// others.
void CopyScaled(const WorldPixels& world, const PixelBox& to, const render::LockedPixels& image,
                const PixelBox& from);
