// SPDX-License-Identifier: BSD-3-Clause
// What drawing asks of fonts: metrics, laid-out lines and their coverage. The one seam between
// worlds of pixels and the font libraries; a build without those has its own implementation.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/Fonts.h"
#include "platform/LruCache.h"
#include "platform/text/PixelBox.h"

namespace platform::text {

// Whole pixels, rounded up, so that every ordinary glyph of the family lies between ascent above
// the baseline and descent below it.
struct FontMetrics {
    std::int32_t ascent, descent, maxAdvance, leading;
};
// size is in pixels an em, 1..32767. Any thread.
FontMetrics MetricsOf(FontNumber font, std::int32_t size);

// One laid-out line: immutable, shared by measuring and drawing.
class Line {
public:
    Line(std::int64_t widthPx, std::int64_t bytes) : m_widthPx(widthPx), m_bytes(bytes) {}
    virtual ~Line() = default;
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    // A number that no other line of the process ever has.
    std::uint64_t Id() const { return m_id; }
    // What the pen moves by, whole pixels, rounded up. All ink of the line lies in 0..WidthPx.
    std::int64_t WidthPx() const { return m_widthPx; }
    std::int64_t Bytes() const { return m_bytes; } // that it takes

private:
    std::uint64_t m_id = NextId();
    std::int64_t m_widthPx, m_bytes;

    static std::uint64_t NextId();
};
using LinePtr = std::shared_ptr<const Line>;

// bytes are in the application's text encoding; control characters among them draw nothing. Never
// null. Any thread.
LinePtr LayOutLine(FontNumber font, std::int32_t size, std::string_view bytes);

// How much of each pixel a glyph covers, 0..255; top row first. The bytes of a row from width to
// stride are there and 0.
struct CoverageBitmap {
    const std::uint8_t* pixels;
    std::int64_t stride; // bytes from row to row
    std::int64_t width, height;
};

// What takes the coverage of a line. Everything outside Clip() may be left out, and is skipped by
// the target where it comes.
class CoverageTarget {
public:
    virtual ~CoverageTarget() = default;
    virtual PixelBox Clip() const = 0;
    // (x, y) is the bitmap's top left pixel.
    virtual void PaintBitmap(std::int64_t x, std::int64_t y, const CoverageBitmap& bitmap) = 0;
    virtual void PaintSpan(std::int64_t x, std::int64_t y, std::int64_t length,
                           std::uint8_t coverage) = 0;
};

// Tells the thread's text context of what a picture of height rows, with the line's baseline at the top
// of row y, loses at its top or bottom for it does not fit into a line of its font. Any thread.
void TellCut(const Line& line, std::int64_t y, std::int64_t height);

// Hands the line's glyphs to target, with the left end of the baseline at the top left corner of
// pixel (x, y). No lock is held while the target paints. Any thread.
void PaintLine(const Line& line, std::int64_t x, std::int64_t y, CoverageTarget& target);

// Boxes that hold, as seen from the pen's pixel, all coverage of the line, and all that is not the
// same in two lines. Either may be larger than it must. Any thread.
PixelBox InkOf(const Line& line);
PixelBox DifferenceOf(const Line& a, const Line& b);

struct ServiceCacheCounts {
    CacheCount lines, glyphs;
    std::int64_t maxBytes; // of both
};
ServiceCacheCounts CountServiceCaches();
void PurgeServiceCaches();

} // namespace platform::text
