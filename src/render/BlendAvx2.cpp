// SPDX-License-Identifier: BSD-3-Clause
// The blend for AVX2: eight source pixels at once.
#include <immintrin.h>

#include "render/BlendVector.h"

namespace render {
namespace {

struct Avx2 {
    using Vec = __m256i;
    static constexpr std::ptrdiff_t kPixels = 8;

    static Vec Load(const void* from) { return _mm256_loadu_si256(static_cast<const Vec*>(from)); }
    static Vec LoadGroup(const void* from) {
        return _mm256_broadcastsi128_si256(_mm_loadu_si128(static_cast<const __m128i*>(from)));
    }
    static void Store(void* to, Vec v) { _mm256_storeu_si256(static_cast<Vec*>(to), v); }

    // The first 32-bit words of a vector; the others are not touched in memory.
    static Vec FirstWords(int words) {
        return _mm256_cmpgt_epi32(_mm256_set1_epi32(words),
                                  _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7));
    }
    static Vec LoadFew(const std::uint8_t* from, int words) {
        const void* address = from;
        return _mm256_maskload_epi32(static_cast<const int*>(address), FirstWords(words));
    }
    static void StoreFew(std::uint8_t* to, int words, Vec v) {
        void* address = to;
        _mm256_maskstore_epi32(static_cast<int*>(address), FirstWords(words), v);
    }

    // 12 bytes to each group. Loading reads 4 more; storing leaves them alone, as the next load would
    // wait for a store that it overlaps.
    static Vec Load12(const std::uint8_t* from) {
        const void* low = from;
        const void* high = from + 12;
        return _mm256_loadu2_m128i(static_cast<const __m128i*>(high),
                                   static_cast<const __m128i*>(low));
    }
    static void Store12(std::uint8_t* to, Vec v) {
        StoreGroup12(to, _mm256_castsi256_si128(v));
        StoreGroup12(to + 12, _mm256_extracti128_si256(v, 1));
    }

    static Vec Zero() { return _mm256_setzero_si256(); }
    static Vec Ones() { return _mm256_set1_epi8(-1); }
    static Vec Fill16(std::uint16_t v) { return _mm256_set1_epi16(static_cast<short>(v)); }
    static Vec And(Vec a, Vec b) { return _mm256_and_si256(a, b); }
    static Vec Or(Vec a, Vec b) { return _mm256_or_si256(a, b); }
    static Vec Xor(Vec a, Vec b) { return _mm256_xor_si256(a, b); }
    static Vec Not(Vec a) { return Xor(a, Ones()); }
    static Vec Select(Vec clear, Vec set, Vec mask) { return _mm256_blendv_epi8(clear, set, mask); }
    static bool AllOnes(Vec a) { return _mm256_movemask_epi8(a) == -1; }
    static bool AllZero(Vec a) { return _mm256_movemask_epi8(a) == 0; }
    static Vec Equal16(Vec a, Vec b) { return _mm256_cmpeq_epi16(a, b); }
    static Vec Equal32(Vec a, Vec b) { return _mm256_cmpeq_epi32(a, b); }
    static Vec Shuffle(Vec a, Vec pattern) { return _mm256_shuffle_epi8(a, pattern); }
    static Vec UnpackLow(Vec a, Vec b) { return _mm256_unpacklo_epi8(a, b); }
    static Vec UnpackHigh(Vec a, Vec b) { return _mm256_unpackhi_epi8(a, b); }
    static Vec Pack(Vec low, Vec high) { return _mm256_packus_epi16(low, high); }
    static Vec PackSigned(Vec low, Vec high) { return _mm256_packs_epi16(low, high); }
    static Vec Add(Vec a, Vec b) { return _mm256_add_epi16(a, b); }
    static Vec Sub(Vec a, Vec b) { return _mm256_sub_epi16(a, b); }
    static Vec SubSaturated(Vec a, Vec b) { return _mm256_subs_epu16(a, b); }
    static Vec MulLow(Vec a, Vec b) { return _mm256_mullo_epi16(a, b); }
    static Vec MulHigh(Vec a, Vec b) { return _mm256_mulhi_epu16(a, b); }
    // Unsigned bytes of a by signed bytes of b, neighbours added.
    static Vec MulAddPairs(Vec a, Vec b) { return _mm256_maddubs_epi16(a, b); }
    static Vec ShiftLeft8(Vec a) { return _mm256_slli_epi16(a, 8); }
    static Vec ShiftRight8(Vec a) { return _mm256_srli_epi16(a, 8); }
    static Vec ShiftRight8Signed(Vec a) { return _mm256_srai_epi16(a, 8); }
    static Vec LowPixels(Vec a) { return _mm256_permute4x64_epi64(a, 0x50); }
    static Vec HighPixels(Vec a) { return _mm256_permute4x64_epi64(a, 0xFA); }

private:
    static void StoreGroup12(std::uint8_t* to, __m128i group) {
        _mm_storeu_si64(to, group);
        _mm_storeu_si32(to + 8, _mm_srli_si128(group, 8));
    }
};

} // namespace

void BlendTextAvx2(const BlendJob& job) {
    BlendTextWith<Avx2>(job);
}

} // namespace render
