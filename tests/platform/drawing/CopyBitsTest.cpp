// SPDX-License-Identifier: BSD-3-Clause
// Copies between worlds against the plain definition, pixel by pixel.
#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "support/TestWorld.h"

namespace {

using namespace platform;
using test::TestWorld;

using Pixels = std::vector<std::uint32_t>;

// A world that is different in each pixel, so that a wrong one is seen.
struct Filled {
    Filled(std::int16_t width, std::int16_t height, std::uint8_t blue)
        : world(width, height), width(width), height(height) {
        LockPixels(world.Map());
        std::uint8_t* const base = GetWritablePixBaseAddr(world.Map());
        for (int i = 0; i < width * height; ++i) {
            const int x = i % width, y = i / width;
            const std::array<int, 4> pixel { 0, x, y, blue };
            std::copy_n(pixel.begin(), 4, base + y * GetPixRowBytes(world.Map()) + x * 4);
        }
        UnlockPixels(world.Map());
    }

    TestWorld world;
    std::int64_t width, height;
};

// The source's index for a target's; exact, in integers.
std::int64_t SourceOf(std::int64_t at, std::int64_t toLow, std::int64_t toHigh,
                      std::int64_t fromLow, std::int64_t fromHigh) {
    return fromLow + (2 * (at - toLow) + 1) * (fromHigh - fromLow) / (2 * (toHigh - toLow));
}

void ExpectPlainResult(const Filled& from, const Rect& fromRect, const Filled& to,
                       const Rect& toRect) {
    const Pixels source = from.world.Pixels();
    Pixels expected = to.world.Pixels();
    const bool empty = fromRect.left >= fromRect.right || fromRect.top >= fromRect.bottom;
    for (std::int64_t i = 0; !empty && i < to.width * to.height; ++i) {
        const std::int64_t x = i % to.width, y = i / to.width;
        if (x < toRect.left || x >= toRect.right || y < toRect.top || y >= toRect.bottom)
            continue;
        const auto sx = SourceOf(x, toRect.left, toRect.right, fromRect.left, fromRect.right);
        const auto sy = SourceOf(y, toRect.top, toRect.bottom, fromRect.top, fromRect.bottom);
        if (sx >= 0 && sx < from.width && sy >= 0 && sy < from.height)
            expected[i] = source[sy * from.width + sx];
    }
    EXPECT_EQ(CopyBits(from.world.World(), fromRect, to.world.World(), toRect), kNoErr);
    EXPECT_EQ(to.world.Pixels(), expected)
        << fromRect.left << " " << fromRect.top << " to " << toRect.left << " " << toRect.top;
}

void ExpectPlainResult(const Rect& fromRect, const Rect& toRect) {
    ExpectPlainResult(Filled(23, 17, 1), fromRect, Filled(31, 19, 2), toRect);
}

TEST(CopyBitsTest, CopiesScalesAndClipsAsThePlainDefinitionSays) {
    constexpr std::int16_t kLow = -32768, kHigh = 32767;
    ExpectPlainResult({ 0, 0, 17, 23 }, { 0, 0, 17, 23 });             // whole, same size
    ExpectPlainResult({ 0, 0, 17, 23 }, { -40, -60, 100, 200 });       // seen through the world
    ExpectPlainResult({ kLow, kLow, kHigh, kHigh }, { 0, 0, 19, 31 }); // hardly anything inside
    ExpectPlainResult({ 0, 0, 17, 23 }, { kLow, kLow, kHigh, kHigh });
    ExpectPlainResult({ 5, 5, 5, 9 }, { 0, 0, 19, 31 }); // empty
    ExpectPlainResult({ 0, 0, 17, 23 }, { 9, 9, 3, 3 }); // turned over
    const Filled itself(31, 19, 3);
    ExpectPlainResult(itself, { 0, 0, 10, 10 }, itself, { 1, 1, 11, 11 });
    ExpectPlainResult(itself, { 0, 0, 10, 10 }, itself, { 4, 6, 19, 31 });
    std::mt19937 random(7);
    const auto some = [&](int low, int high) {
        return static_cast<std::int16_t>(std::uniform_int_distribution<int>(low, high)(random));
    };
    for (int i = 0; i < 200; ++i)
        ExpectPlainResult({ some(-10, 20), some(-10, 25), some(0, 30), some(0, 40) },
                          { some(-10, 20), some(-10, 30), some(0, 40), some(0, 60) });
}

TEST(CopyBitsTest, WhatWasDrawnButNeverLockedIsCopiedAndDrawnOver) {
    const TestWorld from(4, 4);
    RGBBackColor({ 65535, 0, 0 });
    from.Erase();
    const TestWorld to(4, 4);
    to.Erase();
    EXPECT_EQ(CopyBits(from.World(), { 0, 0, 1, 1 }, to.World(), { 0, 0, 1, 1 }), kNoErr);
    RGBForeColor({ 0, 65535, 0 });
    PaintRect({ 0, 1, 1, 2 });
    const auto pixels = to.Pixels();
    EXPECT_EQ(pixels[0], 0xFF0000U);
    EXPECT_EQ(pixels[1], 0x00FF00U);
    EXPECT_EQ(pixels[2], 0xFFFFFFU);
    EXPECT_EQ(CopyBits(nullptr, {}, to.World(), {}), kParamErr);
    EXPECT_EQ(CopyBits(to.World(), {}, nullptr, {}), kParamErr);
}

} // namespace
