// SPDX-License-Identifier: BSD-3-Clause
// Copies between worlds against the plain definition, pixel by pixel.
#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "support/TestWorld.h"

namespace {

using namespace platform;
using test::TestWorld;

constexpr std::int16_t kFromWidth = 23, kFromHeight = 17, kToWidth = 31, kToHeight = 19;

// Different in each pixel, so that a wrong one is seen.
void FillWith(const TestWorld& world, std::int16_t width, std::int16_t height, std::uint8_t blue) {
    ASSERT_TRUE(LockPixels(world.Map()));
    std::uint8_t* const base = GetWritablePixBaseAddr(world.Map());
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            std::uint8_t* const pixel = base + y * GetPixRowBytes(world.Map()) + x * 4;
            pixel[0] = 0;
            pixel[1] = static_cast<std::uint8_t>(x);
            pixel[2] = static_cast<std::uint8_t>(y);
            pixel[3] = blue;
        }
    }
    UnlockPixels(world.Map());
}

// The source's index for a target's; exact, in integers.
std::int64_t SourceOf(std::int64_t at, std::int64_t toLow, std::int64_t toHigh,
                      std::int64_t fromLow, std::int64_t fromHigh) {
    return fromLow + (2 * (at - toLow) + 1) * (fromHigh - fromLow) / (2 * (toHigh - toLow));
}

std::vector<std::uint32_t> Plain(const std::vector<std::uint32_t>& from, const Rect& fromRect,
                                 std::vector<std::uint32_t> to, std::int16_t toWidth,
                                 std::int16_t toHeight, const Rect& toRect, std::int16_t fromWidth,
                                 std::int16_t fromHeight) {
    if (fromRect.left >= fromRect.right || fromRect.top >= fromRect.bottom)
        return to;
    for (std::int64_t y = 0; y < toHeight; ++y) {
        for (std::int64_t x = 0; x < toWidth; ++x) {
            if (x < toRect.left || x >= toRect.right || y < toRect.top || y >= toRect.bottom)
                continue;
            const auto sx = SourceOf(x, toRect.left, toRect.right, fromRect.left, fromRect.right);
            const auto sy = SourceOf(y, toRect.top, toRect.bottom, fromRect.top, fromRect.bottom);
            if (sx >= 0 && sx < fromWidth && sy >= 0 && sy < fromHeight)
                to[y * toWidth + x] = from[sy * fromWidth + sx];
        }
    }
    return to;
}

void ExpectPlainResult(const Rect& fromRect, const Rect& toRect) {
    const TestWorld from(kFromWidth, kFromHeight);
    const TestWorld to(kToWidth, kToHeight);
    FillWith(from, kFromWidth, kFromHeight, 1);
    FillWith(to, kToWidth, kToHeight, 2);
    const auto expected = Plain(from.Pixels(), fromRect, to.Pixels(), kToWidth, kToHeight, toRect,
                                kFromWidth, kFromHeight);
    EXPECT_EQ(CopyBits(from.World(), fromRect, to.World(), toRect), kNoErr);
    EXPECT_EQ(to.Pixels(), expected)
        << fromRect.left << " " << fromRect.top << " to " << toRect.left << " " << toRect.top;
}

TEST(CopyBitsTest, CopiesScalesAndClipsAsThePlainDefinitionSays) {
    constexpr std::int16_t kLow = -32768, kHigh = 32767;
    struct Row {
        Rect from, to;
    };
    for (const Row& row : {
             Row { { 0, 0, 17, 23 }, { 0, 0, 17, 23 } },             // whole, same size
             Row { { -5, -5, 5, 5 }, { 4, 4, 14, 14 } },             // reads from outside
             Row { { 0, 0, 17, 23 }, { 0, 0, 19, 31 } },             // larger
             Row { { 0, 0, 17, 23 }, { -40, -60, 100, 200 } },       // seen through the world
             Row { { kLow, kLow, kHigh, kHigh }, { 0, 0, 19, 31 } }, // hardly anything inside
             Row { { 0, 0, 17, 23 }, { kLow, kLow, kHigh, kHigh } },
             Row { { 5, 5, 5, 9 }, { 0, 0, 19, 31 } },     // empty
             Row { { 0, 0, 17, 23 }, { 9, 9, 3, 3 } },     // turned over
             Row { { 50, 50, 60, 60 }, { 0, 0, 10, 10 } }, // all outside
         })
        ExpectPlainResult(row.from, row.to);
}

TEST(CopyBitsTest, AnyRectanglesGiveThePlainResult) {
    std::mt19937 random(7);
    const auto some = [&](int low, int high) {
        return static_cast<std::int16_t>(std::uniform_int_distribution<int>(low, high)(random));
    };
    for (int i = 0; i < 200; ++i)
        ExpectPlainResult({ some(-10, 20), some(-10, 25), some(0, 30), some(0, 40) },
                          { some(-10, 20), some(-10, 30), some(0, 40), some(0, 60) });
}

TEST(CopyBitsTest, AWorldCopiesWithinItselfAsFromACopy) {
    for (const Rect& toRect : { Rect { 1, 1, 11, 11 }, Rect { 4, 6, 19, 31 } }) {
        const TestWorld world(kToWidth, kToHeight);
        FillWith(world, kToWidth, kToHeight, 3);
        const Rect fromRect { 0, 0, 10, 10 };
        const auto before = world.Pixels();
        const auto expected =
            Plain(before, fromRect, before, kToWidth, kToHeight, toRect, kToWidth, kToHeight);
        EXPECT_EQ(CopyBits(world.World(), fromRect, world.World(), toRect), kNoErr);
        EXPECT_EQ(world.Pixels(), expected);
    }
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
