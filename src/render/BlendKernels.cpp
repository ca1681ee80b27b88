// SPDX-License-Identifier: BSD-3-Clause
// The plain version of the blend, for every layout, and the choice between the versions.
#include "render/BlendKernels.h"

#include <array>
#include <bit>
#include <limits>

namespace render {
namespace {

constexpr std::uint8_t kKey = 0xFE;

// One colour as the destination's channels hold it, in the order red, green, blue.
template <class Channel>
using Color = std::array<Channel, 3>;

// 255 becomes the channel's full value.
template <class Channel>
Channel Widen(std::uint32_t value) {
    return static_cast<Channel>(value * (std::numeric_limits<Channel>::max() / 255u));
}

// d + floor(weight * (s - d) / 2^bits), written so that no term is negative and none exceeds 32
// bits.
template <class Channel>
Channel Mix(Channel d, Channel s, Channel weight) {
    constexpr int kBits = std::numeric_limits<Channel>::digits;
    constexpr std::uint32_t kOne = 1u << kBits;
    return static_cast<Channel>((d * (kOne - weight) + std::uint32_t { s } * weight) >> kBits);
}

template <class Channel>
void MixPixel(const PixelRow<Channel>& row, std::ptrdiff_t pixel, const ChannelOrder& order,
              const Color<Channel>& color, Channel weight, bool replace) {
    const std::array<std::int32_t, 3> places { order.red, order.green, order.blue };
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (!row.Has(pixel, places[i]))
            continue;
        row.Set(pixel, places[i],
                replace ? color[i] : Mix(row.Get(pixel, places[i]), color[i], weight));
    }
    if (row.Has(pixel, order.alpha))
        row.Set(pixel, order.alpha, std::numeric_limits<Channel>::max());
}

template <class Channel>
void BlendRow(const BlendJob& job, const PixelRow<Channel>& row, const std::uint8_t* src) {
    const Color<Channel> text { Widen<Channel>(job.red), Widen<Channel>(job.green),
                                Widen<Channel>(job.blue) };
    const SourceLayout& layout = job.layout;
    const std::ptrdiff_t channels = job.depth / 8 / static_cast<int>(sizeof(Channel));
    for (std::int32_t i = 0; i < job.width; ++i, src += layout.stride) {
        const std::uint8_t red = src[layout.red];
        const std::uint8_t green = src[layout.green];
        const std::uint8_t blue = src[layout.blue];
        if (red == kKey && green == kKey && blue == kKey)
            continue;
        if (job.box) {
            const Color<Channel> own { Widen<Channel>(red), Widen<Channel>(green),
                                       Widen<Channel>(blue) };
            MixPixel(row, i * channels, job.order, own, Widen<Channel>(job.opacity),
                     job.opacity == 255);
        } else {
            // Byte 1 in every layout: glyphs are grey, so any byte of theirs would do. At most 254
            // is reached, so that the fullest glyph leaves 2/256 of what was below it.
            const std::uint32_t weight = (job.opacity * (255u - src[1])) >> 8;
            MixPixel(row, i * channels, job.order, text, Widen<Channel>(weight), false);
        }
    }
}

template <class Channel>
void BlendRows(const BlendJob& job) {
    std::uint8_t* dst = job.dst;
    const std::uint8_t* src = job.src;
    for (std::int32_t j = 0; j < job.height; ++j) {
        BlendRow(job, PixelRow<Channel>(dst, job.dstReach), src);
        if (j + 1 < job.height) {
            dst += job.dstRowBytes;
            src += job.srcRowBytes;
        }
    }
}

// Whether each channel lies inside the pixel, at a place of its own.
bool IsOrdinary(const ChannelOrder& order, int channels) {
    unsigned taken = 0;
    for (const std::int32_t place : { order.red, order.green, order.blue, order.alpha })
        if (place >= 0 && place < channels)
            taken |= 1u << place;
    return std::popcount(taken) == (order.alpha < 0 ? 3 : 4);
}

[[maybe_unused]] bool SuitsVectors(const BlendJob& job) {
    return job.layout == kSourceXrgb32 && IsOrdinary(job.order, job.depth == 24 ? 3 : 4);
}

#if defined(__x86_64__) || defined(__i386__)
constexpr bool kHasVectors = true;
bool MachineHas(BlendVersion version) {
    __builtin_cpu_init();
    return version == BlendVersion::kAvx2 ? __builtin_cpu_supports("avx2") != 0
                                          : __builtin_cpu_supports("sse4.1") != 0;
}
#else
constexpr bool kHasVectors = false;
bool MachineHas(BlendVersion) {
    return false;
}
#endif

BlendVersion FastestVersion() {
    if (HasBlendVersion(BlendVersion::kAvx2))
        return BlendVersion::kAvx2;
    return HasBlendVersion(BlendVersion::kSse41) ? BlendVersion::kSse41 : BlendVersion::kPlain;
}

} // namespace

bool HasBlendVersion(BlendVersion version) {
    return version == BlendVersion::kPlain || MachineHas(version);
}

void BlendText(const BlendJob& job, [[maybe_unused]] BlendVersion version) {
    // Only a machine with vectors has the functions that this would call.
    if constexpr (kHasVectors) {
        if (version != BlendVersion::kPlain && SuitsVectors(job))
            return version == BlendVersion::kAvx2 ? BlendTextAvx2(job) : BlendTextSse41(job);
    }
    if (job.depth == 64)
        BlendRows<std::uint16_t>(job);
    else
        BlendRows<std::uint8_t>(job);
}

void BlendText(const BlendJob& job) {
    static const BlendVersion s_version = FastestVersion();
    BlendText(job, s_version);
}

} // namespace render
