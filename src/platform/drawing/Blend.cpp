// SPDX-License-Identifier: BSD-3-Clause
// Blends one pixel, four pixels and eight pixels at once. Glyphs are mostly empty beside their
// strokes, so groups without coverage are passed over; a test for full ones costs more than it saves.
#include "platform/drawing/Blend.h"

#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
#define TELOP_AVX2 __attribute__((target("avx2")))
#endif

namespace platform {
namespace {

void BlendRowPlain(std::uint8_t* pixels, const std::uint8_t* coverage, std::int64_t count,
                   Pixel color) {
    for (std::int64_t i = 0; i < count; ++i) {
        for (int channel = 0; channel < 4; ++channel) {
            std::uint8_t& under = pixels[i * 4 + channel];
            under = Mix(under, color[channel], coverage[i]);
        }
    }
}

void BlendPlain(const BlendArea& area, Pixel color) {
    for (std::int64_t y = 0; y < area.height; ++y) {
        BlendRowPlain(area.pixels + y * area.pixelStride, area.coverage + y * area.coverageStride,
                      area.width, color);
    }
}

#if defined(__x86_64__)

// The vector ways compute Div255(under * (255 - coverage) + color * coverage) in 16-bit lanes, none
// of which overflows: the sum is at most 65025, with 128 and its own high byte 65407.

__m128i Mix8(__m128i under, __m128i color, __m128i coverage) {
    const __m128i rest = _mm_sub_epi16(_mm_set1_epi16(255), coverage);
    const __m128i sum =
        _mm_add_epi16(_mm_add_epi16(_mm_mullo_epi16(under, rest), _mm_mullo_epi16(color, coverage)),
                      _mm_set1_epi16(128));
    return _mm_srli_epi16(_mm_add_epi16(sum, _mm_srli_epi16(sum, 8)), 8);
}

void BlendSse2(const BlendArea& area, Pixel color) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i wide = _mm_unpacklo_epi8(
        _mm_set1_epi32(static_cast<int>(std::bit_cast<std::uint32_t>(color))), zero);
    for (std::int64_t y = 0; y < area.height; ++y) {
        std::uint8_t* const pixels = area.pixels + y * area.pixelStride;
        const std::uint8_t* const coverage = area.coverage + y * area.coverageStride;
        std::int64_t x = 0;
        for (; x + 4 <= area.width; x += 4) {
            std::uint32_t four = 0;
            std::memcpy(&four, coverage + x, sizeof four);
            if (four == 0) {
                continue;
            }
            auto* const place = reinterpret_cast<__m128i*>(pixels + x * 4);
            const __m128i under = _mm_loadu_si128(place);
            const __m128i packed = _mm_cvtsi32_si128(static_cast<int>(four));
            const __m128i twice = _mm_unpacklo_epi8(packed, packed);
            const __m128i each = _mm_unpacklo_epi16(twice, twice); // each byte four times
            const __m128i low =
                Mix8(_mm_unpacklo_epi8(under, zero), wide, _mm_unpacklo_epi8(each, zero));
            const __m128i high =
                Mix8(_mm_unpackhi_epi8(under, zero), wide, _mm_unpackhi_epi8(each, zero));
            _mm_storeu_si128(place, _mm_packus_epi16(low, high));
        }
        BlendRowPlain(pixels + x * 4, coverage + x, area.width - x, color);
    }
}

TELOP_AVX2 inline __m256i Mix16(__m256i under, __m256i color, __m256i coverage) {
    const __m256i rest = _mm256_sub_epi16(_mm256_set1_epi16(255), coverage);
    const __m256i sum = _mm256_add_epi16(
        _mm256_add_epi16(_mm256_mullo_epi16(under, rest), _mm256_mullo_epi16(color, coverage)),
        _mm256_set1_epi16(128));
    return _mm256_srli_epi16(_mm256_add_epi16(sum, _mm256_srli_epi16(sum, 8)), 8);
}

TELOP_AVX2 void BlendAvx2(const BlendArea& area, Pixel color) {
    const __m256i zero = _mm256_setzero_si256();
    const __m256i wide = _mm256_unpacklo_epi8(
        _mm256_set1_epi32(static_cast<int>(std::bit_cast<std::uint32_t>(color))), zero);
    const __m256i fourTimes =
        _mm256_setr_epi8(0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3, // the low half's pixels
                         4, 4, 4, 4, 5, 5, 5, 5, 6, 6, 6, 6, 7, 7, 7, 7);
    for (std::int64_t y = 0; y < area.height; ++y) {
        std::uint8_t* const pixels = area.pixels + y * area.pixelStride;
        const std::uint8_t* const coverage = area.coverage + y * area.coverageStride;
        std::int64_t x = 0;
        for (; x + 8 <= area.width; x += 8) {
            std::int64_t eight = 0;
            std::memcpy(&eight, coverage + x, sizeof eight);
            if (eight == 0) {
                continue;
            }
            auto* const place = reinterpret_cast<__m256i*>(pixels + x * 4);
            const __m256i under = _mm256_loadu_si256(place);
            const __m256i each = _mm256_shuffle_epi8(_mm256_set1_epi64x(eight), fourTimes);
            const __m256i low =
                Mix16(_mm256_unpacklo_epi8(under, zero), wide, _mm256_unpacklo_epi8(each, zero));
            const __m256i high =
                Mix16(_mm256_unpackhi_epi8(under, zero), wide, _mm256_unpackhi_epi8(each, zero));
            _mm256_storeu_si256(place, _mm256_packus_epi16(low, high));
        }
        BlendRowPlain(pixels + x * 4, coverage + x, area.width - x, color);
    }
}

#endif

BlendFunction Widest() {
    BlendFunction widest = nullptr;
    for (int i = 0; i < kBlendWays; ++i) {
        if (const BlendFunction function = BlendWayAt(i).function) {
            widest = function;
        }
    }
    return widest;
}

} // namespace

BlendWay BlendWayAt(int index) {
#if defined(__x86_64__)
    if (index == 1) {
        return { "SSE2", BlendSse2 };
    }
    if (index == 2) {
        return { "AVX2", __builtin_cpu_supports("avx2") ? BlendAvx2 : nullptr };
    }
#endif
    return { "plain", index == 0 ? BlendPlain : nullptr };
}

void Blend(const BlendArea& area, Pixel color) {
    static const BlendFunction widest = Widest();
    widest(area, color);
}

} // namespace platform
