// SPDX-License-Identifier: BSD-3-Clause
// Pixel memory of worlds, and filling it. Knows nothing of text.
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

// count pixels of color.
void FillPixels(std::uint8_t* pixels, std::int64_t count, Pixel color);

inline constexpr std::int64_t kPixelAlignment = 32; // of buffers and of row bytes

constexpr std::int64_t RowBytesFor(std::int64_t width) {
    return (width * 4 + kPixelAlignment - 1) / kPixelAlignment * kPixelAlignment;
}

// Memory for pixels, aligned for vector loads. A thread keeps a few that were given back, so that
// a text that changes with each frame finds warm memory.
class PixelBuffer {
public:
    // Not cleared. Throws std::bad_alloc.
    static std::shared_ptr<PixelBuffer> Make(std::int64_t bytes);
    // Frees what this thread keeps to make others of.
    static void DropRecycled();

    std::uint8_t* Data() { return m_data.get(); }
    const std::uint8_t* Data() const { return m_data.get(); }
    std::int64_t Capacity() const { return m_capacity; }
    // Room for so many bytes, but not much more.
    bool Fits(std::int64_t bytes) const { return m_capacity >= bytes && m_capacity / 4 <= bytes; }
    // Not so large that a thread should hold on to it.
    bool IsRecyclable() const;

    explicit PixelBuffer(std::int64_t bytes);

private:
    struct Free {
        void operator()(std::uint8_t* data) const;
    };
    std::unique_ptr<std::uint8_t, Free> m_data;
    std::int64_t m_capacity;
};

} // namespace platform
