// SPDX-License-Identifier: BSD-3-Clause
// A rectangle of pixels, far larger or farther away than any world where glyphs are.
#pragma once

#include <algorithm>
#include <cstdint>

namespace platform::text {

// Pixels left <= x < right, top <= y < bottom.
struct PixelBox {
    std::int64_t left, top, right, bottom;

    constexpr bool IsEmpty() const { return left >= right || top >= bottom; }
    constexpr std::int64_t Width() const { return right - left; }
    constexpr std::int64_t Height() const { return bottom - top; }
};

constexpr PixelBox Shifted(const PixelBox& box, std::int64_t x, std::int64_t y) {
    return { box.left + x, box.top + y, box.right + x, box.bottom + y };
}

// All 0 when it is empty.
constexpr PixelBox Intersection(const PixelBox& a, const PixelBox& b) {
    const PixelBox both { std::max(a.left, b.left), std::max(a.top, b.top),
                          std::min(a.right, b.right), std::min(a.bottom, b.bottom) };
    return both.IsEmpty() ? PixelBox {} : both;
}

// The smallest box around both; an empty one adds nothing.
constexpr PixelBox Union(const PixelBox& a, const PixelBox& b) {
    if (a.IsEmpty() || b.IsEmpty())
        return a.IsEmpty() ? b : a;
    return { std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
             std::max(a.bottom, b.bottom) };
}

} // namespace platform::text
