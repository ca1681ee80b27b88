// SPDX-License-Identifier: BSD-3-Clause
// Adds glyphs to the plane, eight pixels at once where nothing lies below them.
#include "platform/drawing/CoveragePlane.h"

#include <algorithm>
#include <cstring>

#include "platform/drawing/Blend.h"

namespace platform {
namespace {

// What two layers that know nothing of each other cover together: 1 - (1 - a)(1 - b).
constexpr std::uint8_t Together(std::uint8_t a, std::uint8_t b) {
    return static_cast<std::uint8_t>(a + Div255(b * (255u - a)));
}

void AddBytes(std::uint8_t* plane, const std::uint8_t* coverage, std::int64_t count) {
    for (std::int64_t i = 0; i < count; ++i) {
        plane[i] = Together(plane[i], coverage[i]);
    }
}

// The high bit of each byte that is not 0.
constexpr std::uint64_t NonZeroBytes(std::uint64_t bytes) {
    constexpr std::uint64_t kLow7 = 0x7F7F7F7F7F7F7F7F;
    return (((bytes & kLow7) + kLow7) | bytes) & ~kLow7;
}

// Neighbours share groups of eight but hardly ever a pixel, and where one of two bytes is 0 the other
// one is what both cover.
void AddRow(std::uint8_t* plane, const std::uint8_t* coverage, std::int64_t count) {
    std::int64_t i = 0;
    for (; i + 8 <= count; i += 8) {
        std::uint64_t added = 0;
        std::uint64_t there = 0;
        std::memcpy(&added, coverage + i, sizeof added);
        std::memcpy(&there, plane + i, sizeof there);
        if ((NonZeroBytes(added) & NonZeroBytes(there)) == 0) {
            there |= added;
            std::memcpy(plane + i, &there, sizeof there);
        } else {
            AddBytes(plane + i, coverage + i, 8);
        }
    }
    AddBytes(plane + i, coverage + i, count - i);
}

} // namespace

CoveragePlane::CoveragePlane(std::int32_t width, std::int32_t height, std::int64_t stride)
    : m_width(width), m_height(height), m_stride(stride),
      m_bytes(PixelBuffer::Make(stride * height)) {
    std::memset(m_bytes->Data(), 0, static_cast<std::size_t>(Count()));
}

void CoveragePlane::PaintBitmap(std::int64_t x, std::int64_t y,
                                const text::CoverageBitmap& bitmap) {
    // The empty columns that fill up the bitmap's stride may fall behind the width: whole groups of
    // eight are faster than the glyph's own width.
    const std::int64_t left = std::max<std::int64_t>(x, 0);
    const std::int64_t right = std::min(x + bitmap.stride, m_stride);
    const std::int64_t top = std::max<std::int64_t>(y, 0);
    const std::int64_t bottom = std::min<std::int64_t>(y + bitmap.height, m_height);
    for (std::int64_t row = top; row < bottom && left < right; ++row) {
        AddRow(At(left, row), bitmap.pixels + (row - y) * bitmap.stride + (left - x), right - left);
    }
}

void CoveragePlane::PaintSpan(std::int64_t x, std::int64_t y, std::int64_t length,
                              std::uint8_t coverage) {
    const std::int64_t left = std::max<std::int64_t>(x, 0);
    const std::int64_t right = std::min<std::int64_t>(x + length, m_width);
    if (y < 0 || y >= m_height) {
        return;
    }
    for (std::int64_t i = left; i < right; ++i) {
        std::uint8_t& there = *At(i, y);
        there = Together(there, coverage);
    }
}

} // namespace platform
