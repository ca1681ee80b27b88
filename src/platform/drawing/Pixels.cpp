// SPDX-License-Identifier: BSD-3-Clause
// Fills and blends rows of pixels; makes and recycles their memory.
#include "platform/drawing/Pixels.h"

#include <algorithm>
#include <cstring>
#include <new>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "platform/drawing/Recycler.h"

namespace platform {
namespace {

constexpr std::int64_t kMaxRecycledBytes = 8 << 20;
constexpr std::size_t kMaxRecycled = 4;

Recycler<PixelBuffer>& Recycled() {
    thread_local Recycler<PixelBuffer> recycler(kMaxRecycled);
    return recycler;
}

#if defined(__SSE2__)
// Div255(under * (255 - coverage) + color * coverage) in eight 16-bit lanes, none of which
// overflows: the sum is at most 65025, and with 128 and its own high byte 65407.
__m128i Mix16(__m128i under, __m128i color, __m128i coverage) {
    const __m128i rest = _mm_sub_epi16(_mm_set1_epi16(255), coverage);
    const __m128i sum =
        _mm_add_epi16(_mm_add_epi16(_mm_mullo_epi16(under, rest), _mm_mullo_epi16(color, coverage)),
                      _mm_set1_epi16(128));
    return _mm_srli_epi16(_mm_add_epi16(sum, _mm_srli_epi16(sum, 8)), 8);
}

// Four pixels; coverage holds theirs in its low four bytes.
__m128i BlendFour(__m128i under, __m128i color16, __m128i coverage) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i twice = _mm_unpacklo_epi8(coverage, coverage);
    const __m128i each = _mm_unpacklo_epi16(twice, twice); // every coverage four times
    const __m128i low =
        Mix16(_mm_unpacklo_epi8(under, zero), color16, _mm_unpacklo_epi8(each, zero));
    const __m128i high =
        Mix16(_mm_unpackhi_epi8(under, zero), color16, _mm_unpackhi_epi8(each, zero));
    return _mm_packus_epi16(low, high);
}
#endif

} // namespace

void FillPixels(std::uint8_t* pixels, std::int64_t count, Pixel color) {
    std::fill_n(reinterpret_cast<std::uint32_t*>(pixels), count,
                std::bit_cast<std::uint32_t>(color));
}

void BlendPixelsPlain(std::uint8_t* pixels, const std::uint8_t* coverage, std::int64_t count,
                      Pixel color) {
    for (std::int64_t i = 0; i < count; ++i) {
        for (int channel = 0; channel < 4; ++channel) {
            std::uint8_t& under = pixels[i * 4 + channel];
            under = Mix(under, color[channel], coverage[i]);
        }
    }
}

void BlendPixels(std::uint8_t* pixels, const std::uint8_t* coverage, std::int64_t count,
                 Pixel color) {
    std::int64_t i = 0;
#if defined(__SSE2__)
    const __m128i four = _mm_set1_epi32(static_cast<int>(std::bit_cast<std::uint32_t>(color)));
    const __m128i color16 = _mm_unpacklo_epi8(four, _mm_setzero_si128());
    for (; i + 4 <= count; i += 4) {
        std::uint32_t covered = 0;
        std::memcpy(&covered, coverage + i, 4);
        if (covered == 0) {
            continue;
        }
        auto* const place = reinterpret_cast<__m128i*>(pixels + i * 4);
        if (covered == 0xFFFFFFFF) {
            _mm_storeu_si128(place, four);
            continue;
        }
        const __m128i packed = _mm_cvtsi32_si128(static_cast<int>(covered));
        _mm_storeu_si128(place, BlendFour(_mm_loadu_si128(place), color16, packed));
    }
#endif
    BlendPixelsPlain(pixels + i * 4, coverage + i, count - i, color);
}

PixelBuffer::PixelBuffer(std::int64_t bytes)
    : m_data(static_cast<std::uint8_t*>(
          ::operator new (static_cast<std::size_t>(bytes), std::align_val_t { kPixelAlignment }))),
      m_capacity(bytes) {}

void PixelBuffer::Free::operator()(std::uint8_t* data) const {
    ::operator delete (data, std::align_val_t { kPixelAlignment });
}

std::shared_ptr<PixelBuffer> PixelBuffer::Make(std::int64_t bytes) {
    // Room for the next, slightly longer text, but not much more than is asked for.
    const auto fits = [bytes](const PixelBuffer& buffer) {
        return buffer.m_capacity >= bytes && buffer.m_capacity / 4 <= bytes;
    };
    std::unique_ptr<PixelBuffer> buffer =
        Recycler<PixelBuffer>::Alive() ? Recycled().Take(fits) : nullptr;
    if (!buffer) {
        buffer = std::make_unique<PixelBuffer>(std::max<std::int64_t>(bytes + bytes / 8, 4096));
    }
    return { buffer.release(), [](PixelBuffer* returned) {
                std::unique_ptr<PixelBuffer> owned(returned);
                if (Recycler<PixelBuffer>::Alive() && owned->Capacity() <= kMaxRecycledBytes) {
                    Recycled().Give(std::move(owned));
                }
            } };
}

} // namespace platform
