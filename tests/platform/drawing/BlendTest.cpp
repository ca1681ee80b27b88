// SPDX-License-Identifier: BSD-3-Clause
// The arithmetic of coverage.
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

TEST(BlendTest, EachPixelIsMixedByItsCoverage) {
    std::minstd_rand random(7);
    const Pixel color { 0, 12, 200, 255 };
    std::vector<std::uint8_t> pixels(41 * 4), coverage(40);
    for (std::uint8_t& byte : pixels) {
        byte = static_cast<std::uint8_t>(random());
    }
    for (std::uint8_t& byte : coverage) {
        byte = random() % 3 == 0 ? 0 : static_cast<std::uint8_t>(random());
    }
    std::vector<std::uint8_t> expected = pixels;
    for (std::size_t i = 0; i < coverage.size() * 4; ++i) {
        expected[i] = Mix(pixels[i], color[i % 4], coverage[i / 4]);
    }
    BlendPixels(pixels.data(), coverage.data(), 40, color);
    EXPECT_EQ(pixels, expected);
}

} // namespace
