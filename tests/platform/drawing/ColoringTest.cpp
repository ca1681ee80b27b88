// SPDX-License-Identifier: BSD-3-Clause
// The colouring of coverage: every way, every width, against the arithmetic of one pixel.
#include "platform/drawing/Coloring.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

using namespace platform;

TEST(ColoringTest, MixRoundsToTheNearestOverTheWholeRange) {
    for (std::uint32_t x = 0; x <= 255 * 255; ++x)
        ASSERT_EQ(Div255(x), (2 * x + 255) / 510) << x;
    for (int under = 0; under < 256; ++under) {
        EXPECT_EQ(Mix(under, 77, 0), under);
        EXPECT_EQ(Mix(under, 77, 255), 77);
    }
}

TEST(ColoringTest, EveryWayMixesEachPixelAndWritesNoOther) {
    const TwoColors rows[] = { { { 0, 254, 254, 254 }, { 0, 0, 0, 0 } },
                               { { 0, 0, 0, 0 }, { 0, 255, 255, 255 } },
                               { { 0, 12, 200, 255 }, { 0, 250, 3, 77 } },
                               { { 9, 8, 8, 8 }, { 7, 200, 200, 200 } } };
    std::minstd_rand random(11);
    for (int index = 0; index < kColorWays; ++index) {
        const ColorWay way = ColorWayAt(index);
        for (std::int64_t width = 0; way.function && width <= 131; ++width) {
            constexpr std::int64_t kHeight = 2;
            const std::int64_t pixelStride = width * 4 + 64;
            std::vector<std::uint8_t> coverage((width + 3) * kHeight);
            for (std::size_t i = 0; i < coverage.size(); ++i) {
                const bool empty = (i / 32) % 2 == 1 || random() % 3 == 0;
                coverage[i] = empty ? 0 : static_cast<std::uint8_t>(random());
            }
            for (const TwoColors& colors : rows) {
                std::vector<std::uint8_t> expected(pixelStride * kHeight, 0xA5);
                for (std::int64_t i = 0; i < width * 4 * kHeight; ++i) {
                    const std::int64_t x = i % (width * 4), y = i / (width * 4);
                    expected[y * pixelStride + x] = Mix(colors.ground[i % 4], colors.text[i % 4],
                                                        coverage[y * (width + 3) + x / 4]);
                }
                std::vector<std::uint8_t> pixels(expected.size(), 0xA5);
                way.function(
                    { pixels.data(), pixelStride, coverage.data(), width + 3, width, kHeight },
                    colors);
                ASSERT_EQ(pixels, expected) << way.name << " " << width;
            }
        }
    }
}

} // namespace
