// SPDX-License-Identifier: BSD-3-Clause
// The frames that are drawn on: one layout for every renderer, so that all of them touch the same
// bytes.
#pragma once

#include <cstdint>

#include "host/Image.h"

namespace bench {

// What Cairo, Qt and FFmpeg's filters all draw on without converting it: blue, green, red, alpha at
// 8 bits; red, green, blue, alpha at 16.
inline constexpr host::PixelFormat kFrame8 { 32, 3, 2, 1, 0 };
inline constexpr host::PixelFormat kFrame16 = host::kRgba64;

struct FrameSize {
    int width = 1920;
    int height = 1080;
};

// Fills the image with a smooth picture in which light and dark text can both be read.
void PaintBackground(host::Image& image);

// A painted frame that belongs to the thread; ends with the thread. depth is 32 or 64 bits.
host::Image& ThreadFrame(FrameSize size, int depth);

} // namespace bench
