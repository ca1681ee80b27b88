// SPDX-License-Identifier: BSD-3-Clause
// Resampling through the host's cursor; copying and flattening in the locked memory.
#include "render/ImageOperations.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

using render::ChannelOrder;
using render::LockedPixels;
using render::PixelRow;

namespace {

// Both images of an operation, locked while it lasts.
class PairLock {
public:
    PairLock(PIOffscreen& dst, PIOffscreen& src)
        : m_dst(dst, PIOffscreen::Access::kWrite, PIOffscreenLock::Unlock::kAlways),
          m_src(src, PIOffscreen::Access::kRead, PIOffscreenLock::Unlock::kAlways) {}
    bool IsLocked() const { return m_dst.IsLocked() && m_src.IsLocked(); }

private:
    PIOffscreenLock m_dst;
    PIOffscreenLock m_src;
};

struct Size {
    std::int32_t width, height;
    bool operator==(const Size&) const = default;
};
Size SizeOf(const PIOffscreen& image) {
    return { image.Width(), image.Height() };
}

// A block of source pixels.
struct Span {
    std::int32_t x, y, width, height;
};

// Adds up 8-bit channels of pixels that it takes from an image.
class PixelSum {
public:
    explicit PixelSum(PIOffscreen& image) : m_image(image) {}

    void Add(const Span& span) {
        for (std::int32_t y = span.y; y < span.y + span.height; ++y)
            for (std::int32_t x = span.x; x < span.x + span.width; ++x)
                AddPixel(x, y);
    }
    std::uint32_t Average() const {
        std::uint32_t packed = 0;
        for (std::size_t i = 0; i < m_sums.size(); ++i)
            packed |= static_cast<std::uint32_t>(m_sums[i] / std::max<std::uint64_t>(m_count, 1))
                      << (8 * i);
        return packed;
    }

private:
    void AddPixel(std::int32_t x, std::int32_t y) {
        m_image.MoveTo(x, y);
        const std::uint32_t pixel = m_image.GetPixel();
        for (std::size_t i = 0; i < m_sums.size(); ++i)
            m_sums[i] += pixel >> (8 * i) & 0xFF;
        ++m_count;
    }

    PIOffscreen& m_image;
    std::array<std::uint64_t, 3> m_sums {};
    std::uint64_t m_count = 0;
};

// Where destination line i of count starts in a source of size lines.
std::int32_t Scaled(std::int32_t i, std::int32_t size, std::int32_t count) {
    return static_cast<std::int32_t>(std::int64_t { i } * size / count);
}

// The source block under destination pixel (x, y).
Span SpanUnder(std::int32_t x, std::int32_t y, const Size& dst, const Size& src) {
    const std::int32_t left = Scaled(x, src.width, dst.width);
    const std::int32_t top = Scaled(y, src.height, dst.height);
    return { left, top, Scaled(x + 1, src.width, dst.width) - left,
             Scaled(y + 1, src.height, dst.height) - top };
}

// Pictures were always shrunk with the first pixel and the first row weighing double: the first is
// taken alone, again with its row, and the row again with the block.
std::uint32_t AverageUnder(PIOffscreen& image, const Span& span, const Size& dst, const Size& src) {
    PixelSum sum(image);
    sum.Add({ span.x, span.y, 1, 1 });
    if (src.width > dst.width)
        sum.Add({ span.x, span.y, span.width, 1 });
    if (src.height > dst.height)
        sum.Add(span);
    return sum.Average();
}

// Straight alpha over white, in the channel's own range.
template <class Channel>
Channel OverWhite(Channel value, Channel alpha) {
    constexpr std::uint32_t kFull = std::numeric_limits<Channel>::max();
    return static_cast<Channel>(kFull - (kFull - value) * std::uint32_t { alpha } / kFull);
}

template <class Channel>
using Colors = std::array<Channel, 3>;

Colors<std::uint8_t> FlattenColors(const Colors<std::uint8_t>& colors, std::uint8_t alpha) {
    return { OverWhite(colors[0], alpha), OverWhite(colors[1], alpha),
             OverWhite(colors[2], alpha) };
}

// Green and blue follow from the new red, on purpose: where they are partly transparent, 16-bit
// pictures have always turned grey on white.
Colors<std::uint16_t> FlattenColors(const Colors<std::uint16_t>& colors, std::uint16_t alpha) {
    if (alpha == 0 || alpha == 65535)
        return alpha == 0 ? Colors<std::uint16_t> { 65535, 65535, 65535 } : colors;
    const std::uint16_t red = OverWhite(colors[0], alpha);
    const std::uint16_t grey = OverWhite(red, alpha);
    return { red, grey, grey };
}

template <class Channel>
void FlattenPixel(const PixelRow<Channel>& row, std::ptrdiff_t pixel, const ChannelOrder& order) {
    if (!row.Has(pixel, order.alpha))
        return;
    const std::array<std::int32_t, 3> places { order.red, order.green, order.blue };
    Colors<Channel> colors {};
    for (std::size_t i = 0; i < places.size(); ++i)
        if (row.Has(pixel, places[i]))
            colors[i] = row.Get(pixel, places[i]);
    colors = FlattenColors(colors, row.Get(pixel, order.alpha));
    for (std::size_t i = 0; i < places.size(); ++i)
        if (row.Has(pixel, places[i]))
            row.Set(pixel, places[i], colors[i]);
    row.Set(pixel, order.alpha, std::numeric_limits<Channel>::max());
}

// rect lies inside the image.
template <class Channel>
void FlattenRect(const LockedPixels& pixels, const tagRECT& rect) {
    for (std::int32_t y = rect.top; y < rect.bottom; ++y) {
        const PixelRow<Channel> row(pixels.Row(y), pixels.UsedBytes());
        for (std::ptrdiff_t x = rect.left; x < rect.right; ++x)
            FlattenPixel(row, 4 * x, pixels.order);
    }
}

tagRECT Clip(const tagRECT& rect, const LockedPixels& pixels) {
    return { std::max(rect.left, 0), std::max(rect.top, 0), std::min(rect.right, pixels.width),
             std::min(rect.bottom, pixels.height) };
}

} // namespace

long ChangeResolution(PIOffscreen& dst, PIOffscreen& src) {
    const PairLock lock(dst, src);
    if (!lock.IsLocked())
        return 0;
    const Size to = SizeOf(dst);
    const Size from = SizeOf(src);
    if (to == from) {
        dst.Copy(0, 0, to.width, to.height, src, 0, 0);
        return 0;
    }
    if (from.width <= 0 || from.height <= 0)
        return 0;
    for (std::int32_t y = 0; y < to.height; ++y) {
        for (std::int32_t x = 0; x < to.width; ++x) {
            const std::uint32_t average = AverageUnder(src, SpanUnder(x, y, to, from), to, from);
            dst.MoveTo(x, y);
            dst.SetPixel(average);
        }
    }
    return 0;
}

long StretchCopy(PIOffscreen& dst, PIOffscreen& src) {
    const PairLock lock(dst, src);
    if (!lock.IsLocked() || dst.Stretch(src))
        return 0;
    const Size to = SizeOf(dst);
    const Size from = SizeOf(src);
    if (to.width <= 0 || to.height <= 0 || from.width <= 0 || from.height <= 0)
        return 0;
    const double stepX = static_cast<double>(from.width) / to.width;
    const double stepY = static_cast<double>(from.height) / to.height;
    dst.MoveTo(0, 0);
    for (std::int32_t y = 0; y < to.height; ++y) {
        for (std::int32_t x = 0; x < to.width; ++x) {
            src.MoveTo(static_cast<std::int32_t>(x * stepX), static_cast<std::int32_t>(y * stepY));
            dst.SetRawPixel(src.GetRawPixel());
            dst.Next();
        }
    }
    return 0;
}

long CopyAllOffscreen(PIOffscreen& dst, PIOffscreen& src) {
    if (SizeOf(dst) != SizeOf(src) || dst.Depth() != src.Depth())
        return 0;
    const LockedPixels to(dst, PIOffscreen::Access::kWrite, PIOffscreenLock::Unlock::kAlways);
    const LockedPixels from(src, PIOffscreen::Access::kRead, PIOffscreenLock::Unlock::kAlways);
    for (std::int32_t y = 0; to && from && y < to.height; ++y)
        std::memmove(to.Row(y), from.Row(y), static_cast<std::size_t>(to.UsedBytes()));
    return 0;
}

long SetWhiteMat(PIOffscreen& image, const tagRECT& rect) {
    const LockedPixels pixels(image, PIOffscreen::Access::kWrite, PIOffscreenLock::Unlock::kAlways);
    if (pixels && pixels.depth == 32)
        FlattenRect<std::uint8_t>(pixels, Clip(rect, pixels));
    else if (pixels && pixels.depth == 64)
        FlattenRect<std::uint16_t>(pixels, Clip(rect, pixels));
    return 0;
}
