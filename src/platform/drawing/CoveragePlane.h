// SPDX-License-Identifier: BSD-3-Clause
// One byte of coverage for each pixel of a picture, in which the glyphs of several lines gather before
// the picture is coloured: a quarter of the memory, and glyphs that overlap never exceed 255.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/drawing/Pixels.h"
#include "platform/text/TextService.h"

namespace platform {

class CoveragePlane final : public text::CoverageTarget {
public:
    // Empty. stride is at least width; the bytes of a row behind width may be written too. Throws
    // std::bad_alloc.
    CoveragePlane(std::int32_t width, std::int32_t height, std::int64_t stride);

    // All rows, one after the other without gaps.
    const std::uint8_t* Bytes() const { return m_bytes->Data(); }
    std::int64_t Count() const { return m_stride * m_height; }

    text::PixelBox Clip() const override { return { 0, 0, m_width, m_height }; }
    void PaintBitmap(std::int64_t x, std::int64_t y, const text::CoverageBitmap& bitmap) override;
    void PaintSpan(std::int64_t x, std::int64_t y, std::int64_t length,
                   std::uint8_t coverage) override;

private:
    std::uint8_t* At(std::int64_t x, std::int64_t y) { return m_bytes->Data() + y * m_stride + x; }

    std::int32_t m_width, m_height;
    std::int64_t m_stride;
    std::shared_ptr<PixelBuffer> m_bytes;
};

} // namespace platform
