// SPDX-License-Identifier: BSD-3-Clause
// Pixels of worlds and their memory. Knows nothing of text.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <memory>

#include "platform/Drawing.h"

namespace platform {

// A pixel's four bytes in the order of memory: unused, red, green, blue.
using Pixel = std::array<std::uint8_t, 4>;
static_assert(sizeof(Pixel) == 4);

// The channels' high bytes; what was widened by 257 comes back exactly.
inline Pixel ToPixel(const RGBColor& color) {
    const auto high = [](std::uint16_t channel) { return static_cast<std::uint8_t>(channel >> 8); };
    return { 0, high(color.red), high(color.green), high(color.blue) };
}

inline constexpr std::int64_t kPixelAlignment = 32; // of memory and of row bytes

constexpr std::int64_t RowBytesFor(std::int64_t width) {
    return (width * 4 + kPixelAlignment - 1) / kPixelAlignment * kPixelAlignment;
}

struct FreePixels {
    void operator()(std::uint8_t* pixels) const {
        ::operator delete (pixels, std::align_val_t { kPixelAlignment });
    }
};
// Memory for pixels, aligned for vector loads.
using PixelMemory = std::unique_ptr<std::uint8_t[], FreePixels>;

// Not cleared. Throws std::bad_alloc.
inline PixelMemory MakePixels(std::int64_t bytes) {
    return PixelMemory(static_cast<std::uint8_t*>(
        ::operator new (static_cast<std::size_t>(bytes), std::align_val_t { kPixelAlignment })));
}

} // namespace platform
