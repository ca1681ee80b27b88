// SPDX-License-Identifier: BSD-3-Clause
// A table of the 256 possible pixels, and vectors that compute them.
#include "platform/drawing/Coloring.h"

#include <array>
#include <cstring>

#include "platform/drawing/Blend.h"

#if defined(__x86_64__)
#include <immintrin.h>
#define TELOP_AVX2 __attribute__((target("avx2")))
#endif

namespace platform {
namespace {

Pixel MixPixels(const TwoColors& colors, std::uint8_t coverage) {
    Pixel mixed;
    for (std::size_t i = 0; i < mixed.size(); ++i) {
        mixed[i] = Mix(colors.ground[i], colors.text[i], coverage);
    }
    return mixed;
}

void ColorPlain(const ColorArea& area, const TwoColors& colors) {
    std::array<Pixel, 256> table;
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = MixPixels(colors, static_cast<std::uint8_t>(i));
    }
    for (std::int64_t y = 0; y < area.height; ++y) {
        std::uint8_t* const pixels = area.pixels + y * area.pixelStride;
        const std::uint8_t* const coverage = area.coverage + y * area.coverageStride;
        for (std::int64_t x = 0; x < area.width; ++x) {
            std::memcpy(pixels + x * 4, table[coverage[x]].data(), sizeof(Pixel));
        }
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

// Red, green and blue are equal in both colours: one byte is computed for each pixel.
TELOP_AVX2 inline void ColorGrey32(std::uint8_t* pixels, __m256i coverage, const Lanes& lanes) {
    const __m256i toColors =
        _mm256_setr_epi8(-1, 0, 0, 0, -1, 1, 1, 1, -1, 2, 2, 2, -1, 3, 3, 3, // the low half's
                         -1, 4, 4, 4, -1, 5, 5, 5, -1, 6, 6, 6, -1, 7, 7, 7);
    const __m256i greys = Mix32(lanes, coverage);
    Store(pixels, Spread<0>(greys, toColors));
    Store(pixels + 32, Spread<1>(greys, toColors));
    Store(pixels + 64, Spread<2>(greys, toColors));
    Store(pixels + 96, Spread<3>(greys, toColors));
}

TELOP_AVX2 inline void ColorAny32(std::uint8_t* pixels, __m256i coverage, const Lanes& lanes) {
    const __m256i toChannels =
        _mm256_setr_epi8(0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3, // the low half's
                         4, 4, 4, 4, 5, 5, 5, 5, 6, 6, 6, 6, 7, 7, 7, 7);
    Store(pixels, Mix32(lanes, Spread<0>(coverage, toChannels)));
    Store(pixels + 32, Mix32(lanes, Spread<1>(coverage, toChannels)));
    Store(pixels + 64, Mix32(lanes, Spread<2>(coverage, toChannels)));
    Store(pixels + 96, Mix32(lanes, Spread<3>(coverage, toChannels)));
}

bool IsGrey(const Pixel& color) {
    return color[0] == 0 && color[1] == color[2] && color[2] == color[3];
}

// A grey with its shade in all four bytes.
Pixel Shade(const Pixel& grey) {
    return { grey[1], grey[1], grey[1], grey[1] };
}

TELOP_AVX2 void ColorAvx2(const ColorArea& area, const TwoColors& colors) {
    const bool grey = IsGrey(colors.ground) && IsGrey(colors.text);
    const Lanes lanes =
        LanesOf(grey ? TwoColors { Shade(colors.ground), Shade(colors.text) } : colors);
    const __m256i ground =
        _mm256_set1_epi32(static_cast<int>(std::bit_cast<std::uint32_t>(colors.ground)));
    for (std::int64_t y = 0; y < area.height; ++y) {
        std::uint8_t* const pixels = area.pixels + y * area.pixelStride;
        const std::uint8_t* const coverage = area.coverage + y * area.coverageStride;
        std::int64_t x = 0;
        for (; x + 32 <= area.width; x += 32) {
            const __m256i some = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(coverage + x));
            std::uint8_t* const to = pixels + x * 4;
            if (_mm256_testz_si256(some, some)) {
                for (std::int64_t part = 0; part < 4; ++part) {
                    Store(to + part * 32, ground);
                }
            } else if (grey) {
                ColorGrey32(to, some, lanes);
            } else {
                ColorAny32(to, some, lanes);
            }
        }
        for (; x < area.width; ++x) {
            std::memcpy(pixels + x * 4, MixPixels(colors, coverage[x]).data(), sizeof(Pixel));
        }
    }
}

#endif

// One long row has one odd end.
ColorArea OneRow(const ColorArea& area) {
    return { area.pixels, 0, area.coverage, 0, area.width * area.height, 1 };
}

} // namespace

ColorWay ColorWayAt(int index) {
#if defined(__x86_64__)
    if (index == 1) {
        return { "AVX2", __builtin_cpu_supports("avx2") ? ColorAvx2 : nullptr };
    }
#endif
    return { "plain", index == 0 ? ColorPlain : nullptr };
}

void ColorPixels(const ColorArea& area, const TwoColors& colors) {
    static const ColorFunction widest = [] {
        const ColorFunction vectors = ColorWayAt(kColorWays - 1).function;
        return vectors ? vectors : ColorPlain;
    }();
    const bool gapless = area.pixelStride == area.width * 4 && area.coverageStride == area.width;
    widest(gapless ? OneRow(area) : area, colors);
}

} // namespace platform
