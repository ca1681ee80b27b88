// SPDX-License-Identifier: BSD-3-Clause
#include "host/Image.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

#include "host/Ledger.h"

namespace host {

bool PixelFormat::IsValid() const {
    if (depth != 24 && depth != 32 && depth != 64)
        return false;
    const auto channels = Channels();
    const auto isPlace = [channels](std::int32_t index) { return index >= 0 && index < channels; };
    const auto hasAlpha = alpha != -1;
    if (!isPlace(red) || !isPlace(green) || !isPlace(blue) || (hasAlpha && !isPlace(alpha)))
        return false;
    const auto places = 1U << red | 1U << green | 1U << blue | (hasAlpha ? 1U << alpha : 0U);
    return std::popcount(places) == (hasAlpha ? 4 : 3);
}

Image::Image() {
    Ledger::Get().Lend(Lent::kImage);
}

Image::~Image() {
    auto& ledger = Ledger::Get();
    ledger.Return(Lent::kImage);
    if (m_locks == 0)
        return;
    ledger.Return(Lent::kImageLock, m_locks);
    ledger.RecordMisuse("an image ended with ", m_locks, " locks");
}

std::unique_ptr<Image> Image::Make(std::int32_t width, std::int32_t height, PixelFormat format,
                                   std::int32_t rowPadding) {
    auto image = MakeEmpty();
    if (!image->Allocate(width, height, format, rowPadding))
        return nullptr;
    return image;
}

bool Image::Allocate(std::int32_t width, std::int32_t height, PixelFormat format,
                     std::int32_t rowPadding) {
    if (m_locks > 0 || width < 1 || height < 1 || rowPadding < 0 || !format.IsValid())
        return false;
    const auto rowBytes = std::int64_t { width } * format.BytesPerPixel() + rowPadding;
    if (rowBytes > std::numeric_limits<std::int32_t>::max() ||
        height > std::numeric_limits<std::ptrdiff_t>::max() / rowBytes)
        return false;
    // calloc has zeroed pages at hand for large images without writing them.
    auto* const pixels = static_cast<std::uint8_t*>(
        std::calloc(static_cast<std::size_t>(height), static_cast<std::size_t>(rowBytes)));
    if (!pixels)
        return false;
    m_pixels.reset(pixels);
    m_width = width;
    m_height = height;
    m_rowBytes = static_cast<std::int32_t>(rowBytes);
    m_format = format;
    return true;
}

std::unique_ptr<Image> Image::MakeEmpty() {
    return std::unique_ptr<Image>(new Image);
}

std::span<std::uint8_t> Image::Bytes() {
    return { m_pixels.get(),
             static_cast<std::size_t>(m_rowBytes) * static_cast<std::size_t>(m_height) };
}

std::span<const std::uint8_t> Image::Bytes() const {
    return { m_pixels.get(),
             static_cast<std::size_t>(m_rowBytes) * static_cast<std::size_t>(m_height) };
}

bool Image::Lock(bool writable) {
    if (!m_pixels)
        return false;
    ++m_locks;
    m_writable |= writable;
    Ledger::Get().Lend(Lent::kImageLock);
    return true;
}

void Image::Unlock() {
    if (m_locks == 0) {
        Ledger::Get().RecordMisuse("an image was unlocked that is not locked");
        return;
    }
    Ledger::Get().Return(Lent::kImageLock);
    if (--m_locks == 0)
        m_writable = false;
}

void Image::MoveTo(std::int32_t x, std::int32_t y) {
    m_cursorX = x;
    m_cursorY = y;
}

void Image::Next() {
    if (m_cursorX + std::int64_t { 1 } < m_width) {
        ++m_cursorX;
        return;
    }
    m_cursorX = 0;
    m_cursorY = std::min(m_cursorY, std::numeric_limits<std::int32_t>::max() - 1) + 1;
}

std::uint8_t* Image::CursorPixel(const char* call) const {
    if (m_cursorX >= 0 && m_cursorX < m_width && m_cursorY >= 0 && m_cursorY < m_height)
        return RowStart(m_cursorY) +
               static_cast<std::ptrdiff_t>(m_cursorX) * m_format.BytesPerPixel();
    Ledger::Get().RecordMisuse(call, " at (", m_cursorX, ", ", m_cursorY, ") of an image of ",
                               m_width, " x ", m_height);
    return nullptr;
}

bool Image::MayWrite(const char* call) const {
    if (IsLockedForWriting())
        return true;
    Ledger::Get().RecordMisuse(call, " on an image that is not locked for writing");
    return false;
}

std::uint8_t Image::Channel8(const std::uint8_t* pixel, std::int32_t index) const {
    if (m_format.depth != 64)
        return pixel[index];
    std::uint16_t value;
    std::memcpy(&value, pixel + std::ptrdiff_t { 2 } * index, sizeof value);
    return static_cast<std::uint8_t>(value >> 8);
}

void Image::SetChannel8(std::uint8_t* pixel, std::int32_t index, std::uint8_t value) const {
    if (m_format.depth != 64) {
        pixel[index] = value;
        return;
    }
    const auto wide = static_cast<std::uint16_t>(value * 257);
    std::memcpy(pixel + std::ptrdiff_t { 2 } * index, &wide, sizeof wide);
}

std::uint32_t Image::GetPixel() const {
    const auto* pixel = CursorPixel("get pixel");
    if (!pixel)
        return 0;
    std::uint32_t packed = 0;
    int shift = 0;
    for (const auto index : { m_format.red, m_format.green, m_format.blue, m_format.alpha }) {
        if (index >= 0)
            packed |= std::uint32_t { Channel8(pixel, index) } << shift;
        shift += 8;
    }
    return packed;
}

void Image::SetPixel(std::uint32_t packed) {
    auto* pixel = CursorPixel("set pixel");
    if (!pixel || !MayWrite("set pixel"))
        return;
    for (const auto index : { m_format.red, m_format.green, m_format.blue, m_format.alpha }) {
        if (index >= 0)
            SetChannel8(pixel, index, static_cast<std::uint8_t>(packed));
        packed >>= 8;
    }
}

std::uint32_t Image::GetRawPixel() const {
    const auto* pixel = CursorPixel("get raw pixel");
    std::uint32_t raw = 0;
    for (std::int32_t i = 0; pixel && i < m_format.Channels(); ++i)
        raw |= std::uint32_t { Channel8(pixel, i) } << (8 * i);
    return raw;
}

void Image::SetRawPixel(std::uint32_t raw) {
    auto* pixel = CursorPixel("set raw pixel");
    if (!pixel || !MayWrite("set raw pixel"))
        return;
    for (std::int32_t i = 0; i < m_format.Channels(); ++i)
        SetChannel8(pixel, i, static_cast<std::uint8_t>(raw >> (8 * i)));
}

} // namespace host
