// SPDX-License-Identifier: BSD-3-Clause
// Asks the host about a locked image and believes only what can be.
#include "render/LockedPixels.h"

namespace render {
namespace {

// The farthest place that any image tells: blue of a 64-bit one whose host tells none.
constexpr long kLastPlace = 6;

std::int64_t BytesOf(std::int32_t width, std::int32_t depth) {
    return (std::int64_t { width } * depth + 7) / 8;
}

std::int32_t Place(long index) {
    return index >= 0 && index <= kLastPlace ? static_cast<std::int32_t>(index) : -1;
}

ChannelOrder OrderOf(const PIOffscreen& image, std::int32_t depth) {
    long alpha = -1, red = -1, green = -1, blue = -1;
    image.GetChannelIndex(&alpha, &red, &green, &blue);
    return { depth == 24 ? -1 : Place(alpha), Place(red), Place(green), Place(blue) };
}

} // namespace

std::optional<LockedPixels> LockedPixels::Of(const PIOffscreen& image) {
    const std::int32_t width = image.Width();
    const std::int32_t height = image.Height();
    const std::int32_t depth = image.Depth();
    if (width <= 0 || height <= 0 || depth <= 0)
        return std::nullopt;
    const std::int32_t rowBytes = image.RowBytes();
    std::uint8_t* const base = image.BaseAddress();
    if (!base || rowBytes <= 0 || rowBytes < BytesOf(width, depth))
        return std::nullopt;
    return LockedPixels { base, rowBytes, width, height, depth, OrderOf(image, depth) };
}

std::ptrdiff_t LockedPixels::UsedBytes() const {
    // No more than rowBytes, so it fits.
    return static_cast<std::ptrdiff_t>(BytesOf(width, depth));
}

} // namespace render
