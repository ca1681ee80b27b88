// SPDX-License-Identifier: BSD-3-Clause
// Turns the characters of one line into placed glyphs: order, faces, shaping, width.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/text/FontCatalog.h"
#include "platform/text/Glyphs.h"

namespace platform::text {

// What reads as one character and does not fit between the family's ascent and descent.
struct TallCharacter {
    std::string name; // "U+1EAA", of several code points with spaces between
    Rows rows;
};

struct GlyphLine {
    std::vector<PlacedGlyph> glyphs; // left to right
    std::int64_t widthPx = 0;
    std::vector<TallCharacter> tall;
};

// A line's width holds its ink as well as its advance: what would stick out on the left moves the
// line right, what would stick out on the right makes it wider.
//
//     |<-- shift -->|<------------- advance ------------->|<- overhang ->|
//     |  ink left of the first origin                     ink right of the last one
//
// A character that the family lacks comes from the text context's fallbacks, then from the machine's.
// What comes from another face than the family's own, and would not fit between its ascent and descent,
// is smaller by just so much that it does.
GlyphLine LayOutGlyphs(Family& family, std::int32_t size, std::string_view utf8);

} // namespace platform::text
