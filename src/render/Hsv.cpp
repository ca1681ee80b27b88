// SPDX-License-Identifier: BSD-3-Clause
// Hue, saturation and value. Products of two 16-bit numbers are formed in 64 bits, as long may have
// 32 with a sign.
#include "render/Hsv.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr std::int64_t kFull = 65535;
constexpr std::int64_t kSector = 65536;

struct HueSide {
    std::int64_t base;
    std::int64_t difference; // of the other two channels; moves the hue from base
};

// The side of the largest channel. Of equal ones red goes before green and green before blue.
HueSide SideOfMaximum(std::int64_t r, std::int64_t g, std::int64_t b) {
    if (r < g)
        return g < b ? HueSide { 4 * kSector, r - g } : HueSide { 2 * kSector, b - r };
    if (r < b)
        return { 4 * kSector, r - g };
    // Below red is the last sector's end.
    return { g < b ? 6 * kSector : 0, g - b };
}

// scale makes the channels' full value 65535.
void ToHsv(long& h, long& s, long& v, const std::int64_t r, const std::int64_t g,
           const std::int64_t b, std::int64_t scale) {
    const std::int64_t maximum = std::max({ r, g, b });
    const std::int64_t delta = maximum - std::min({ r, g, b });
    h = 0;
    s = 0;
    v = static_cast<long>(maximum * scale);
    if (delta == 0)
        return;
    const HueSide side = SideOfMaximum(r, g, b);
    // The quotient goes towards zero on both sides of the base.
    h = static_cast<long>(side.base + side.difference * kSector / delta);
    s = static_cast<long>(delta * kFull / maximum);
}

} // namespace

long RGB32toHSV(long& h, long& s, long& v, long r, long g, long b) {
    ToHsv(h, s, v, r, g, b, 257);
    return 0;
}

long RGB64toHSV(long& h, long& s, long& v, long r, long g, long b) {
    ToHsv(h, s, v, r, g, b, 1);
    return 0;
}

long HSVtoRGB32(long& r, long& g, long& b, long h, long s, long v) {
    HSVtoRGB64(r, g, b, h, s, v);
    r >>= 8;
    g >>= 8;
    b >>= 8;
    return 0;
}

long HSVtoRGB64(long& r, long& g, long& b, long h, long s, long v) {
    const long f = h & 0xFFFF;
    const long p = GetParam1(v, s);
    const long q = GetParam2(v, s, f);
    const long t = GetParam3(v, s, f);
    const auto set = [&](long red, long green, long blue) {
        r = red;
        g = green;
        b = blue;
    };
    switch (h >> 16) {
    case 0:
        set(v, t, p);
        break;
    case 1:
        set(q, v, p);
        break;
    case 2:
        set(p, v, t);
        break;
    case 3:
        set(p, q, v);
        break;
    case 4:
        set(t, p, v);
        break;
    default:
        set(v, p, q);
        break;
    }
    return 0;
}

long GetParam1(long v, long s) {
    return static_cast<long>(std::int64_t { v } * (kFull - s) / kFull);
}

long GetParam2(long v, long s, long f) {
    return GetParam1(v, static_cast<long>((std::int64_t { s } * f) >> 16));
}

long GetParam3(long v, long s, long f) {
    return GetParam2(v, s, 65536 - f);
}
