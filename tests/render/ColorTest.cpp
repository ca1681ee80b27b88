// SPDX-License-Identifier: BSD-3-Clause
// Colour words, and hue, saturation and value against formulas in 64 bits.
#include <array>
#include <random>

#include <gmock/gmock.h>

#include "render/ColorRef.h"
#include "support/TestWorld.h"

namespace {

TEST(DrawColorTest, FillsFramesAndKeepsThePortsColors) {
    const test::TestWorld world(4, 3);
    world.Erase();
    platform::RGBForeColor({ 0x12FF, 0x34EE, 0x56DD });
    platform::Rect patch { 0, 0, 3, 3 };
    DrawColor(patch, 0xFF332211);
    EXPECT_THAT(world.Pixels(), testing::ElementsAre(0, 0, 0, 0xFFFFFF,        //
                                                     0, 0x112233, 0, 0xFFFFFF, //
                                                     0, 0, 0, 0xFFFFFF));
    platform::RGBColor color {};
    platform::GetForeColor(&color);
    EXPECT_EQ(RGBtoCOLORREF(color), 0x563412u);
    COLORREFtoRGB(color, 0xFF00FE80);
    EXPECT_EQ(color.red, 0x8080);
    EXPECT_EQ(color.green, 0xFEFE);
}

using Numbers = std::array<long, 3>;

long Byte(std::mt19937& random) {
    return static_cast<long>(random() % 256);
}

Numbers ToHsv(long (*convert)(long&, long&, long&, long, long, long), Numbers rgb) {
    Numbers hsv { -1, -1, -1 };
    convert(hsv[0], hsv[1], hsv[2], rgb[0], rgb[1], rgb[2]);
    return hsv;
}

TEST(HsvTest, PutsPureColorsAtTheStartOfTheirSectorsAndBringsAllBack) {
    constexpr long kFull = 65535;
    const std::pair<Numbers, Numbers> rows[] { { { 0, 0, 0 }, { 0, 0, 0 } },
                                               { { 128, 128, 128 }, { 0, 0, 128 * 257 } },
                                               { { 255, 0, 0 }, { 0, kFull, kFull } },
                                               { { 255, 255, 0 }, { 0x10000, kFull, kFull } },
                                               { { 0, 255, 0 }, { 0x20000, kFull, kFull } },
                                               { { 0, 255, 255 }, { 0x30000, kFull, kFull } },
                                               { { 0, 0, 255 }, { 0x40000, kFull, kFull } },
                                               { { 255, 0, 255 }, { 0x50000, kFull, kFull } } };
    for (const auto& [rgb, hsv] : rows)
        EXPECT_EQ(ToHsv(RGB32toHSV, rgb), hsv);
    // Products that a long of 32 bits would not hold: 65535 * 65535, and a difference << 16.
    const auto part = static_cast<long>(30000LL * 65536 / 55535);
    EXPECT_EQ(ToHsv(RGB64toHSV, { 65535, 0, 1 }), (Numbers { 0x60000 - 1, kFull, kFull }));
    EXPECT_EQ(ToHsv(RGB64toHSV, { 1, 65535, 0 }), (Numbers { 0x20000 - 1, kFull, kFull }));
    EXPECT_EQ(ToHsv(RGB64toHSV, { 65535, 40000, 10000 }), (Numbers { part, 55535, kFull }));
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) { // and every colour comes back
        const Numbers in { Byte(random), Byte(random), Byte(random) };
        const Numbers out = ToHsv(HSVtoRGB32, ToHsv(RGB32toHSV, in));
        for (std::size_t channel = 0; channel < 3; ++channel)
            ASSERT_NEAR(in[channel], out[channel], 1) << in[0] << ' ' << in[1] << ' ' << in[2];
    }
}

TEST(HsvTest, TakesHuesOutsideForTheLast) {
    for (const long h : { 0x50000L, 0x60000L, 0x7FFF0000L, -0x10000L })
        EXPECT_EQ(ToHsv(HSVtoRGB64, { h, 65535, 1000 }), (Numbers { 1000, 0, 1000 })) << h;
    EXPECT_EQ(ToHsv(HSVtoRGB64, { 0x12345, 0, 777 }), (Numbers { 777, 777, 777 }));
}

} // namespace
