// SPDX-License-Identifier: BSD-3-Clause
// Copies pixels between images. Clipping comes first, so the loops run freely.
#include <algorithm>
#include <array>
#include <cstring>

#include "host/Image.h"
#include "host/Ledger.h"

namespace host {

namespace {

// Moves one axis of a copy inside both images: from..from+length lies in 0..fromEnd, and to so.
void ClipAxis(std::int64_t& from, std::int64_t fromEnd, std::int64_t& to, std::int64_t toEnd,
              std::int64_t& length) {
    auto const skipped = std::max({ std::int64_t { 0 }, -from, -to });
    from += skipped;
    to += skipped;
    length = std::min({ length - skipped, fromEnd - from, toEnd - to });
}

// Where in a source pixel each channel of a destination pixel comes from; -1 for a full alpha, -2
// for one that has no meaning.
using ChannelMap = std::array<std::int32_t, 4>;

ChannelMap MapChannels(const PixelFormat& dst, const PixelFormat& src) {
    ChannelMap map;
    map.fill(-2);
    if (dst.alpha >= 0)
        map[static_cast<std::size_t>(dst.alpha)] = src.alpha >= 0 ? src.alpha : -1;
    map[static_cast<std::size_t>(dst.red)] = src.red;
    map[static_cast<std::size_t>(dst.green)] = src.green;
    map[static_cast<std::size_t>(dst.blue)] = src.blue;
    return map;
}

void CopyReordered(std::uint8_t* dst, const std::uint8_t* src, std::int64_t pixels,
                   const PixelFormat& format, const ChannelMap& map) {
    auto const bytes = static_cast<std::size_t>(format.BytesPerChannel());
    auto const channels = static_cast<std::size_t>(format.Channels());
    for (; pixels > 0; --pixels) {
        for (std::size_t i = 0; i < channels; ++i) {
            if (map[i] >= 0)
                std::memcpy(dst + i * bytes, src + static_cast<std::size_t>(map[i]) * bytes, bytes);
            else if (map[i] == -1)
                std::memset(dst + i * bytes, 0xFF, bytes);
        }
        dst += channels * bytes;
        src += channels * bytes;
    }
}

} // namespace

void CopyPixels(Image& dst, std::int32_t x, std::int32_t y, const Image& src, Area from) {
    auto const& format = dst.Format();
    if (format.depth != src.Format().depth) {
        Ledger::Get().RecordMisuse("copy from ", src.Format().depth, " to ", format.depth, " bits");
        return;
    }
    std::int64_t fromX = from.x, fromY = from.y, toX = x, toY = y;
    std::int64_t width = from.width, height = from.height;
    ClipAxis(fromX, src.Width(), toX, dst.Width(), width);
    ClipAxis(fromY, src.Height(), toY, dst.Height(), height);
    if (width <= 0 || height <= 0)
        return;

    auto const isSameFormat = format == src.Format();
    auto const map = MapChannels(format, src.Format());
    auto const pixelBytes = format.BytesPerPixel();
    // Rows that move down in one image are copied from the last one up, before they are overwritten.
    auto const upwards = &dst == &src && toY > fromY;
    for (std::int64_t i = 0; i < height; ++i) {
        auto const row = upwards ? height - 1 - i : i;
        auto* const to = dst.Row(static_cast<std::int32_t>(toY + row)).data() + toX * pixelBytes;
        auto const* const source =
            src.Row(static_cast<std::int32_t>(fromY + row)).data() + fromX * pixelBytes;
        if (isSameFormat)
            std::memmove(to, source, static_cast<std::size_t>(width * pixelBytes));
        else
            CopyReordered(to, source, width, format, map);
    }
}

} // namespace host
