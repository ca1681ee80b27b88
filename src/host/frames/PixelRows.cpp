// SPDX-License-Identifier: BSD-3-Clause
// One loop for each number of values in a pixel and each channel type, and a straight copy where the
// image's layout is already the file's.

#include "host/frames/PixelRows.h"

#include <array>
#include <bit>
#include <cstring>

namespace host {
namespace {

using ChannelOrder = std::array<std::int32_t, 4>;

// Which channel of the image each value of the file is; -1: none.
ChannelOrder OrderIn(const PixelFormat& format, ColorKind kind) {
    switch (kind) {
    case ColorKind::kGrey:
    case ColorKind::kPalette:
        return { format.red, -1, -1, -1 };
    case ColorKind::kGreyAlpha:
        return { format.red, format.alpha, -1, -1 };
    default:
        return { format.red, format.green, format.blue, format.alpha };
    }
}

bool SameLayout(const PixelFormat& format, ColorKind kind) {
    const std::int32_t channels = format.BytesPerPixel() / format.BytesPerChannel();
    return OrderIn(format, kind) == ChannelOrder { 0, 1, 2, channels == 4 ? 3 : -1 } &&
           std::size_t(channels) == ChannelsOf(kind);
}

std::uint8_t HighByteFirst(std::uint8_t value) {
    return value;
}

std::uint16_t HighByteFirst(std::uint16_t value) {
    if constexpr (std::endian::native == std::endian::big)
        return value;
    return static_cast<std::uint16_t>(value << 8 | value >> 8);
}

template <typename Channel>
Channel LoadAt(const std::uint8_t* from, std::size_t index) {
    Channel value;
    std::memcpy(&value, from + index * sizeof value, sizeof value);
    return value;
}

template <typename Channel>
void StoreAt(std::uint8_t* to, std::size_t index, Channel value) {
    std::memcpy(to + index * sizeof value, &value, sizeof value);
}

template <typename Channel>
void CopyValues(const std::uint8_t* from, std::size_t values, std::uint8_t* to) {
    for (std::size_t i = 0; i < values; ++i)
        StoreAt(to, i, HighByteFirst(LoadAt<Channel>(from, i)));
}

template <typename Channel, std::size_t N>
void Pack(const std::uint8_t* from, std::size_t width, std::size_t step, const ChannelOrder& order,
          std::uint8_t* to) {
    constexpr auto kOpaque = static_cast<Channel>(~Channel {});
    for (std::size_t x = 0; x < width; ++x)
        for (std::size_t i = 0; i < N; ++i) {
            const Channel value =
                order[i] < 0 ? kOpaque : LoadAt<Channel>(from, x * step + std::size_t(order[i]));
            StoreAt(to, x * N + i, HighByteFirst(value));
        }
}

template <typename Channel>
void PackAny(const Image& image, std::int32_t y, ColorKind kind, std::uint8_t* to) {
    const std::uint8_t* from = image.Row(y).data();
    const auto width = std::size_t(image.Width());
    const std::size_t step = std::size_t(image.Format().BytesPerPixel()) / sizeof(Channel);
    const ChannelOrder order = OrderIn(image.Format(), kind);
    if (SameLayout(image.Format(), kind))
        return CopyValues<Channel>(from, width * step, to);
    switch (ChannelsOf(kind)) {
    case 1:
        return Pack<Channel, 1>(from, width, step, order, to);
    case 2:
        return Pack<Channel, 2>(from, width, step, order, to);
    case 3:
        return Pack<Channel, 3>(from, width, step, order, to);
    default:
        return Pack<Channel, 4>(from, width, step, order, to);
    }
}

template <typename Channel>
void UnpackAny(const std::uint8_t* from, ColorKind kind, Image& image, std::int32_t y) {
    constexpr auto kOpaque = static_cast<Channel>(~Channel {});
    const PixelFormat& format = image.Format();
    std::uint8_t* to = image.Row(y).data();
    const auto width = std::size_t(image.Width());
    const std::size_t step = std::size_t(format.BytesPerPixel()) / sizeof(Channel);
    if (SameLayout(format, kind))
        return CopyValues<Channel>(from, width * step, to);

    const std::size_t values = ChannelsOf(kind);
    const bool hasAlpha = values % 2 == 0;
    const std::size_t next = values > 2 ? 1 : 0; // from red to green, and from green to blue
    for (std::size_t x = 0; x < width; ++x, from += values * sizeof(Channel)) {
        const auto put = [&](std::int32_t channel, Channel value) {
            StoreAt(to, x * step + std::size_t(channel), value);
        };
        const auto value = [&](std::size_t i) { return HighByteFirst(LoadAt<Channel>(from, i)); };
        put(format.red, value(0));
        put(format.green, value(next));
        put(format.blue, value(2 * next));
        if (format.alpha >= 0)
            put(format.alpha, hasAlpha ? value(values - 1) : kOpaque);
    }
}

} // namespace

std::size_t PackedRowBytes(const Image& image, ColorKind kind) {
    return std::size_t(image.Width()) * ChannelsOf(kind) *
           std::size_t(image.Format().BytesPerChannel());
}

void PackRow(const Image& image, std::int32_t y, ColorKind kind, std::uint8_t* to) {
    if (image.Format().depth == 64)
        PackAny<std::uint16_t>(image, y, kind, to);
    else
        PackAny<std::uint8_t>(image, y, kind, to);
}

void UnpackRow(const std::uint8_t* from, ColorKind kind, Image& image, std::int32_t y) {
    if (image.Format().depth == 64)
        UnpackAny<std::uint16_t>(from, kind, image, y);
    else
        UnpackAny<std::uint8_t>(from, kind, image, y);
}

} // namespace host
