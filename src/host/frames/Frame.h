// SPDX-License-Identifier: BSD-3-Clause
// A frame as files and streams carry it: its pixels, and what the picture was beside them, so that it
// can be written again as the same kind of picture.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/Image.h"

namespace host {

// Half open: left and top belong to it, right and bottom do not. Empty when a side is not positive.
struct PixelRect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
};

// The values are those of PNG's colour type.
enum class ColorKind : std::uint8_t {
    kGrey = 0,
    kRgb = 2,
    kPalette = 3,
    kGreyAlpha = 4,
    kRgba = 6
};

// How many values a pixel has in the file: 1 to 4.
std::size_t ChannelsOf(ColorKind kind);

// One ancillary part of a PNG file, kept as it was.
struct FrameChunk {
    enum class Place : std::uint8_t { kBeforePalette, kBeforePixels, kAfterPixels };

    std::array<char, 4> type {};
    Place place = Place::kBeforePixels;
    std::vector<std::uint8_t> data;
};

// What a frame was in its file or stream.
struct FrameHeader {
    ColorKind color = ColorKind::kRgb;
    std::int32_t bitDepth = 8; // of one channel or index: 1, 2, 4, 8 or 16
    bool interlaced = false;
    // The one colour that counts as transparent, in a grey or RGB picture without alpha; the
    // image has it as alpha 0. In the picture's own depth; grey uses the first value.
    bool hasTransparentColor = false;
    std::array<std::uint16_t, 3> transparentColor {};
    // Red, green and blue of each colour of a palette picture; in an RGB picture, colours that it
    // suggests to displays that cannot show all.
    std::vector<std::uint8_t> palette;
    std::vector<FrameChunk> metadata; // in the file's order
};

// The image is kRgb24 for 8-bit pictures without transparency, kRgba32 for those with any, and
// kRgba64 for 16 bits (opaque where the picture has no alpha). Grey has three equal channels.
// A frame may be read into again and again: an image of the right size is used once more.
struct Frame {
    std::unique_ptr<Image> image;
    FrameHeader header;
};

// Whether a frame may take so many bytes of memory; false with the reason.
using Room = std::function<bool(std::uint64_t bytes, std::string& why)>;

// Gives the frame an image of this size and format, the one it has if that fits; its pixels are
// unspecified. False: there is no memory.
bool PrepareImage(Frame& frame, std::int32_t width, std::int32_t height, const PixelFormat& format);

// The kind of picture that holds the image's pixels now: the header's kind while the pixels in
// `touched`, the only ones that may differ from what was read, still fit in it. Grey that was
// coloured becomes RGB; a palette, and a transparent colour that no longer says it all, become RGB
// or RGB with alpha; fewer than 8 bits become 8. The metadata is brought along.
FrameHeader HeaderFor(const Frame& frame, const PixelRect& touched);

} // namespace host
