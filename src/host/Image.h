// SPDX-License-Identifier: BSD-3-Clause
// A frame in memory, in any of the pixel layouts that the plug-in boundary knows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include <epi/epi.h>

namespace host {

// Where the channels lie in a pixel, counted in channels.
struct PixelFormat {
    std::int32_t depth = 32; // bits: 24, 32 or 64
    std::int32_t alpha = 0;  // -1: none, as in 24 bits
    std::int32_t red = 1;
    std::int32_t green = 2;
    std::int32_t blue = 3;

    std::int32_t BytesPerPixel() const { return depth / 8; }
    std::int32_t BytesPerChannel() const { return depth == 64 ? 2 : 1; }
    bool operator==(const PixelFormat&) const = default;
};

inline constexpr PixelFormat kRgb24 { 24, -1, 0, 1, 2 };
inline constexpr PixelFormat kArgb32 { 32, 0, 1, 2, 3 };
inline constexpr PixelFormat kRgba32 { 32, 3, 0, 1, 2 };
inline constexpr PixelFormat kArgb64 { 64, 0, 1, 2, 3 };
inline constexpr PixelFormat kRgba64 { 64, 3, 0, 1, 2 };

// Top row first; rows lie RowBytes() apart, which may exceed width * BytesPerPixel(); 16-bit
// channels are in the machine's order. Owned by one thread at a time.
class Image {
public:
    // Nothing when a side is below 1, the format is none of the boundary's, or there is no memory.
    // The pixels are zero.
    static std::unique_ptr<Image> Make(std::int32_t width, std::int32_t height, PixelFormat format,
                                       std::int32_t rowPadding = 0);
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;
    ~Image();

    std::int32_t Width() const { return m_width; }
    std::int32_t Height() const { return m_height; }
    const PixelFormat& Format() const { return m_format; }
    std::int32_t RowBytes() const { return m_rowBytes; }
    // One row without its padding.
    std::span<std::uint8_t> Row(std::int32_t y);
    std::span<const std::uint8_t> Row(std::int32_t y) const;

    // The reference that goes into a record; good as long as the image.
    EPIImageRef Ref();
    static Image* FromRef(EPIImageRef ref);

private:
    friend struct ImageProcs;
    Image() = default;

    std::int32_t m_width = 0;
    std::int32_t m_height = 0;
    std::int32_t m_rowBytes = 0;
    PixelFormat m_format;
    std::unique_ptr<std::uint8_t[]> m_pixels;
    std::int32_t m_cursorX = 0;
    std::int32_t m_cursorY = 0;
    std::int32_t m_locks = 0;
};

} // namespace host
