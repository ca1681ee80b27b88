// SPDX-License-Identifier: BSD-3-Clause
// Copies pixels between images, where clipping comes first so that the loops run freely, and scales them:
// the mean of what a pixel covers when it covers much, a blend of its neighbours when it covers little.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <vector>

#include "host/Image.h"
#include "host/Ledger.h"

namespace host {

namespace {

// Moves one axis of a copy inside both images: from..from+length lies in 0..fromEnd, and to so.
void ClipAxis(std::int64_t& from, std::int64_t fromEnd, std::int64_t& to, std::int64_t toEnd,
              std::int64_t& length) {
    const auto skipped = std::max({ std::int64_t { 0 }, -from, -to });
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
    const auto bytes = static_cast<std::size_t>(format.BytesPerChannel());
    const auto channels = static_cast<std::size_t>(format.Channels());
    for (; pixels > 0; --pixels) {
        for (std::size_t i = 0; i < channels; ++i)
            if (map[i] >= 0)
                std::memcpy(dst + i * bytes, src + static_cast<std::size_t>(map[i]) * bytes, bytes);
            else if (map[i] == -1)
                std::memset(dst + i * bytes, 0xFF, bytes);
        dst += channels * bytes;
        src += channels * bytes;
    }
}

} // namespace

void CopyPixels(Image& dst, std::int32_t x, std::int32_t y, const Image& src, Area from) {
    const auto& format = dst.Format();
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

    const auto isSameFormat = format == src.Format();
    const auto map = MapChannels(format, src.Format());
    const auto pixelBytes = format.BytesPerPixel();
    // Rows that move down in one image are copied from the last one up, before they are overwritten.
    const auto upwards = &dst == &src && toY > fromY;
    for (std::int64_t i = 0; i < height; ++i) {
        const auto row = upwards ? height - 1 - i : i;
        auto* const to = dst.Row(static_cast<std::int32_t>(toY + row)).data() + toX * pixelBytes;
        const auto* const source =
            src.Row(static_cast<std::int32_t>(fromY + row)).data() + fromX * pixelBytes;
        if (isSameFormat)
            std::memmove(to, source, static_cast<std::size_t>(width * pixelBytes));
        else
            CopyReordered(to, source, width, format, map);
    }
}

namespace {

// The source pixels of one destination pixel along one axis.
struct Taps {
    std::int32_t first;          // the first source pixel
    std::vector<double> weights; // of it and those after it; they add up to 1
};

// The window of destination pixel i is as wide as the scale, but at least one source pixel:
//
//   source   |  0  |  1  |  2  |  3  |      a source pixel weighs as much as it lies in the window
//   window      [---------)
//
Taps TapsAt(std::int64_t i, std::int64_t dstLength, std::int64_t srcStart, std::int64_t srcLength,
            std::int32_t srcEnd) {
    const auto scale = static_cast<double>(srcLength) / static_cast<double>(dstLength);
    const auto width = std::max(scale, 1.0);
    const auto centre = static_cast<double>(srcStart) + (static_cast<double>(i) + 0.5) * scale;
    const auto limit = [srcEnd](double at) {
        return static_cast<std::int32_t>(std::clamp(at, 0.0, static_cast<double>(srcEnd - 1)));
    };
    const auto begin = centre - width / 2;
    const auto end = centre + width / 2;
    Taps taps { limit(std::floor(begin)), {} };
    taps.weights.resize(static_cast<std::size_t>(limit(std::ceil(end) - 1)) -
                        static_cast<std::size_t>(taps.first) + 1);
    const auto last = taps.weights.size() - 1;
    for (std::size_t k = 0; k <= last; ++k) {
        // What the window has outside the image goes to the pixels at its edge.
        const auto left =
            k == 0 ? begin
                   : std::max(begin, static_cast<double>(taps.first) + static_cast<double>(k));
        const auto right =
            k == last ? end
                      : std::min(end, static_cast<double>(taps.first) + static_cast<double>(k) + 1);
        taps.weights[k] = (right - left) / width;
    }
    return taps;
}

// Those of the destination pixels that lie inside an image of dstEnd pixels.
struct Axis {
    std::int32_t start = 0;
    std::vector<Taps> taps;
};

Axis AxisOf(std::int32_t to, std::int32_t toLength, std::int32_t dstEnd, std::int32_t from,
            std::int32_t fromLength, std::int32_t srcEnd) {
    Axis axis;
    axis.start = std::max(to, 0);
    const auto end = std::min(std::int64_t { to } + toLength, std::int64_t { dstEnd });
    for (std::int64_t i = axis.start; i < end; ++i)
        axis.taps.push_back(TapsAt(i - to, toLength, from, fromLength, srcEnd));
    return axis;
}

using Colour = std::array<double, 4>; // red, green, blue, alpha

template <class Channel>
Channel ReadChannel(const std::uint8_t* pixel, std::int32_t index) {
    Channel value;
    std::memcpy(&value, pixel + static_cast<std::size_t>(index) * sizeof value, sizeof value);
    return value;
}

template <class Channel>
void WriteChannel(std::uint8_t* pixel, std::int32_t index, double value) {
    constexpr double kFull = static_cast<Channel>(-1);
    const auto rounded = static_cast<Channel>(std::clamp(value + 0.5, 0.0, kFull));
    std::memcpy(pixel + static_cast<std::size_t>(index) * sizeof rounded, &rounded, sizeof rounded);
}

template <class Channel>
Colour Mean(const Image& src, const Taps& rows, const Taps& columns) {
    const auto& format = src.Format();
    Colour sum {};
    for (std::size_t j = 0; j < rows.weights.size(); ++j) {
        const auto row = src.Row(rows.first + static_cast<std::int32_t>(j));
        const auto* pixel =
            row.data() + static_cast<std::ptrdiff_t>(columns.first) * format.BytesPerPixel();
        for (const auto columnWeight : columns.weights) {
            auto weight = rows.weights[j] * columnWeight;
            if (format.alpha >= 0)
                weight *= ReadChannel<Channel>(pixel, format.alpha);
            sum[0] += weight * ReadChannel<Channel>(pixel, format.red);
            sum[1] += weight * ReadChannel<Channel>(pixel, format.green);
            sum[2] += weight * ReadChannel<Channel>(pixel, format.blue);
            sum[3] += weight;
            pixel += format.BytesPerPixel();
        }
    }
    for (std::size_t i = 0; i < 3 && sum[3] > 0; ++i)
        sum[i] /= sum[3];
    return sum;
}

template <class Channel>
void Stretch(Image& dst, const Image& src, const Axis& rows, const Axis& columns) {
    const auto& format = dst.Format();
    for (std::size_t j = 0; j < rows.taps.size(); ++j) {
        auto* pixel = dst.Row(rows.start + static_cast<std::int32_t>(j)).data() +
                      static_cast<std::ptrdiff_t>(columns.start) * format.BytesPerPixel();
        for (const auto& column : columns.taps) {
            const auto colour = Mean<Channel>(src, rows.taps[j], column);
            WriteChannel<Channel>(pixel, format.red, colour[0]);
            WriteChannel<Channel>(pixel, format.green, colour[1]);
            WriteChannel<Channel>(pixel, format.blue, colour[2]);
            if (format.alpha >= 0)
                WriteChannel<Channel>(pixel, format.alpha,
                                      src.Format().alpha >= 0 ? colour[3]
                                                              : static_cast<Channel>(-1));
            pixel += format.BytesPerPixel();
        }
    }
}

} // namespace

void StretchPixels(Image& dst, Area to, const Image& src, Area from) {
    if (dst.Format().depth != src.Format().depth) {
        Ledger::Get().RecordMisuse("stretch from ", src.Format().depth, " to ", dst.Format().depth,
                                   " bits");
        return;
    }
    const auto isEmpty = [](const Area& area) { return area.width < 1 || area.height < 1; };
    if (isEmpty(to) || isEmpty(from) || src.Width() == 0 || dst.Width() == 0)
        return;
    if (&dst == &src) {
        const auto copy = Image::Make(src.Width(), src.Height(), src.Format());
        if (!copy)
            return;
        CopyPixels(*copy, 0, 0, src, { 0, 0, src.Width(), src.Height() });
        StretchPixels(dst, to, *copy, from);
        return;
    }
    const auto rows = AxisOf(to.y, to.height, dst.Height(), from.y, from.height, src.Height());
    const auto columns = AxisOf(to.x, to.width, dst.Width(), from.x, from.width, src.Width());
    if (dst.Format().depth == 64)
        Stretch<std::uint16_t>(dst, src, rows, columns);
    else
        Stretch<std::uint8_t>(dst, src, rows, columns);
}

} // namespace host
