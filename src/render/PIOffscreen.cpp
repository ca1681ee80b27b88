// SPDX-License-Identifier: BSD-3-Clause
#include "render/PIOffscreen.h"

#include <array>
#include <limits>

namespace {

// A value that no host gives, to see what it left alone.
constexpr std::int32_t kUntold = std::numeric_limits<std::int32_t>::min();

std::array<std::int32_t, 4> IndicesByDepth(std::int32_t depth) {
    if (depth == 64)
        return { 0, 2, 4, 6 };
    if (depth == 24)
        return { kUntold, 0, 1, 2 };
    return { 0, 1, 2, 3 };
}

} // namespace

void PIOffscreen::GetChannelIndex(long* a, long* r, long* g, long* b) const {
    std::array<std::int32_t, 4> index { kUntold, kUntold, kUntold, kUntold };
    if (const auto indices = FindLate(&EPIOffscreenProcs::ChannelIndices))
        indices(Image(), &index[0], &index[1], &index[2], &index[3]);
    else
        index = IndicesByDepth(Depth());
    long* const out[] = { a, r, g, b };
    for (std::size_t i = 0; i < index.size(); ++i)
        if (index[i] != kUntold)
            *out[i] = index[i];
}

bool PIOffscreen::Stretch(const PIOffscreen& src) {
    const auto stretch = FindLate(&EPIOffscreenProcs::Stretch);
    if (!stretch || !src.m_object)
        return false;
    stretch(Image(), 0, 0, Width(), Height(), src.Image(), 0, 0, src.Width(), src.Height());
    return true;
}

namespace render {
namespace {

// The farthest place that any image tells: blue of a 64-bit one whose host tells none.
constexpr long kLastPlace = 6;

std::int64_t BytesOf(std::int32_t width, std::int32_t depth) {
    return (std::int64_t { width } * depth + 7) / 8;
}

std::int32_t Place(long index) {
    return index >= 0 && index <= kLastPlace ? static_cast<std::int32_t>(index) : -1;
}

ChannelOrder OrderOf(const PIOffscreen& image, std::int32_t depth) {
    long alpha = -1, red = -1, green = -1, blue = -1;
    image.GetChannelIndex(&alpha, &red, &green, &blue);
    return { depth == 24 ? -1 : Place(alpha), Place(red), Place(green), Place(blue) };
}

} // namespace

LockedPixels::LockedPixels(PIOffscreen& image, PIOffscreen::Access access,
                           PIOffscreenLock::Unlock unlock)
    : m_lock(image, access, unlock) {
    if (!m_lock.IsLocked())
        return;
    width = image.Width();
    height = image.Height();
    depth = image.Depth();
    if (width <= 0 || height <= 0 || depth <= 0)
        return;
    rowBytes = image.RowBytes();
    if (rowBytes <= 0 || rowBytes < BytesOf(width, depth))
        return;
    order = OrderOf(image, depth);
    base = image.BaseAddress();
}

std::ptrdiff_t LockedPixels::UsedBytes() const {
    // No more than rowBytes, so it fits.
    return static_cast<std::ptrdiff_t>(BytesOf(width, depth));
}

} // namespace render
