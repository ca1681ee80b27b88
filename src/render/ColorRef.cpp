// SPDX-License-Identifier: BSD-3-Clause
#include "render/ColorRef.h"

#include <algorithm>
#include <cstdint>

#include "platform/StateSavers.h"

namespace {

std::uint16_t Channel(unsigned long packed, int shift) {
    return static_cast<std::uint16_t>((packed >> shift & 0xFF) * 257);
}

// Products of two 16-bit numbers are formed in 64 bits, as long may have 32 with a sign.
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

unsigned long RGBtoCOLORREF(const platform::RGBColor& color) {
    const unsigned long blue = color.blue;
    return (color.red >> 8) | (color.green & 0xFF00u) | ((blue << 8) & 0xFF0000u);
}

void COLORREFtoRGB(platform::RGBColor& color, unsigned long packed) {
    color.red = Channel(packed, 0);
    color.green = Channel(packed, 8);
    color.blue = Channel(packed, 16);
}

void DrawColor(platform::Rect& rect, unsigned long color) {
    const XSaveColor colors;
    platform::RGBColor fill {};
    COLORREFtoRGB(fill, color);
    platform::RGBForeColor(fill);
    platform::PaintRect(rect);
    platform::RGBForeColor({ 0, 0, 0 });
    platform::FrameRect(rect);
}

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
    const long sectors[][3] = { { v, t, p }, { q, v, p }, { p, v, t },
                                { p, q, v }, { t, p, v }, { v, p, q } };
    const long sector = h >> 16;
    const long(&channels)[3] = sectors[sector >= 0 && sector < 5 ? sector : 5];
    r = channels[0];
    g = channels[1];
    b = channels[2];
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
