// SPDX-License-Identifier: BSD-3-Clause
// The vector version of the blend, written once over the operations of a vector unit V. Each unit's
// own source file includes this, compiled for that unit; V lives in an unnamed namespace there, and
// nothing here is anything but a template over it, so that no code for one unit can end up in
// another's place. For the same reason there is no standard library in here.
//
// V::Vec holds V::kPixels source pixels and consists of groups of 16 bytes, in which shuffles,
// unpacking and packing work on their own:
//
//   source  X R G B | X R G B | X R G B | X R G B      one group
//   d, low half     c0 c1 c2 c3 of pixel 0 and 1       as 16-bit numbers
//   d, high half    c0 c1 c2 c3 of pixel 2 and 3
#pragma once

#include "render/BlendKernels.h"

namespace render {

enum class BlendMode { kPlain, kBox, kReplace };

// Which byte of a group goes to each place of a group; kZeroByte puts a 0 there.
inline constexpr std::uint8_t kZeroByte = 0x80;
template <class V>
struct BytePattern {
    std::uint8_t bytes[16];
    typename V::Vec Load() const { return V::LoadGroup(bytes); }
};

// The order of a pixel's channels: what is asked of the place of each.
template <class V>
class Places {
public:
    explicit Places(const BlendJob& job) {
        for (int& source : m_source)
            source = kAbsent;
        m_source[job.order.red] = kSourceXrgb32.red;
        m_source[job.order.green] = kSourceXrgb32.green;
        m_source[job.order.blue] = kSourceXrgb32.blue;
        if (job.order.alpha >= 0)
            m_source[job.order.alpha] = kAlpha;
    }

    bool IsAlpha(int place) const { return m_source[place] == kAlpha; }
    bool IsAbsent(int place) const { return m_source[place] == kAbsent; }
    // The byte of source pixel number pixel that is drawn here.
    std::uint8_t SourceByte(int pixel, int place) const {
        return m_source[place] > 0 ? static_cast<std::uint8_t>(4 * pixel + m_source[place])
                                   : kZeroByte;
    }
    // Whether every byte of a pixel that draws is written.
    bool AreComplete() const {
        for (const int source : m_source)
            if (source == kAbsent)
                return false;
        return true;
    }
    std::uint8_t TextByte(const BlendJob& job, int place) const {
        const std::uint8_t colors[4] = { 0, job.red, job.green, job.blue };
        return m_source[place] > 0 ? colors[m_source[place]] : std::uint8_t { 0 };
    }

private:
    static constexpr int kAbsent = -1;
    static constexpr int kAlpha = 0;

    int m_source[4];
};

// Pixels of four 8-bit channels.
template <class V, BlendMode kMode>
class Mixer8 {
    using Vec = typename V::Vec;

public:
    explicit Mixer8(const BlendJob& job)
        : m_opacity(V::Fill16(job.opacity)),
          m_weights(V::Fill16(static_cast<std::uint16_t>(job.opacity << 8 | (256 - job.opacity)))) {
        const Places<V> places(job);
        BytePattern<V> opaque, absent, pick, text, low, high;
        for (int i = 0; i < 16; ++i) {
            const int place = i % 4;
            opaque.bytes[i] = places.IsAlpha(place) ? 0xFF : 0;
            absent.bytes[i] = places.IsAbsent(place) ? 0xFF : 0;
            pick.bytes[i] = places.SourceByte(i / 4, place);
            const int lane = i / 2; // of 16 bits
            text.bytes[i] = i % 2 == 0 ? places.TextByte(job, lane % 4) : 0;
            low.bytes[i] = CoverageByte(i, lane / 4);
            high.bytes[i] = CoverageByte(i, lane / 4 + 2);
        }
        m_opaque = opaque.Load();
        m_absent = absent.Load();
        m_pick = pick.Load();
        m_text = text.Load();
        m_low = low.Load();
        m_high = high.Load();
        m_complete = places.AreComplete();
    }

    // What the source makes of d where all of its pixels draw; for pixels without a gap.
    bool IsComplete() const { return m_complete; }
    Vec All(Vec source, Vec d) const { return V::Or(Colors(source, d), m_opaque); }
    // d with the source drawn over it; key has all bits of the source pixels that draw nothing.
    Vec operator()(Vec source, Vec key, Vec d) const {
        return V::Select(All(source, d), d, V::Or(key, m_absent));
    }

private:
    // Byte 1 of the pixel in the high byte of each lane.
    static std::uint8_t CoverageByte(int byte, int pixel) {
        return byte % 2 == 1 ? static_cast<std::uint8_t>(4 * pixel + 1) : kZeroByte;
    }

    Vec Colors(Vec source, Vec d) const {
        if constexpr (kMode == BlendMode::kPlain) {
            const Vec zero = V::Zero();
            return V::Pack(Covered(source, m_low, V::UnpackLow(d, zero), V::UnpackLow(zero, d)),
                           Covered(source, m_high, V::UnpackHigh(d, zero), V::UnpackHigh(zero, d)));
        }
        const Vec own = V::Shuffle(source, m_pick);
        return kMode == BlendMode::kReplace ? own : Weighted(own, d);
    }

    // (256 d + weight (text - d)) / 256: the sum fits 16 bits unsigned though its second term alone
    // does not.
    Vec Covered(Vec source, Vec coverage, Vec d, Vec d256) const {
        const Vec weight = V::MulHigh(V::Shuffle(V::Not(source), coverage), m_opacity);
        return V::ShiftRight8(V::Add(d256, V::MulLow(weight, V::Sub(m_text, d))));
    }

    // ((256 - weight) d + weight s) / 256 with both colours less 128, as the multiplication wants one
    // side signed. Opacity 0, whose first factor needs 9 bits, never comes here.
    Vec Weighted(Vec s, Vec d) const {
        const Vec bias = V::Fill16(0x8080);
        const Vec d128 = V::Xor(d, bias);
        const Vec s128 = V::Xor(s, bias);
        const Vec low = V::MulAddPairs(m_weights, V::UnpackLow(d128, s128));
        const Vec high = V::MulAddPairs(m_weights, V::UnpackHigh(d128, s128));
        return V::Xor(V::PackSigned(V::ShiftRight8Signed(low), V::ShiftRight8Signed(high)), bias);
    }

    Vec m_opacity, m_weights, m_opaque, m_absent, m_pick, m_text, m_low, m_high;
    bool m_complete;
};

// Pixels of four 16-bit channels, two to a group. The source comes with the pixels of each group in
// that group's low half.
template <class V, BlendMode kMode>
class Mixer16 {
    using Vec = typename V::Vec;

public:
    explicit Mixer16(const BlendJob& job)
        : m_opacity(V::Fill16(static_cast<std::uint16_t>(
              kMode == BlendMode::kPlain ? job.opacity : job.opacity * 257))) {
        const Places<V> places(job);
        BytePattern<V> opaque, absent, text, widen, double32;
        for (int i = 0; i < 16; ++i) {
            const int place = i / 2 % 4;
            const int pixel = i / 8;
            opaque.bytes[i] = places.IsAlpha(place) ? 0xFF : 0;
            absent.bytes[i] = places.IsAbsent(place) ? 0xFF : 0;
            text.bytes[i] = places.TextByte(job, place);
            // The same byte twice is the number times 257.
            widen.bytes[i] = places.SourceByte(pixel, place);
            if (kMode == BlendMode::kPlain)
                widen.bytes[i] = i % 2 == 1 ? static_cast<std::uint8_t>(4 * pixel + 1) : kZeroByte;
            double32.bytes[i] = static_cast<std::uint8_t>(4 * pixel);
        }
        m_opaque = opaque.Load();
        m_absent = absent.Load();
        m_text = text.Load();
        m_widen = widen.Load();
        m_double = double32.Load();
    }

    Vec operator()(Vec source, Vec key, Vec d) const {
        return V::Select(V::Or(Colors(source, d), m_opaque), d,
                         V::Or(V::Shuffle(key, m_double), m_absent));
    }

private:
    Vec Colors(Vec source, Vec d) const {
        if constexpr (kMode == BlendMode::kPlain) {
            const Vec weight = V::MulHigh(V::Shuffle(V::Not(source), m_widen), m_opacity);
            return Mix(d, m_text, V::Or(weight, V::ShiftLeft8(weight)));
        }
        const Vec s = V::Shuffle(source, m_widen);
        return kMode == BlendMode::kReplace ? s : Mix(d, s, m_opacity);
    }

    // d + floor(weight (s - d) / 65536). Of the two differences one is 0; what is taken away rounds
    // up, so it is one more wherever the product's low half is not 0.
    static Vec Mix(Vec d, Vec s, Vec weight) {
        const Vec more = V::SubSaturated(s, d);
        const Vec less = V::SubSaturated(d, s);
        const Vec whole = V::Equal16(V::MulLow(less, weight), V::Zero());
        const Vec sum = V::Sub(V::Add(d, V::MulHigh(more, weight)), V::MulHigh(less, weight));
        return V::Sub(V::Add(sum, V::Ones()), whole);
    }

    Vec m_opacity, m_opaque, m_absent, m_text, m_widen, m_double;
};

// Tells the source pixels that draw nothing.
template <class V>
class KeyTest {
    using Vec = typename V::Vec;

public:
    KeyTest() {
        BytePattern<V> unused, key;
        for (int i = 0; i < 16; ++i) {
            unused.bytes[i] = i % 4 == 0 ? 0xFF : 0;
            key.bytes[i] = i % 4 == 0 ? 0xFF : 0xFE;
        }
        m_unused = unused.Load();
        m_key = key.Load();
    }
    Vec operator()(Vec source) const { return V::Equal32(V::Or(source, m_unused), m_key); }

private:
    Vec m_unused, m_key;
};

// As many source pixels as are skipped at once when none of them draws: fewer, and the processor
// guesses the branch wrong too often along the edges of glyphs.
inline constexpr std::ptrdiff_t kBlockPixels = 8;

template <class V>
struct Block {
    using Vec = typename V::Vec;
    static constexpr std::ptrdiff_t kVecs = kBlockPixels / V::kPixels;

    Block(const std::uint8_t* src, const KeyTest<V>& isKey) {
        Vec all = V::Ones();
        Vec any = V::Zero();
        for (int i = 0; i < kVecs; ++i) {
            source[i] = V::Load(src + 4 * V::kPixels * i);
            key[i] = isKey(source[i]);
            all = V::And(all, key[i]);
            any = V::Or(any, key[i]);
        }
        draws = !V::AllOnes(all);
        fills = V::AllZero(any);
    }

    Vec source[kVecs];
    Vec key[kVecs];
    bool draws; // any of its pixels
    bool fills; // every one
};

// The destination's pixels at each depth: kBytes in one, and as many as kReach must be left of a row
// for a whole block to be drawn. Draw takes a vector of source pixels, DrawFew the first ones of it;
// key has all bits of those that draw nothing, and fills says that the block has none.
template <class V, BlendMode kMode>
class Pixels32 {
    using Vec = typename V::Vec;

public:
    static constexpr std::ptrdiff_t kBytes = 4;
    static constexpr std::ptrdiff_t kReach = kBlockPixels;

    explicit Pixels32(const BlendJob& job) : m_mix(job) {}

    void Draw(std::uint8_t* to, Vec source, Vec key, bool fills) const {
        // In a box nearly every block is whole, among glyphs alone hardly one is.
        const bool whole = kMode != BlendMode::kPlain && fills && m_mix.IsComplete();
        V::Store(to, whole ? m_mix.All(source, V::Load(to)) : m_mix(source, key, V::Load(to)));
    }
    void DrawFew(std::uint8_t* to, Vec source, Vec key, int count) const {
        V::StoreFew(to, count, m_mix(source, key, V::LoadFew(to, count)));
    }

private:
    Mixer8<V, kMode> m_mix;
};

template <class V, BlendMode kMode>
class Pixels64 {
    using Vec = typename V::Vec;
    static constexpr std::ptrdiff_t kVecBytes = 4 * V::kPixels;

public:
    static constexpr std::ptrdiff_t kBytes = 8;
    static constexpr std::ptrdiff_t kReach = kBlockPixels;

    explicit Pixels64(const BlendJob& job) : m_mix(job) {}

    void Draw(std::uint8_t* to, Vec source, Vec key, bool /*fills*/) const {
        V::Store(to, Low(source, key, V::Load(to)));
        V::Store(to + kVecBytes, High(source, key, V::Load(to + kVecBytes)));
    }
    void DrawFew(std::uint8_t* to, Vec source, Vec key, int count) const {
        int words = 2 * count; // halves of pixels
        V::StoreFew(to, words, Low(source, key, V::LoadFew(to, words)));
        words -= V::kPixels;
        if (words <= 0)
            return;
        to += kVecBytes;
        V::StoreFew(to, words, High(source, key, V::LoadFew(to, words)));
    }

private:
    Vec Low(Vec source, Vec key, Vec d) const {
        return m_mix(V::LowPixels(source), V::LowPixels(key), d);
    }
    Vec High(Vec source, Vec key, Vec d) const {
        return m_mix(V::HighPixels(source), V::HighPixels(key), d);
    }

    Mixer16<V, kMode> m_mix;
};

// Spreads three bytes to four, mixes and closes the gaps again.
template <class V, BlendMode kMode>
class Pixels24 {
    using Vec = typename V::Vec;

public:
    static constexpr std::ptrdiff_t kBytes = 3;
    // Loading reaches 4 bytes over the pixels that are meant.
    static constexpr std::ptrdiff_t kReach = kBlockPixels + 2;

    explicit Pixels24(const BlendJob& job) : m_mix(job) {
        BytePattern<V> spread, close;
        for (int i = 0; i < 16; ++i) {
            spread.bytes[i] = i % 4 < 3 ? static_cast<std::uint8_t>(i / 4 * 3 + i % 4) : kZeroByte;
            close.bytes[i] = i < 12 ? static_cast<std::uint8_t>(i / 3 * 4 + i % 3) : kZeroByte;
        }
        m_spread = spread.Load();
        m_close = close.Load();
    }

    void Draw(std::uint8_t* to, Vec source, Vec key, bool /*fills*/) const {
        const Vec mixed = m_mix(source, key, V::Shuffle(V::Load12(to), m_spread));
        V::Store12(to, V::Shuffle(mixed, m_close));
    }
    void DrawFew(std::uint8_t* to, Vec source, Vec key, int count) const {
        const std::size_t bytes =
            std::size_t { 3 } * static_cast<std::size_t>(count < V::kPixels ? count : V::kPixels);
        std::uint8_t room[3 * V::kPixels + 4] = {};
        __builtin_memcpy(room, to, bytes);
        Draw(room, source, key, false);
        __builtin_memcpy(to, room, bytes);
    }

private:
    Mixer8<V, kMode> m_mix;
    Vec m_spread, m_close;
};

// Draws whole blocks, then what is left of the row.
template <class V, class Pixels>
void BlendRowWith(const Pixels& pixels, const KeyTest<V>& isKey, std::uint8_t* dst,
                  const std::uint8_t* src, int width) {
    for (; width >= Pixels::kReach; width -= kBlockPixels) {
        const Block<V> block(src, isKey);
        for (int i = 0; block.draws && i < Block<V>::kVecs; ++i)
            pixels.Draw(dst + Pixels::kBytes * V::kPixels * i, block.source[i], block.key[i],
                        block.fills);
        dst += Pixels::kBytes * kBlockPixels;
        src += 4 * kBlockPixels;
    }
    for (; width > 0; width -= V::kPixels) {
        const typename V::Vec source = V::LoadFew(src, width);
        pixels.DrawFew(dst, source, isKey(source), width);
        dst += Pixels::kBytes * V::kPixels;
        src += 4 * V::kPixels;
    }
}

template <class V, template <class, BlendMode> class Pixels, BlendMode kMode>
void BlendRowsWith(const BlendJob& job) {
    const Pixels<V, kMode> pixels(job);
    const KeyTest<V> isKey;
    for (std::int32_t j = 0; j < job.height; ++j)
        BlendRowWith(pixels, isKey, job.dst + j * job.dstRowBytes, job.src + j * job.srcRowBytes,
                     job.width);
}

template <class V, template <class, BlendMode> class Pixels>
void BlendInMode(const BlendJob& job) {
    // At opacity 0 both modes only make pixels opaque.
    if (!job.box || job.opacity == 0)
        BlendRowsWith<V, Pixels, BlendMode::kPlain>(job);
    else if (job.opacity < 255)
        BlendRowsWith<V, Pixels, BlendMode::kBox>(job);
    else
        BlendRowsWith<V, Pixels, BlendMode::kReplace>(job);
}

template <class V>
void BlendTextWith(const BlendJob& job) {
    if (job.depth == 64)
        BlendInMode<V, Pixels64>(job);
    else if (job.depth == 32)
        BlendInMode<V, Pixels32>(job);
    else
        BlendInMode<V, Pixels24>(job);
}

} // namespace render
