// SPDX-License-Identifier: BSD-3-Clause
// A frame in memory, in any of the pixel layouts that the plug-in boundary knows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>

#include <epi/epi.h>

#include "host/Reference.h"

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
    std::int32_t Channels() const { return depth == 24 ? 3 : 4; }
    // A known depth, and each channel in a place of its own within the pixel.
    bool IsValid() const;
    bool operator==(const PixelFormat&) const = default;
};

inline constexpr PixelFormat kRgb24 { 24, -1, 0, 1, 2 };
inline constexpr PixelFormat kArgb32 { 32, 0, 1, 2, 3 };
inline constexpr PixelFormat kRgba32 { 32, 3, 0, 1, 2 };
inline constexpr PixelFormat kArgb64 { 64, 0, 1, 2, 3 };
inline constexpr PixelFormat kRgba64 { 64, 3, 0, 1, 2 };

// Top row first; rows lie RowBytes() apart, which may exceed width * BytesPerPixel(); 16-bit
// channels are in the machine's order; alpha is straight. Owned by one thread at a time.
class Image : public Referenced<Image, EPIImageRef, RefKind::kImage> {
public:
    // Nothing when a side is below 1, the format is none of the boundary's, rowPadding (bytes
    // behind each row) is below 0, or there is no memory. The pixels and the padding are zero.
    static std::unique_ptr<Image> Make(std::int32_t width, std::int32_t height, PixelFormat format,
                                       std::int32_t rowPadding = 0);
    // An image without pixels, as the object table makes it.
    static std::unique_ptr<Image> MakeEmpty();
    // Gives the image new pixels, all zero; false, and nothing changed, as with Make, or while it is
    // locked.
    bool Allocate(std::int32_t width, std::int32_t height, PixelFormat format,
                  std::int32_t rowPadding = 0);
    ~Image();

    std::int32_t Width() const { return m_width; }
    std::int32_t Height() const { return m_height; }
    const PixelFormat& Format() const { return m_format; }
    std::int32_t RowBytes() const { return m_rowBytes; }
    // One row without its padding.
    std::span<std::uint8_t> Row(std::int32_t y) { return { RowStart(y), RowLength() }; }
    std::span<const std::uint8_t> Row(std::int32_t y) const { return { RowStart(y), RowLength() }; }
    // The whole buffer, padding included.
    std::span<std::uint8_t> Bytes();
    std::span<const std::uint8_t> Bytes() const;

    // Locks count. False, and no lock, for an image without pixels.
    bool Lock(bool writable);
    void Unlock();
    std::int32_t Locks() const { return m_locks; }
    bool IsLockedForWriting() const { return m_locks > 0 && m_writable; }

    // The cursor may stand anywhere; a pixel outside the image reads as 0 and is not written, with
    // a note in the ledger.
    void MoveTo(std::int32_t x, std::int32_t y);
    void Next();
    // Red in bits 0-7, green in 8-15, blue in 16-23, alpha (0 without one) in 24-31; of 16-bit
    // channels the high byte, and written ones become byte * 257.
    std::uint32_t GetPixel() const;
    void SetPixel(std::uint32_t packed);
    // The pixel's channels in their own order, first channel in bits 0-7; of 16-bit channels the
    // high byte, and written ones become byte * 257. So a raw pixel of 64 bits is not exact.
    std::uint32_t GetRawPixel() const;
    void SetRawPixel(std::uint32_t raw);

private:
    struct Free {
        void operator()(std::uint8_t* bytes) const { std::free(bytes); }
    };
    Image();

    std::uint8_t* RowStart(std::int32_t y) const {
        return m_pixels.get() + static_cast<std::ptrdiff_t>(y) * m_rowBytes;
    }
    std::size_t RowLength() const {
        return static_cast<std::size_t>(m_width) *
               static_cast<std::size_t>(m_format.BytesPerPixel());
    }
    std::uint8_t* CursorPixel(const char* call) const;
    bool MayWrite(const char* call) const;
    std::uint8_t Channel8(const std::uint8_t* pixel, std::int32_t index) const;
    void SetChannel8(std::uint8_t* pixel, std::int32_t index, std::uint8_t value) const;

    std::int32_t m_width = 0;
    std::int32_t m_height = 0;
    std::int32_t m_rowBytes = 0;
    PixelFormat m_format;
    std::unique_ptr<std::uint8_t[], Free> m_pixels;
    std::int32_t m_cursorX = 0;
    std::int32_t m_cursorY = 0;
    std::int32_t m_locks = 0;
    bool m_writable = false; // one of the locks in force was taken for writing
};

struct Area {
    std::int32_t x, y, width, height;
};

// Copies an area of src to (x, y) of dst, clipped to both images; they may be one image, and the
// areas may overlap. Channels go where dst's format has them; an alpha that src lacks is full.
// Images of different depths are left alone, with a note in the ledger.
void CopyPixels(Image& dst, std::int32_t x, std::int32_t y, const Image& src, Area from);

// Scales an area of src onto an area of dst; what lies outside dst is not drawn, and pixels outside
// src count as its nearest ones. Each result is the mean of the source pixels it covers, weighted
// by how much of them it covers, and between two pixel centres when it is smaller than they are;
// colours count by their alpha. src may be dst. Areas without pixels and images of different depths
// are left alone, with a note for the latter.
void StretchPixels(Image& dst, Area to, const Image& src, Area from);

} // namespace host
