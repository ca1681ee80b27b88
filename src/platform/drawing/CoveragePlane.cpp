// SPDX-License-Identifier: BSD-3-Clause
#include "platform/drawing/CoveragePlane.h"

#include <algorithm>
#include <cstring>

namespace platform {
namespace {

// The parts of a pixel that glyphs cover add up, as those of neighbours that meet in it do; more than
// the whole pixel is not there to be covered.
constexpr std::uint8_t Add(std::uint8_t a, std::uint8_t b) {
    const auto sum = static_cast<std::uint8_t>(a + b);
    return sum < a ? 255 : sum;
}

using Bytes8 = std::uint8_t __attribute__((vector_size(8)));

void AddRow(std::uint8_t* plane, const std::uint8_t* coverage, std::int64_t count) {
    std::int64_t i = 0;
    for (; i + 8 <= count; i += 8) { // nearly all, since bitmaps come in groups of eight
        Bytes8 there, added;
        std::memcpy(&there, plane + i, sizeof there);
        std::memcpy(&added, coverage + i, sizeof added);
        const Bytes8 sum = there + added;
        const Bytes8 full = sum | reinterpret_cast<Bytes8>(sum < there);
        std::memcpy(plane + i, &full, sizeof full);
    }
    for (; i < count; ++i)
        plane[i] = Add(plane[i], coverage[i]);
}

} // namespace

void CoveragePlane::PaintBitmap(std::int64_t x, std::int64_t y,
                                const text::CoverageBitmap& bitmap) {
    // The empty columns that fill up the bitmap's stride come along: whole groups of eight are
    // faster than the glyph's own width.
    const text::PixelBox part = Intersection(m_box, { x, y, x + bitmap.stride, y + bitmap.height });
    for (std::int64_t row = part.top; row < part.bottom; ++row) {
        AddRow(m_bytes.data() + Place(part.left, row),
               bitmap.pixels + (row - y) * bitmap.stride + (part.left - x), part.Width());
    }
}

void CoveragePlane::PaintSpan(std::int64_t x, std::int64_t y, std::int64_t length,
                              std::uint8_t coverage) {
    const text::PixelBox part = Intersection(m_box, { x, y, x + length, y + 1 });
    if (part.IsEmpty())
        return;
    std::uint8_t* const row = m_bytes.data() + Place(part.left, y);
    for (std::int64_t i = 0; i < part.Width(); ++i)
        row[i] = Add(row[i], coverage);
}

} // namespace platform
