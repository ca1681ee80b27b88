// SPDX-License-Identifier: BSD-3-Clause
// Turns the characters of one line into placed glyphs: order, faces, shaping, width.
#pragma once

#include <string_view>
#include <vector>

#include "platform/text/FontCatalog.h"
#include "platform/text/Glyphs.h"

namespace platform::text {

struct GlyphLine {
    std::vector<PlacedGlyph> glyphs; // left to right
    std::int64_t widthPx = 0;
};

// A line's width holds its ink as well as its advance: what would stick out on the left moves the
// line right, what would stick out on the right makes it wider.
//
//     |<-- shift -->|<------------- advance ------------->|<- overhang ->|
//     |  ink left of the first origin                     ink right of the last one
GlyphLine LayOutGlyphs(Family& family, std::int32_t size, std::string_view utf8);

} // namespace platform::text
