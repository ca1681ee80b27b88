// SPDX-License-Identifier: BSD-3-Clause
// Coverage of glyphs: cached bitmaps up to a size, spans beyond it.
#pragma once

#include <cstdint>

#include "platform/text/Face.h"
#include "platform/text/TextService.h"

namespace platform::text {

// Paints one glyph at size pixels an em with its origin at the 26.6 position (x, y), y down, whose
// fractions are quarters. Any thread; without hinting, so that a file's pixels are the same
// everywhere.
void PaintGlyph(const Face& face, std::uint32_t glyph, std::int32_t size, std::int64_t x,
                std::int64_t y, CoverageTarget& target);

CacheCount CountGlyphs();
std::int64_t MaxGlyphBytes();
void PurgeGlyphs();

} // namespace platform::text
