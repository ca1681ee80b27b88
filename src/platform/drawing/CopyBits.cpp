// SPDX-License-Identifier: BSD-3-Clause
// Copies pixels from one world to another, row by row, and scales them where the sizes differ.
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>
#include <vector>

#include "platform/StateSavers.h"
#include "platform/drawing/World.h"

namespace platform {
namespace {

constexpr std::ptrdiff_t kPixelBytes = 4;

// How one axis maps: each of the target's pixels from first on takes its pixel of the source.
struct Axis {
    std::int32_t first = 0;
    std::vector<std::int32_t> source;
    bool isShift = false; // the sources are neighbours, so that a row is one copy
};

// from and to are edges of the rectangles, fromSide and toSide the worlds' sizes. A target pixel
// takes what lies under its middle, and none when that is outside.
Axis MapAxis(std::int32_t fromLow, std::int32_t fromHigh, std::int32_t fromSide, std::int32_t toLow,
             std::int32_t toHigh, std::int32_t toSide) {
    const std::int64_t fromLength = fromHigh - fromLow;
    const std::int64_t toLength = toHigh - toLow;
    Axis axis;
    axis.isShift = fromLength == toLength;
    if (fromLength <= 0 || toLength <= 0)
        return axis;
    for (std::int32_t at = std::max(toLow, 0); at < std::min(toHigh, toSide); ++at) {
        const std::int64_t twiceMiddle = 2 * std::int64_t { at - toLow } + 1;
        const auto source =
            static_cast<std::int32_t>(fromLow + twiceMiddle * fromLength / (2 * toLength));
        if (source < 0 || source >= fromSide)
            continue;
        if (axis.source.empty())
            axis.first = at;
        axis.source.push_back(source);
    }
    return axis;
}

void CopyRow(const std::uint8_t* from, std::uint8_t* to, const Axis& columns) {
    to += columns.first * kPixelBytes;
    if (columns.isShift) {
        std::memcpy(to, from + columns.source.front() * kPixelBytes,
                    columns.source.size() * kPixelBytes);
        return;
    }
    for (const std::int32_t column : columns.source) {
        std::memcpy(to, from + column * kPixelBytes, kPixelBytes);
        to += kPixelBytes;
    }
}

// A world's rows, copied when the target is the same world.
class SourceRows {
public:
    SourceRows(GWorldPtr from, const Axis& rows, bool copied)
        : m_rowBytes(GetPixRowBytes(GetGWorldPixMap(from))),
          m_base(GetPixBaseAddr(GetGWorldPixMap(from))) {
        if (!copied || !m_base)
            return;
        m_firstRow = rows.source.front();
        const std::uint8_t* const begin = m_base + m_firstRow * m_rowBytes;
        m_copy.assign(begin, begin + (rows.source.back() + 1 - m_firstRow) * m_rowBytes);
        m_base = m_copy.data();
    }
    explicit operator bool() const { return m_base; }
    const std::uint8_t* Row(std::int32_t row) const {
        return m_base + (row - m_firstRow) * m_rowBytes;
    }

private:
    std::ptrdiff_t m_rowBytes;
    const std::uint8_t* m_base;
    std::int32_t m_firstRow = 0;
    std::vector<std::uint8_t> m_copy;
};

OSStatus CopyMapped(GWorldPtr from, GWorldPtr to, const Axis& columns, const Axis& rows) {
    const XPixMapLocker lockedFrom(&from->pixels);
    const XPixMapLocker lockedTo(&to->pixels);
    // Writing gives a world pixels of its own, so the source is asked for afterwards.
    std::uint8_t* const base = GetWritablePixBaseAddr(&to->pixels);
    const SourceRows source(from, rows, from == to);
    if (!base || !source)
        return kMemFullErr;
    const std::ptrdiff_t rowBytes = GetPixRowBytes(&to->pixels);
    for (std::size_t i = 0; i < rows.source.size(); ++i) {
        std::uint8_t* const row = base + (rows.first + static_cast<std::ptrdiff_t>(i)) * rowBytes;
        if (i > 0 && rows.source[i] == rows.source[i - 1]) // stretched: the row above once more
            std::memcpy(row + columns.first * kPixelBytes,
                        row - rowBytes + columns.first * kPixelBytes,
                        columns.source.size() * kPixelBytes);
        else
            CopyRow(source.Row(rows.source[i]), row, columns);
    }
    return kNoErr;
}

} // namespace

OSStatus CopyBits(GWorldPtr from, const Rect& fromRect, CGrafPtr to, const Rect& toRect) try {
    if (!from || !to)
        return kParamErr;
    const Axis columns = MapAxis(fromRect.left, fromRect.right, from->pixels.width, toRect.left,
                                 toRect.right, to->pixels.width);
    const Axis rows = MapAxis(fromRect.top, fromRect.bottom, from->pixels.height, toRect.top,
                              toRect.bottom, to->pixels.height);
    if (columns.source.empty() || rows.source.empty())
        return kNoErr;
    return CopyMapped(from, to, columns, rows);
} catch (const std::bad_alloc&) {
    return kMemFullErr;
}

} // namespace platform
