// SPDX-License-Identifier: BSD-3-Clause
// Colour words, and hue, saturation and value against formulas in 64 bits.
#include <algorithm>
#include <cstdint>
#include <random>

#include <gtest/gtest.h>

#include "render/ColorRef.h"
#include "render/Hsv.h"

namespace {

TEST(ColorRefTest, PacksHighBytesAndWidensThemBack) {
    EXPECT_EQ(RGBtoCOLORREF({ 0x12FF, 0x34EE, 0x56DD }), 0x563412u);
    EXPECT_EQ(RGBtoCOLORREF({ 0xFFFF, 0xFFFF, 0xFFFF }), 0xFFFFFFu);
    for (unsigned long value = 0; value < 256; ++value) {
        const unsigned long packed = value | (255 - value) << 8 | (value ^ 0x5A) << 16;
        platform::RGBColor color {};
        COLORREFtoRGB(color, packed | 0xFF000000u);
        EXPECT_EQ(color.red, value * 257);
        EXPECT_EQ(RGBtoCOLORREF(color), packed);
    }
}

struct Hsv {
    long h, s, v;
    bool operator==(const Hsv&) const = default;
};
void PrintTo(const Hsv& hsv, std::ostream* out) {
    *out << std::hex << "h " << hsv.h << " s " << hsv.s << " v " << hsv.v;
}

Hsv ToHsv32(long r, long g, long b) {
    Hsv out { -1, -1, -1 };
    RGB32toHSV(out.h, out.s, out.v, r, g, b);
    return out;
}
Hsv ToHsv64(long r, long g, long b) {
    Hsv out { -1, -1, -1 };
    RGB64toHSV(out.h, out.s, out.v, r, g, b);
    return out;
}

TEST(HsvTest, PutsPureColorsAtTheStartOfTheirSectors) {
    EXPECT_EQ(ToHsv32(0, 0, 0), (Hsv { 0, 0, 0 }));
    EXPECT_EQ(ToHsv32(128, 128, 128), (Hsv { 0, 0, 128 * 257 }));
    EXPECT_EQ(ToHsv32(255, 0, 0), (Hsv { 0, 65535, 65535 }));
    EXPECT_EQ(ToHsv32(255, 255, 0), (Hsv { 0x10000, 65535, 65535 }));
    EXPECT_EQ(ToHsv32(0, 255, 0), (Hsv { 0x20000, 65535, 65535 }));
    EXPECT_EQ(ToHsv32(0, 255, 255), (Hsv { 0x30000, 65535, 65535 }));
    EXPECT_EQ(ToHsv32(0, 0, 255), (Hsv { 0x40000, 65535, 65535 }));
    EXPECT_EQ(ToHsv32(255, 0, 255), (Hsv { 0x50000, 65535, 65535 }));
    EXPECT_EQ(ToHsv64(65535, 0, 1), (Hsv { 0x60000 - 1, 65535, 65535 }));
    EXPECT_EQ(ToHsv64(1, 65535, 0), (Hsv { 0x20000 - 1, 65535, 65535 }));
}

// The wide products would not fit a long of 32 bits: 65535 * 65535, and a difference << 16.
TEST(HsvTest, KeepsSixteenBitProductsWhole) {
    EXPECT_EQ(ToHsv64(65535, 40000, 10000),
              (Hsv { static_cast<long>(30000LL * 65536 / 55535), 55535, 65535 }));
    long r = 0, g = 0, b = 0;
    HSVtoRGB64(r, g, b, 0x28000, 32768, 65535);
    EXPECT_EQ(r, 65535LL * (65535 - 32768) / 65535);
    EXPECT_EQ(g, 65535);
    EXPECT_EQ(b, 65535LL * (65535 - (32768 * 32768LL >> 16)) / 65535);
}

TEST(HsvTest, ComesBackToTheColorsItStartedFrom) {
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) {
        const long in[3] = { static_cast<long>(random() % 256), static_cast<long>(random() % 256),
                             static_cast<long>(random() % 256) };
        const Hsv hsv = ToHsv32(in[0], in[1], in[2]);
        EXPECT_EQ(hsv.v, std::max({ in[0], in[1], in[2] }) * 257);
        long out[3];
        HSVtoRGB32(out[0], out[1], out[2], hsv.h, hsv.s, hsv.v);
        for (int channel = 0; channel < 3; ++channel)
            ASSERT_NEAR(in[channel], out[channel], 1) << in[0] << ' ' << in[1] << ' ' << in[2];
    }
}

TEST(HsvTest, TakesHuesOutsideTheSectorsForTheLast) {
    for (const long h : { 0x50000L, 0x60000L, 0x7FFF0000L, -0x10000L }) {
        long r = 0, g = 0, b = 0;
        HSVtoRGB64(r, g, b, h, 65535, 1000);
        EXPECT_EQ(r, 1000) << h;
        EXPECT_EQ(g, 0) << h;
        EXPECT_EQ(b, 1000) << h;
    }
    long r = 0, g = 0, b = 0;
    HSVtoRGB64(r, g, b, 0x12345, 0, 777);
    EXPECT_EQ(std::min({ r, g, b }), 777);
    EXPECT_EQ(std::max({ r, g, b }), 777);
}

} // namespace
