// SPDX-License-Identifier: BSD-3-Clause
// A table of the 256 possible pixels, and vectors that compute them.
#include "platform/drawing/Coloring.h"

#include <array>
#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
#define TELOP_AVX2 __attribute__((target("avx2")))
#endif

namespace platform {
namespace {

Pixel MixPixels(const TwoColors& colors, std::uint8_t coverage) {
    Pixel mixed;
    for (std::size_t i = 0; i < mixed.size(); ++i)
        mixed[i] = Mix(colors.ground[i], colors.text[i], coverage);
    return mixed;
}

void ColorPlain(const ColorArea& area, const TwoColors& colors) {
    std::array<Pixel, 256> table;
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = MixPixels(colors, static_cast<std::uint8_t>(i));
    for (std::int64_t y = 0; y < area.height; ++y) {
        std::uint8_t* const pixels = area.pixels + y * area.pixelStride;
        const std::uint8_t* const coverage = area.coverage + y * area.coverageStride;
        for (std::int64_t x = 0; x < area.width; ++x)
            std::memcpy(pixels + x * 4, table[coverage[x]].data(), sizeof(Pixel));
    }
}

#if defined(__x86_64__)

// Div255(ground * (255 - coverage) + text * coverage) in 16-bit lanes, with the ground's part and
// the rounding taken out of the loop. The product may wrap, the sum comes back into its range:
//
//   ground * (255 - coverage) + text * coverage + 128  =  start + step * coverage   modulo 65536
struct Lanes {
    __m256i start; // ground * 255 + 128
    __m256i step;  // text - ground
};

TELOP_AVX2 inline __m256i Mix16(const Lanes& lanes, __m256i coverage) {
    const __m256i sum = _mm256_add_epi16(lanes.start, _mm256_mullo_epi16(lanes.step, coverage));
    return _mm256_srli_epi16(_mm256_add_epi16(sum, _mm256_srli_epi16(sum, 8)), 8);
}

TELOP_AVX2 inline __m256i Mix32(const Lanes& lanes, __m256i coverage) {
    const __m256i zero = _mm256_setzero_si256();
    return _mm256_packus_epi16(Mix16(lanes, _mm256_unpacklo_epi8(coverage, zero)),
                               Mix16(lanes, _mm256_unpackhi_epi8(coverage, zero)));
}

TELOP_AVX2 inline __m256i Widen(const Pixel& color) {
    const auto word = static_cast<int>(std::bit_cast<std::uint32_t>(color));
    return _mm256_unpacklo_epi8(_mm256_set1_epi32(word), _mm256_setzero_si256());
}

// For channels in the order of memory, again and again.
TELOP_AVX2 inline Lanes LanesOf(const TwoColors& colors) {
    const __m256i ground = Widen(colors.ground);
    const __m256i full = _mm256_mullo_epi16(ground, _mm256_set1_epi16(255));
    return { _mm256_add_epi16(full, _mm256_set1_epi16(128)),
             _mm256_sub_epi16(Widen(colors.text), ground) };
}

// Pixels 8 * part to 8 * part + 7 of 32 bytes, each byte put where the pattern says.
template <int part>
TELOP_AVX2 inline __m256i Spread(__m256i bytes, __m256i pattern) {
    return _mm256_shuffle_epi8(_mm256_permute4x64_epi64(bytes, part * 0x55), pattern);
}

TELOP_AVX2 inline void Store(std::uint8_t* to, __m256i pixels) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), pixels);
}

TELOP_AVX2 inline void Color32(std::uint8_t* pixels, const std::uint8_t* coverage,
                               const Lanes& lanes) {
    const __m256i toChannels =
        _mm256_setr_epi8(0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3, // the low half's
                         4, 4, 4, 4, 5, 5, 5, 5, 6, 6, 6, 6, 7, 7, 7, 7);
    const __m256i some = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(coverage));
    Store(pixels, Mix32(lanes, Spread<0>(some, toChannels)));
    Store(pixels + 32, Mix32(lanes, Spread<1>(some, toChannels)));
    Store(pixels + 64, Mix32(lanes, Spread<2>(some, toChannels)));
    Store(pixels + 96, Mix32(lanes, Spread<3>(some, toChannels)));
}

// The last pixels of a row are done with those before them once more.
TELOP_AVX2 void ColorRow(std::uint8_t* pixels, const std::uint8_t* coverage, std::int64_t width,
                         const Lanes& lanes) {
    for (std::int64_t x = 0; x + kColorVector < width; x += kColorVector)
        Color32(pixels + x * 4, coverage + x, lanes);
    const std::int64_t last = width - kColorVector;
    Color32(pixels + last * 4, coverage + last, lanes);
}

TELOP_AVX2 void ColorAvx2(const ColorArea& area, const TwoColors& colors) {
    if (area.width < kColorVector)
        return ColorPlain(area, colors);
    const Lanes lanes = LanesOf(colors);
    for (std::int64_t y = 0; y < area.height; ++y) {
        ColorRow(area.pixels + y * area.pixelStride, area.coverage + y * area.coverageStride,
                 area.width, lanes);
    }
}

#endif

} // namespace

void BlendPixels(std::uint8_t* pixels, const std::uint8_t* coverage, std::int64_t count,
                 Pixel color) {
    for (std::int64_t i = 0; i < count; ++i) {
        if (coverage[i] == 0) // beside the strokes, as most of a text's box is
            continue;
        std::uint8_t* const pixel = pixels + i * 4;
        for (std::size_t channel = 0; channel < color.size(); ++channel)
            pixel[channel] = Mix(pixel[channel], color[channel], coverage[i]);
    }
}

ColorWay ColorWayAt(int index) {
#if defined(__x86_64__)
    if (index == 1)
        return { "AVX2", __builtin_cpu_supports("avx2") ? ColorAvx2 : nullptr };
#endif
    return { "plain", index == 0 ? ColorPlain : nullptr };
}

void ColorPixels(const ColorArea& area, const TwoColors& colors) {
    static const ColorFunction widest = [] {
        const ColorFunction vectors = ColorWayAt(kColorWays - 1).function;
        return vectors ? vectors : ColorPlain;
    }();
    widest(area, colors);
}

} // namespace platform
