// SPDX-License-Identifier: BSD-3-Clause
// Puts a drawn text into an image: finds the rectangle that both share and has it blended.
#include <algorithm>
#include <cstdint>
#include <optional>

#include "render/BlendKernels.h"
#include "render/CTextRenderer.h"
#include "render/PIOffscreen.h"
#include "render/Rounding.h"

namespace {

using render::BlendJob;
using render::LockedPixels;
using render::SourceLayout;

// The first bit of the three says where the colours lie, and a pixel has four bytes with the last one
// alone or beside another.
std::optional<SourceLayout> LayoutOf(std::uint16_t format) {
    const std::int32_t stride = format & kTextImageXrgb32 ? 4 : 3;
    if (format & kTextImageRgb24)
        return SourceLayout { stride, 0, 1, 2 };
    if (format & kTextImageBgr24)
        return SourceLayout { stride, 2, 1, 0 };
    if (format & kTextImageXrgb32)
        return render::kSourceXrgb32;
    return std::nullopt;
}

// What is left of a side of the text between the two ends of the image.
//
//   image        0 |------------------------| size
//   text    at |-----------------|  at + length
//               skipped ->|-----| count
struct Clipped {
    std::int64_t skipped;
    std::int64_t count;
};
Clipped Clip(std::int64_t at, std::int64_t length, std::int64_t size) {
    const std::int64_t first = std::max<std::int64_t>(0, -at);
    return { first, std::min(length, size - at) - first };
}

const std::uint8_t* SourceRow(const _RTEXTIMAGE_INFO& info, std::int64_t row) {
    const bool topDown = (info.format & kTextImageTopDown) != 0;
    return info.pixels + (topDown ? row : info.height - 1 - row) * info.rowBytes;
}

// The rectangle, if there is any of it, in the terms of the kernels.
std::optional<BlendJob> PlaceText(const LockedPixels& image, const _RTEXTIMAGE_INFO& info,
                                  const SourceLayout& layout, std::int64_t x, std::int64_t y) {
    const Clipped columns = Clip(x, info.width, image.width);
    const Clipped rows = Clip(y, info.height, image.height);
    if (columns.count <= 0 || rows.count <= 0)
        return std::nullopt;
    const std::int64_t left = (x + columns.skipped) * (image.depth / 8);
    BlendJob job;
    job.dst = image.Row(static_cast<std::int32_t>(y + rows.skipped)) + left;
    job.dstRowBytes = image.rowBytes;
    job.dstReach = static_cast<std::ptrdiff_t>(image.UsedBytes() - left);
    job.depth = image.depth;
    job.order = image.order;
    job.src = SourceRow(info, rows.skipped) + columns.skipped * layout.stride;
    job.srcRowBytes = (info.format & kTextImageTopDown) != 0 ? info.rowBytes : -info.rowBytes;
    job.layout = layout;
    job.width = static_cast<std::int32_t>(columns.count);
    job.height = static_cast<std::int32_t>(rows.count);
    return job;
}

void SetColors(BlendJob& job, const _TEXTPARAM& param) {
    job.red = static_cast<std::uint8_t>(param.crText);
    job.green = static_cast<std::uint8_t>(param.crText >> 8);
    job.blue = static_cast<std::uint8_t>(param.crText >> 16);
    job.opacity = static_cast<std::uint8_t>(piMulDiv(std::clamp(param.nOpacity, 0, 100), 255, 100));
    job.box = (param.dwFlags & TEXT_BOX) != 0;
}

bool IsKnownDepth(std::int32_t depth) {
    return depth == 24 || depth == 32 || depth == 64;
}

} // namespace

void CTextRenderer::CopyTextStringImage(PIOffscreen* image, _RTEXTIMAGE_INFO* info,
                                        _TEXTPARAM* param, long x, long y) {
    const auto layout = LayoutOf(info->format);
    const LockedPixels pixels(*image);
    if (!layout || !info->pixels || !pixels || !IsKnownDepth(pixels.depth))
        return;
    if (auto job = PlaceText(pixels, *info, *layout, SaturateToInt32(x), SaturateToInt32(y))) {
        SetColors(*job, *param);
        render::BlendText(*job);
    }
}
