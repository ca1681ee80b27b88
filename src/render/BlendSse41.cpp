// SPDX-License-Identifier: BSD-3-Clause
// The blend for SSE4.1: four source pixels at once.
#include <smmintrin.h>

#include "render/BlendVector.h"

namespace render {
namespace {

struct Sse41 {
    using Vec = __m128i;
    static constexpr std::ptrdiff_t kPixels = 4;

    static Vec Load(const void* from) { return _mm_loadu_si128(static_cast<const Vec*>(from)); }
    static Vec LoadGroup(const void* from) { return Load(from); }
    static void Store(void* to, Vec v) { _mm_storeu_si128(static_cast<Vec*>(to), v); }

    // The first 32-bit words of a vector; the others are not touched in memory.
    static Vec LoadFew(const std::uint8_t* from, int words) {
        if (words >= kPixels)
            return Load(from);
        std::uint32_t room[kPixels] = {};
        for (std::ptrdiff_t i = 0; i < words; ++i)
            __builtin_memcpy(&room[i], from + 4 * i, 4);
        return Load(room);
    }
    static void StoreFew(std::uint8_t* to, int words, Vec v) {
        if (words >= kPixels)
            return Store(to, v);
        std::uint32_t room[kPixels];
        Store(room, v);
        for (std::ptrdiff_t i = 0; i < words; ++i)
            __builtin_memcpy(to + 4 * i, &room[i], 4);
    }

    // 12 bytes to the group. Loading reads 4 more; storing leaves them alone, as the next load would
    // wait for a store that it overlaps.
    static Vec Load12(const std::uint8_t* from) { return Load(from); }
    static void Store12(std::uint8_t* to, Vec v) {
        _mm_storeu_si64(to, v);
        _mm_storeu_si32(to + 8, _mm_srli_si128(v, 8));
    }

    static Vec Zero() { return _mm_setzero_si128(); }
    static Vec Ones() { return _mm_set1_epi8(-1); }
    static Vec Fill16(std::uint16_t v) { return _mm_set1_epi16(static_cast<short>(v)); }
    static Vec And(Vec a, Vec b) { return _mm_and_si128(a, b); }
    static Vec Or(Vec a, Vec b) { return _mm_or_si128(a, b); }
    static Vec Xor(Vec a, Vec b) { return _mm_xor_si128(a, b); }
    static Vec Not(Vec a) { return Xor(a, Ones()); }
    static Vec Select(Vec clear, Vec set, Vec mask) { return _mm_blendv_epi8(clear, set, mask); }
    static bool AllOnes(Vec a) { return _mm_movemask_epi8(a) == 0xFFFF; }
    static bool AllZero(Vec a) { return _mm_movemask_epi8(a) == 0; }
    static Vec Equal16(Vec a, Vec b) { return _mm_cmpeq_epi16(a, b); }
    static Vec Equal32(Vec a, Vec b) { return _mm_cmpeq_epi32(a, b); }
    static Vec Shuffle(Vec a, Vec pattern) { return _mm_shuffle_epi8(a, pattern); }
    static Vec UnpackLow(Vec a, Vec b) { return _mm_unpacklo_epi8(a, b); }
    static Vec UnpackHigh(Vec a, Vec b) { return _mm_unpackhi_epi8(a, b); }
    static Vec Pack(Vec low, Vec high) { return _mm_packus_epi16(low, high); }
    static Vec PackSigned(Vec low, Vec high) { return _mm_packs_epi16(low, high); }
    static Vec Add(Vec a, Vec b) { return _mm_add_epi16(a, b); }
    static Vec Sub(Vec a, Vec b) { return _mm_sub_epi16(a, b); }
    static Vec SubSaturated(Vec a, Vec b) { return _mm_subs_epu16(a, b); }
    static Vec MulLow(Vec a, Vec b) { return _mm_mullo_epi16(a, b); }
    static Vec MulHigh(Vec a, Vec b) { return _mm_mulhi_epu16(a, b); }
    // Unsigned bytes of a by signed bytes of b, neighbours added.
    static Vec MulAddPairs(Vec a, Vec b) { return _mm_maddubs_epi16(a, b); }
    static Vec ShiftLeft8(Vec a) { return _mm_slli_epi16(a, 8); }
    static Vec ShiftRight8(Vec a) { return _mm_srli_epi16(a, 8); }
    static Vec ShiftRight8Signed(Vec a) { return _mm_srai_epi16(a, 8); }
    static Vec LowPixels(Vec a) { return a; }
    static Vec HighPixels(Vec a) { return _mm_unpackhi_epi64(a, a); }
};

} // namespace

void BlendTextSse41(const BlendJob& job) {
    BlendTextWith<Sse41>(job);
}

} // namespace render
