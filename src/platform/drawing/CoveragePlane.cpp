// SPDX-License-Identifier: BSD-3-Clause
// Adds glyphs to the plane, sixteen pixels at once.
#include "platform/drawing/CoveragePlane.h"

#include <algorithm>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace platform {
namespace {

// The parts of a pixel that glyphs cover add up, as those of neighbours that meet in it do; more than
// the whole pixel is not there to be covered.
constexpr std::uint8_t Add(std::uint8_t a, std::uint8_t b) {
    return static_cast<std::uint8_t>(std::min(a + b, 255));
}

void AddRow(std::uint8_t* plane, const std::uint8_t* coverage, std::int64_t count) {
    std::int64_t i = 0;
#if defined(__SSE2__)
    for (; i + 16 <= count; i += 16) {
        auto* const there = reinterpret_cast<__m128i*>(plane + i);
        const auto* const added = reinterpret_cast<const __m128i*>(coverage + i);
        _mm_storeu_si128(there, _mm_adds_epu8(_mm_loadu_si128(there), _mm_loadu_si128(added)));
    }
    for (; i + 8 <= count; i += 8) {
        auto* const there = reinterpret_cast<__m128i*>(plane + i);
        const auto* const added = reinterpret_cast<const __m128i*>(coverage + i);
        _mm_storel_epi64(there, _mm_adds_epu8(_mm_loadl_epi64(there), _mm_loadl_epi64(added)));
    }
#endif
    for (; i < count; ++i) {
        plane[i] = Add(plane[i], coverage[i]);
    }
}

struct Rows {
    std::uint8_t* plane;
    std::int64_t planeStride;
    const std::uint8_t* coverage;
    std::int64_t coverageStride;
    std::int64_t width, height;
};

// kWidth is the width of all rows; 0 for any. A known one leaves no loop within a row.
template <std::int64_t kWidth>
void AddRows(const Rows& rows) {
    for (std::int64_t y = 0; y < rows.height; ++y) {
        AddRow(rows.plane + y * rows.planeStride, rows.coverage + y * rows.coverageStride,
               kWidth > 0 ? kWidth : rows.width);
    }
}

void Add(const Rows& rows) {
    switch (rows.width) {
    case 8:
        return AddRows<8>(rows);
    case 16:
        return AddRows<16>(rows);
    case 24:
        return AddRows<24>(rows);
    case 32:
        return AddRows<32>(rows);
    case 40:
        return AddRows<40>(rows);
    default:
        return AddRows<0>(rows);
    }
}

} // namespace

CoveragePlane::CoveragePlane(const text::PixelBox& box, std::uint8_t* bytes)
    : m_box(box), m_bytes(bytes) {
    std::fill_n(m_bytes, box.Width() * box.Height(), std::uint8_t { 0 });
}

void CoveragePlane::PaintBitmap(std::int64_t x, std::int64_t y,
                                const text::CoverageBitmap& bitmap) {
    // The empty columns that fill up the bitmap's stride come along: whole groups of eight are
    // faster than the glyph's own width.
    const text::PixelBox part = Intersection(m_box, { x, y, x + bitmap.stride, y + bitmap.height });
    if (!part.IsEmpty()) {
        Add({ m_bytes + Place(part.left, part.top), m_box.Width(),
              bitmap.pixels + (part.top - y) * bitmap.stride + (part.left - x), bitmap.stride,
              part.Width(), part.Height() });
    }
}

void CoveragePlane::PaintSpan(std::int64_t x, std::int64_t y, std::int64_t length,
                              std::uint8_t coverage) {
    const text::PixelBox part = Intersection(m_box, { x, y, x + length, y + 1 });
    if (part.IsEmpty()) {
        return;
    }
    std::uint8_t* const row = m_bytes + Place(part.left, y);
    for (std::int64_t i = 0; i < part.Width(); ++i) {
        row[i] = Add(row[i], coverage);
    }
}

} // namespace platform
