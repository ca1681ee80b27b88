// SPDX-License-Identifier: BSD-3-Clause
// One byte of coverage for each pixel of a box, in which the glyphs of several lines gather before
// they are coloured: a quarter of the memory, and glyphs that overlap never exceed 255.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/text/TextService.h"

namespace platform {

class CoveragePlane final : public text::CoverageTarget {
public:
    // No coverage yet. Throws std::bad_alloc.
    explicit CoveragePlane(const text::PixelBox& box)
        : m_box(box), m_bytes(static_cast<std::size_t>(box.Width() * box.Height())) {}

    // Rows of the box's width, top row first, one after the other without gaps.
    const std::uint8_t* Row(std::int64_t y) const { return m_bytes.data() + Place(m_box.left, y); }

    text::PixelBox Clip() const override { return m_box; }
    void PaintBitmap(std::int64_t x, std::int64_t y, const text::CoverageBitmap& bitmap) override;
    void PaintSpan(std::int64_t x, std::int64_t y, std::int64_t length,
                   std::uint8_t coverage) override;

private:
    std::int64_t Place(std::int64_t x, std::int64_t y) const {
        return (y - m_box.top) * m_box.Width() + (x - m_box.left);
    }

    text::PixelBox m_box;
    std::vector<std::uint8_t> m_bytes;
};

} // namespace platform
