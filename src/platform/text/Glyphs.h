// SPDX-License-Identifier: BSD-3-Clause
// Coverage of glyphs: cached bitmaps up to a size, spans beyond it.
#pragma once

#include <cstdint>
#include <span>

#include "platform/text/Face.h"
#include "platform/text/TextService.h"

namespace platform::text {

// Glyph origins fall on quarters of a pixel, so that a few bitmaps serve every position.
inline constexpr std::int32_t kQuarterPixel = 16;

struct PlacedGlyph {
    const Face* face;
    std::uint32_t glyph;
    std::int32_t size; // pixels an em
    std::int32_t x, y; // 26.6 pixels from the left end of the baseline, y up; quarters

    bool operator==(const PlacedGlyph&) const = default;
};

// Paints the glyphs of a line with the left end of the baseline at the top left corner of pixel
// (x, y). Any thread; without hinting, so that a file's pixels are the same everywhere.
void PaintGlyphs(std::span<const PlacedGlyph> glyphs, std::int64_t x, std::int64_t y,
                 CoverageTarget& target);

// A box around all that the glyphs cover, as seen from pixel (x, y). Any thread.
PixelBox InkOfGlyphs(std::span<const PlacedGlyph> glyphs);

// Rows of pixels, downwards from the baseline's first one below it: top <= y < bottom.
struct Rows {
    std::int64_t top, bottom;
};
// Those in which the glyph leaves coverage, to the pixel; 0 and 0 for none. Any thread.
Rows RowsOfGlyph(const PlacedGlyph& glyph);

CacheCount CountGlyphs();
std::int64_t MaxGlyphBytes();
void PurgeGlyphs();

} // namespace platform::text
