// SPDX-License-Identifier: BSD-3-Clause
// What there is to know about the memory of an image that is locked.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "render/PIOffscreen.h"
#include "render/PixelRow.h"

namespace render {

struct LockedPixels {
    std::uint8_t* base; // pixel (0, 0), top row
    std::ptrdiff_t rowBytes;
    std::int32_t width;  // above 0
    std::int32_t height; // above 0
    std::int32_t depth;  // bits in a pixel, above 0
    ChannelOrder order;

    // Empty when the host gives no memory, or rows that do not hold their pixels.
    static std::optional<LockedPixels> Of(const PIOffscreen& image);

    // Bytes of a row that hold pixels.
    std::ptrdiff_t UsedBytes() const;
    std::uint8_t* Row(std::int32_t y) const { return base + y * rowBytes; }
};

} // namespace render
