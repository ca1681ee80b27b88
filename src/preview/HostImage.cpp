// SPDX-License-Identifier: BSD-3-Clause
#include "preview/HostImage.h"

#include <algorithm>

namespace {

constexpr std::int32_t kDepth = 32;
constexpr double kDotsPerInch = 144.0;

using render::LockedPixels;
using render::PixelRow;

// The channel as 8 bits; full where the image has none.
std::uint8_t Channel8(const LockedPixels& image, std::int32_t y, std::ptrdiff_t x,
                      std::int32_t place) {
    const std::ptrdiff_t bytes = image.UsedBytes();
    if (image.depth == 64) {
        const PixelRow<std::uint16_t> row(image.Row(y), bytes);
        return row.Has(x * 4, place) ? static_cast<std::uint8_t>(row.Get(x * 4, place) >> 8) : 255;
    }
    const PixelRow<std::uint8_t> row(image.Row(y), bytes);
    const std::ptrdiff_t first = x * (image.depth / 8);
    return row.Has(first, place) ? row.Get(first, place) : 255;
}

void ConvertRow(const LockedPixels& dst, const LockedPixels& src, std::int32_t y) {
    const PixelRow<std::uint8_t> row(dst.Row(y), dst.UsedBytes());
    const std::int32_t width = std::min(dst.width, src.width);
    const auto put = [&](std::ptrdiff_t x, std::int32_t to, std::int32_t from) {
        if (row.Has(x * 4, to))
            row.Set(x * 4, to, Channel8(src, y, x, from));
    };
    for (std::ptrdiff_t x = 0; x < width; ++x) {
        put(x, dst.order.red, src.order.red);
        put(x, dst.order.green, src.order.green);
        put(x, dst.order.blue, src.order.blue);
        put(x, dst.order.alpha, src.depth == 24 ? -1 : src.order.alpha);
    }
}

void Convert(PIOffscreen& dst, PIOffscreen& src) {
    const LockedPixels from(src, PIOffscreen::Access::kRead);
    const LockedPixels to(dst);
    if (!from || !to || to.depth != kDepth)
        return;
    for (std::int32_t y = 0; y < std::min(to.height, from.height); ++y)
        ConvertRow(to, from, y);
}

} // namespace

std::unique_ptr<PIOffscreen> MakeHostImage(const _EPIRECORD& record, std::int32_t width,
                                           std::int32_t height) {
    // Copies, as the packed record gives no address that may be kept.
    const auto* objects = record.pObjectProcs;
    const auto* images = record.pOffscreenProcs;
    if (!objects || !objects->Create)
        return nullptr;
    auto* const object = static_cast<EPIImageRef>(objects->Create(epiObjectImage));
    if (!object)
        return nullptr;
    auto image = std::make_unique<PIOffscreen>(objects, images, object, epiObjectImage);
    if (!image->Allocate(width, height, kDepth, kDotsPerInch))
        return nullptr;
    return image;
}

void CopyHostImage(PIOffscreen& dst, PIOffscreen& src) {
    // The host's own copy is for images of one depth.
    if (src.Depth() == dst.Depth())
        dst.Copy(0, 0, std::min(dst.Width(), src.Width()), std::min(dst.Height(), src.Height()),
                 src, 0, 0);
    else
        Convert(dst, src);
}
