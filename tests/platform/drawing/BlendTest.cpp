// SPDX-License-Identifier: BSD-3-Clause
// The arithmetic of coverage, and the vector loops against the plain one.
#include "platform/drawing/Blend.h"

#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

using namespace platform;

TEST(BlendTest, MixRoundsToTheNearestOverTheWholeRange) {
    for (std::uint32_t x = 0; x <= 255 * 255; ++x) {
        ASSERT_EQ(Div255(x), (2 * x + 255) / 510) << x;
    }
    for (int under = 0; under < 256; ++under) {
        EXPECT_EQ(Mix(under, 77, 0), under);
        EXPECT_EQ(Mix(under, 77, 255), 77);
    }
}

TEST(BlendTest, EveryWayGivesTheBytesOfThePlainOne) {
    std::minstd_rand random(7);
    const Pixel color { 0, 12, 200, 255 };
    int ways = 0;
    for (int index = 1; index < kBlendWays; ++index) {
        const BlendWay way = BlendWayAt(index);
        ways += way.function != nullptr;
        for (int width = 0; way.function && width <= 41; ++width) {
            const std::int64_t pixelStride = width * 4 + 12;
            std::vector<std::uint8_t> expected(pixelStride * 3 + 16);
            for (std::uint8_t& byte : expected) {
                byte = static_cast<std::uint8_t>(random());
            }
            std::vector<std::uint8_t> coverage((width + 3) * 3);
            for (std::uint8_t& byte : coverage) {
                const auto kind = random() % 4;
                byte = kind == 0 ? 255 : kind < 3 ? 0 : static_cast<std::uint8_t>(random());
            }
            std::vector<std::uint8_t> pixels = expected;
            BlendWayAt(0).function(
                { expected.data(), pixelStride, coverage.data(), width + 3, width, 3 }, color);
            way.function({ pixels.data(), pixelStride, coverage.data(), width + 3, width, 3 },
                         color);
            ASSERT_EQ(pixels, expected) << way.name << " " << width;
        }
    }
#if defined(__x86_64__)
    EXPECT_GE(ways, 1);
#endif
}

} // namespace
