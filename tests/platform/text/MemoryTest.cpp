// SPDX-License-Identifier: BSD-3-Clause
// One allocation after the other fails: what is drawn then is right or is not there at all, and what is
// drawn next is right.
#include <algorithm>
#include <gmock/gmock.h>
#include <memory>

#include "platform/drawing/CoveragePlane.h"
#include "platform/text/Layout.h"
#include "support/FailingMemory.h"
#include "support/TestWorld.h"

namespace {

using namespace platform;
using test::Pixels;
using test::TestWorld;

// Kerned, composed, reordered, joined, and of several families.
constexpr char kText[] = "AV e\u0301j\u0302 סוף سلم 日本";

bool Take(const TestWorld& world, Pixels& pixels) {
    if (!LockPixels(world.Map()))
        return false;
    const std::uint8_t* const base = GetPixBaseAddr(world.Map());
    if (base)
        std::copy_n(base, pixels.size(), pixels.begin());
    UnlockPixels(world.Map());
    return base;
}

constexpr std::int16_t kWidth = 280, kHeight = 90;
constexpr std::size_t kBytes = std::size_t { 4 } * kWidth * kHeight;

bool DrawFrame(const TestWorld& world, const char* line, Pixels& pixels) {
    world.Erase();
    test::UseFont("Liberation Sans", 30);
    test::Draw(2, 35, kText);
    test::Draw(2, 80, line);
    return Take(world, pixels);
}

TEST(MemoryTest, ATextThatCountsOnIsWholeOrNotThere) {
    test::ExpectAllOrNothing(kBytes, [] {
        PurgeTextCaches();
        Pixels older(kBytes);
        EXPECT_TRUE(DrawFrame(TestWorld(kWidth, kHeight), "CUT 00:", older));
        const auto world = std::make_shared<TestWorld>(kWidth, kHeight);
        return [world](Pixels& pixels) { return DrawFrame(*world, "CUT 009", pixels); };
    });
}

TEST(MemoryTest, WhatIsDrawnOnAWorldsOwnPixelsIsDrawnOnce) {
    test::ExpectAllOrNothing(kBytes, [] {
        PurgeTextCaches();
        const auto world = std::make_shared<TestWorld>(kWidth, kHeight);
        world->Erase();
        LockPixels(world->Map());
        GetWritablePixBaseAddr(world->Map());
        UnlockPixels(world->Map());
        TextSize(40);
        test::Draw(2, 40, "first");
        RGBForeColor({ 65535, 0, 0 });
        test::Draw(40, 60, "second");
        PaintRect({ 50, 50, 60, 60 });
        RGBForeColor({ 0, 0, 65535 });
        test::Draw(80, 80, "third");
        return [world](Pixels& pixels) { return Take(*world, pixels); };
    });
}

// From the file to the coverage of the glyphs, with nothing that anybody has kept.
TEST(MemoryTest, AFaceThatIsOpenedIsWholeOrNotThere) {
    const std::string file = ResolveFontFamily("DejaVu Sans").file;
    struct Opened {
        text::Family family;
        std::unique_ptr<text::Face> face;
    };
    test::ExpectAllOrNothing(300 * 60, [&file] {
        const auto opened = std::make_shared<Opened>();
        opened->family.name = "DejaVu Sans";
        // Fontconfig ends the process where it finds no memory, so it says now who else has characters.
        text::FontCatalog::Get().FallbackFor(opened->family, U"日");
        return [opened, &file](Pixels& pixels) {
            if (!opened->face) {
                std::string why;
                opened->face = text::Face::Open({ file }, why);
                EXPECT_EQ(why, ""); // or it were taken for broken
                opened->family.face = opened->face.get();
            }
            CoveragePlane plane({ 0, 0, 300, 60 });
            text::PaintGlyphs(text::LayOutGlyphs(opened->family, 30, kText).glyphs, 2, 40, plane);
            std::copy_n(plane.Row(0), pixels.size(), pixels.begin());
            return true;
        };
    });
}

} // namespace
