// SPDX-License-Identifier: BSD-3-Clause
// The channels of one row of an image, as numbers of 8 or 16 bits in the machine's order, and where
// they lie in a pixel.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace render {

// Where the channels lie in a destination pixel, counted in channels. Below 0: there is none, and
// 24-bit pixels never have an alpha.
struct ChannelOrder {
    std::int32_t alpha, red, green, blue;
};

// A channel behind the row's end does not exist, whatever the order of the channels says.
template <class Channel>
class PixelRow {
public:
    // first is the first pixel, at any alignment; bytes is how far the row goes from there.
    PixelRow(std::uint8_t* first, std::ptrdiff_t bytes)
        : m_first(first), m_count(bytes / static_cast<std::ptrdiff_t>(sizeof(Channel))) {}

    // pixel is the number of the pixel's first channel in the row, place that of one of its own.
    bool Has(std::ptrdiff_t pixel, std::int32_t place) const {
        return place >= 0 && pixel + place < m_count;
    }
    Channel Get(std::ptrdiff_t pixel, std::int32_t place) const {
        Channel value;
        std::memcpy(&value, At(pixel + place), sizeof value);
        return value;
    }
    void Set(std::ptrdiff_t pixel, std::int32_t place, Channel value) const {
        std::memcpy(At(pixel + place), &value, sizeof value);
    }

private:
    std::uint8_t* At(std::ptrdiff_t channel) const {
        return m_first + channel * static_cast<std::ptrdiff_t>(sizeof(Channel));
    }

    std::uint8_t* m_first;
    std::ptrdiff_t m_count;
};

} // namespace render
