// SPDX-License-Identifier: BSD-3-Clause
// Decides what kind of picture still holds a frame's pixels after drawing, and translates the metadata
// whose form depends on the kind.

#include "host/frames/Frame.h"

#include <algorithm>
#include <cstring>

namespace host {
namespace {

struct Pixel {
    std::uint32_t red, green, blue, alpha;
};

template <typename Channel>
Pixel Load(const std::uint8_t* pixel, const PixelFormat& format) {
    const auto channel = [&](std::int32_t index) {
        Channel value;
        std::memcpy(&value, pixel + index * sizeof value, sizeof value);
        return std::uint32_t { value };
    };
    const std::uint32_t opaque = static_cast<Channel>(~Channel {});
    return { channel(format.red), channel(format.green), channel(format.blue),
             format.alpha < 0 ? opaque : channel(format.alpha) };
}

PixelRect Clip(const PixelRect& rect, const Image& image) {
    return { std::max(rect.left, 0), std::max(rect.top, 0), std::min(rect.right, image.Width()),
             std::min(rect.bottom, image.Height()) };
}

template <typename Test>
bool AllPixels(const Image& image, const PixelRect& touched, Test test) {
    const PixelRect area = Clip(touched, image);
    const PixelFormat& format = image.Format();
    const auto load = format.depth == 64 ? Load<std::uint16_t> : Load<std::uint8_t>;
    for (std::int32_t y = area.top; y < area.bottom; ++y)
        for (std::int32_t x = area.left; x < area.right; ++x)
            if (!test(load(&image.Row(y)[std::size_t(x) * format.BytesPerPixel()], format)))
                return false;
    return true;
}

// A grey value of few bits in 8: the bits are repeated to the right, as readers of PNG widen them.
std::uint16_t WidenGrey(std::uint32_t value, std::int32_t bitDepth) {
    const std::uint32_t most = (1U << bitDepth) - 1;
    const std::uint32_t inRange = value & most;
    return static_cast<std::uint16_t>(bitDepth < 8 ? inRange * 255 / most : inRange);
}

bool IsGrey(ColorKind kind) {
    return kind == ColorKind::kGrey || kind == ColorKind::kGreyAlpha;
}

ColorKind WithAlpha(ColorKind kind) {
    return IsGrey(kind) ? ColorKind::kGreyAlpha : ColorKind::kRgba;
}

// The transparent colour as it stands in the image's channels.
Pixel KeyPixel(const FrameHeader& header) {
    const auto& key = header.transparentColor;
    const std::int32_t depth = header.bitDepth;
    if (header.color == ColorKind::kGrey) {
        const std::uint32_t grey = WidenGrey(key[0], depth);
        return { grey, grey, grey, 0 };
    }
    return { WidenGrey(key[0], depth), WidenGrey(key[1], depth), WidenGrey(key[2], depth), 0 };
}

bool KeyStillHolds(const Frame& frame, const PixelRect& touched) {
    const Pixel key = KeyPixel(frame.header);
    const std::uint32_t opaque = frame.header.bitDepth == 16 ? 0xFFFF : 0xFF;
    return AllPixels(*frame.image, touched, [&](const Pixel& p) {
        const bool isKey = p.red == key.red && p.green == key.green && p.blue == key.blue;
        return p.alpha == (isKey ? 0 : opaque);
    });
}

ColorKind KindFor(const Frame& frame, const PixelRect& touched) {
    const ColorKind was = frame.header.color;
    if (was == ColorKind::kPalette)
        return frame.image->Format().alpha < 0 ? ColorKind::kRgb : ColorKind::kRgba;
    if (!IsGrey(was) || AllPixels(*frame.image, touched, [](const Pixel& p) {
            return p.red == p.green && p.green == p.blue;
        }))
        return was;
    return was == ColorKind::kGrey ? ColorKind::kRgb : ColorKind::kRgba;
}

void PutBig16(std::vector<std::uint8_t>& data, std::uint32_t value) {
    data.push_back(static_cast<std::uint8_t>(value >> 8));
    data.push_back(static_cast<std::uint8_t>(value));
}

std::uint32_t Big16(const std::uint8_t* from) {
    return std::uint32_t { from[0] } << 8 | from[1];
}

// Significant bits: one byte for each channel.
bool TranslateSignificantBits(std::vector<std::uint8_t>& data, const FrameHeader& was,
                              const FrameHeader& now) {
    const std::size_t had = was.color == ColorKind::kPalette ? 3 : ChannelsOf(was.color);
    if (data.size() != had)
        return false;
    if (IsGrey(was.color) && !IsGrey(now.color))
        data.insert(data.begin(), 2, data[0]);
    if (data.size() < ChannelsOf(now.color))
        data.push_back(static_cast<std::uint8_t>(now.bitDepth));
    return true;
}

// The background: a grey value, three values or a palette index.
bool TranslateBackground(std::vector<std::uint8_t>& data, const FrameHeader& was,
                         const FrameHeader& now) {
    std::array<std::uint32_t, 3> color {};
    if (was.color == ColorKind::kPalette) {
        if (data.size() != 1 || (data[0] + std::size_t { 1 }) * 3 > was.palette.size())
            return false;
        std::copy_n(&was.palette[data[0] * std::size_t { 3 }], 3, color.begin());
    } else if (IsGrey(was.color)) {
        if (data.size() != 2)
            return false;
        color.fill(WidenGrey(Big16(data.data()), was.bitDepth));
    } else {
        return data.size() == 6;
    }
    data.clear();
    for (std::size_t i = 0; i < (IsGrey(now.color) ? 1 : 3); ++i)
        PutBig16(data, color[i]);
    return true;
}

// False: the chunk means nothing for a picture of the new kind.
bool Translate(FrameChunk& chunk, const FrameHeader& was, const FrameHeader& now) {
    const std::string_view type(chunk.type.data(), chunk.type.size());
    if (type == "sBIT")
        return TranslateSignificantBits(chunk.data, was, now);
    if (type == "bKGD")
        return TranslateBackground(chunk.data, was, now);
    // The frequencies of a palette go with it.
    if (type == "hIST")
        return !now.palette.empty();
    // A profile for grey does not fit a colour picture.
    if (type == "iCCP")
        return IsGrey(was.color) == IsGrey(now.color);
    return true;
}

} // namespace

std::size_t ChannelsOf(ColorKind kind) {
    switch (kind) {
    case ColorKind::kGreyAlpha:
        return 2;
    case ColorKind::kRgb:
        return 3;
    case ColorKind::kRgba:
        return 4;
    default:
        return 1;
    }
}

bool PrepareImage(Frame& frame, std::int32_t width, std::int32_t height,
                  const PixelFormat& format) {
    const Image* image = frame.image.get();
    if (!image || image->Width() != width || image->Height() != height ||
        image->Format() != format) {
        frame.image.reset(); // first, so that old and new are never held together
        frame.image = Image::Make(width, height, format);
    }
    return frame.image != nullptr;
}

FrameHeader HeaderFor(const Frame& frame, const PixelRect& touched) {
    const FrameHeader& was = frame.header;
    FrameHeader now = was;
    now.interlaced = false;
    now.bitDepth = frame.image->Format().depth == 64 ? 16 : 8;
    now.color = KindFor(frame, touched);
    if (was.hasTransparentColor && !KeyStillHolds(frame, touched)) {
        now.hasTransparentColor = false;
        now.color = WithAlpha(now.color);
    }
    if (was.color == ColorKind::kPalette)
        now.palette.clear();
    if (now.color == was.color && now.bitDepth == was.bitDepth)
        return now;

    if (now.hasTransparentColor) {
        const Pixel key = KeyPixel(was);
        now.transparentColor = { static_cast<std::uint16_t>(key.red),
                                 static_cast<std::uint16_t>(key.green),
                                 static_cast<std::uint16_t>(key.blue) };
    }
    std::erase_if(now.metadata, [&](FrameChunk& chunk) { return !Translate(chunk, was, now); });
    return now;
}

} // namespace host
