// SPDX-License-Identifier: BSD-3-Clause
// Worlds, ports and what lands in their pixels; runs with any font.
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "support/TestWorld.h"

namespace {

using namespace platform;
using test::Draw;
using test::TestWorld;

constexpr RGBColor kRed { 65535, 0, 0 };
constexpr RGBColor kKey { 0xFEFE, 0xFEFE, 0xFEFE };

TEST(WorldTest, SidesAndSizesHaveLimits) {
    const std::tuple<std::int16_t, Rect, OSStatus> rows[] {
        { 32, { 0, 0, 1, 1 }, kNoErr },
        { 32, { 5, 5, 5, 9 }, kParamErr },
        { 32, { 0, 9, 5, 5 }, kParamErr },
        { 16, { 0, 0, 5, 5 }, kParamErr },
        { 32, { 0, -1, 5, 32767 }, kParamErr },
        { 32, { 0, 0, 1, 32767 }, kNoErr },
        { 32, { 0, 0, 32767, 32767 }, kMemFullErr },
    };
    for (const auto& [depth, bounds, status] : rows) {
        GWorldPtr world = reinterpret_cast<GWorldPtr>(1);
        EXPECT_EQ(NewGWorld(&world, depth, bounds), status);
        EXPECT_EQ(world != nullptr, status == kNoErr);
        DisposeGWorld(world);
    }
}

TEST(WorldTest, PixelsHaveAnAddressOnlyWhileLocked) {
    const TestWorld world(3, 3);
    EXPECT_EQ(world.Pixels(), std::vector<std::uint32_t>(9, 0));
    EXPECT_EQ(GetPixBaseAddr(world.Map()), nullptr);
    EXPECT_EQ(GetWritablePixBaseAddr(world.Map()), nullptr);
    LockPixels(world.Map());
    LockPixels(world.Map());
    UnlockPixels(world.Map());
    EXPECT_NE(GetPixBaseAddr(world.Map()), nullptr);
    UnlockPixels(world.Map());
    UnlockPixels(world.Map());
    EXPECT_EQ(GetPixBaseAddr(world.Map()), nullptr);
}

TEST(WorldTest, RectanglesAreClippedToTheWorld) {
    for (const Rect& rect : { Rect { 1, 1, 9, 3 }, Rect { -9, -9, 2, 2 }, Rect { 2, 2, 1, 9 },
                              Rect { -32768, -32768, 32767, 32767 } }) {
        std::vector<std::uint32_t> painted, framed;
        for (int i = 0; i < 12; ++i) {
            const int x = i % 4, y = i / 4;
            const bool inside =
                x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
            const bool edge =
                x == rect.left || x == rect.right - 1 || y == rect.top || y == rect.bottom - 1;
            painted.push_back(inside ? 0xFF0000 : 0xFFFFFF);
            framed.push_back(inside && edge ? 0xFF0000 : 0xFFFFFF);
        }
        const TestWorld world(4, 3);
        world.Erase();
        RGBForeColor(kRed);
        PaintRect(rect);
        EXPECT_EQ(world.Pixels(), painted);
        world.Erase();
        FrameRect(rect);
        EXPECT_EQ(world.Pixels(), framed);
    }
}

TEST(WorldTest, PortStateBelongsToTheWorldAndTheThread) {
    const TestWorld first(2, 2);
    TextSize(30);
    TextFace(3);
    TextMode(kSrcCopy);
    {
        const TestWorld second(2, 2);
        EXPECT_EQ(GetPortTextSize(second.World()), 0);
    }
    EXPECT_EQ(GetPort(), first.World());
    EXPECT_EQ(GetPortTextSize(GetPort()), 30);
    EXPECT_EQ(GetPortTextFace(GetPort()), 3);
    EXPECT_EQ(GetPortTextMode(GetPort()), kSrcCopy);
    std::thread([] {
        EXPECT_EQ(GetPort(), nullptr);
        RGBForeColor(kRed);
        RGBColor color { 1, 1, 1 };
        GetForeColor(&color);
        EXPECT_EQ(color.red, 0);
        FontInfo info { 1, 1, 1, 1 };
        GetFontInfo(&info);
        EXPECT_EQ(info.ascent, 0);
        EXPECT_EQ(TextWidth("abc", 0, 3), 0);
    }).join();
}

TEST(WorldTest, ExtremePensAndSizesStayInsideAndNegativeOnesDrawNothing) {
    const TestWorld world(33, 17);
    world.Erase();
    for (const std::int16_t size : { -32768, -1, 1, 12, 500, 32767 }) {
        TextSize(size);
        FontInfo info;
        GetFontInfo(&info);
        EXPECT_EQ(info.ascent + info.descent > 0, size > 0);
        EXPECT_EQ(TextWidth("Wg", 0, 2) > 0, size > 0);
        for (const std::int16_t x : { -32768, -100, -1, 0, 32, 32767 })
            for (const std::int16_t y : { -32768, -1, 0, 16, 400, 32767 }) {
                Draw(x, y, "W\xE6\x97\xA5g");
                DrawText("again", 0, 5);
            }
        const auto pixels = world.Pixels();
        if (size < 0)
            EXPECT_EQ(pixels, std::vector<std::uint32_t>(33 * 17, 0xFFFFFF));
    }
    TextSize(12);
    const std::int32_t standard = TextWidth("abc", 0, 3);
    TextSize(0);
    EXPECT_EQ(TextWidth("abc", 0, 3), standard);
    EXPECT_EQ(TextWidth("xabc", 1, 3), standard);
    EXPECT_EQ(TextWidth("abc", 0, 0), 0);
    EXPECT_EQ(TextWidth("abc", -1, 2), 0);
}

TEST(WorldTest, WritersGetPixelsOfTheirOwn) {
    const auto draw = [] {
        EraseRect({ 0, 0, 20, 40 });
        TextSize(16);
        Draw(2, 15, "Ag");
    };
    const TestWorld reader(40, 20);
    draw();
    const std::vector<std::uint32_t> before = reader.Pixels();
    {
        const TestWorld writer(40, 20);
        draw();
        EXPECT_EQ(writer.Pixels(), before);
        LockPixels(writer.Map());
        GetWritablePixBaseAddr(writer.Map())[1] = 99;
        EXPECT_EQ(GetPixBaseAddr(writer.Map())[1], 99);
        UnlockPixels(writer.Map());
        std::vector<std::uint32_t> expected = before;
        expected[0] = (99 << 16) | (expected[0] & 0xFFFF);
        EXPECT_EQ(writer.Pixels(), expected);
        Draw(20, 15, "Ag"); // goes on on top of what was written
        EXPECT_EQ(writer.Pixels()[0], expected[0]);
        EXPECT_NE(writer.Pixels(), expected);
    }
    EXPECT_EQ(reader.Pixels(), before);
}

// Pixels that a writer asks for are always drawn as a whole.
std::vector<std::uint32_t> DrawnAsAWhole(const TestWorld& world) {
    LockPixels(world.Map());
    GetWritablePixBaseAddr(world.Map());
    UnlockPixels(world.Map());
    return world.Pixels();
}

TEST(WorldTest, ATextThatChangesGivesThePixelsOfAFreshOne) {
    const char* const texts[] = { "CUT 008", "CUT 009",        "CUT 009", "CUT 009",
                                  "CUT 009", "CUT 009",        "CUT 010", "CUT 01",
                                  "CUT 01.", "cut 01.",        "W.W",     "WWW",
                                  "WjW",     "\xE6\x97\xA5jW", "",        "WjW" };
    for (const std::int16_t size : { 16, 31, 120, 900 }) {
        for (const std::int16_t width : { 20, 100, 233 }) {
            int count = 0;
            for (const char* const text : texts) {
                const TestWorld world(width, 90);
                const int style = count++ % 5; // at times other pens, another ink, another ground
                RGBBackColor(style == 1 ? kRed : kKey);
                world.Erase();
                TextSize(size);
                RGBForeColor(style == 2 ? kRed : RGBColor {});
                Draw(style == 3 ? 0 : -3, 30, text);
                Draw(2, 45, "fixed, jay"); // in the way
                const auto pixels = world.Pixels();
                ASSERT_EQ(pixels, DrawnAsAWhole(world)) << size << " " << width << " " << text;
            }
        }
    }
}

// Over one colour, over what is only known to be one colour, and over pixels of the world's own.
TEST(WorldTest, OverlappingTextIsTheSameOverEveryGround) {
    enum class Ground { kWhole, kParts, kOwn };
    std::vector<std::uint32_t> first;
    for (const Ground ground : { Ground::kWhole, Ground::kParts, Ground::kOwn }) {
        const TestWorld world(60, 20);
        RGBBackColor(kKey);
        world.Erase();
        if (ground == Ground::kParts)
            EraseRect({ 0, 3, 20, 30 });
        else if (ground == Ground::kOwn)
            DrawnAsAWhole(world);
        RGBForeColor(kRed);
        TextSize(16);
        for (const std::int16_t x : { 2, 3, 7 })
            Draw(x, 15, "Ag/");
        first = first.empty() ? world.Pixels() : first;
        EXPECT_EQ(world.Pixels(), first);
    }
    EXPECT_NE(first, std::vector<std::uint32_t>(60 * 20, 0xFEFEFE));
}

TEST(WorldTest, DrawingWithoutEndGivesThePixelsOfFewSteps) {
    const TestWorld world(8, 8);
    EraseRect({ 0, 0, 8, 8 });
    RGBForeColor(kRed);
    for (int round = 0; round < 100; ++round)
        for (std::int16_t i = 0; i < 8; ++i)
            PaintRect({ i, i, static_cast<std::int16_t>(i + 1), static_cast<std::int16_t>(i + 1) });
    for (int i = 0; i < 64; ++i)
        EXPECT_EQ(world.Pixels()[i], i % 9 == 0 ? 0xFF0000u : 0xFFFFFFu);
}

} // namespace
