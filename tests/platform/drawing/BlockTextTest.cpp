// SPDX-License-Identifier: BSD-3-Clause
// Text down to its pixels, by arithmetic, with the font of blocks.
#include "platform/TextEncoding.h"
#include "support/BlockFont.h"
#include "support/TestWorld.h"

namespace {

using namespace platform;
using test::Draw;
using test::TestWorld;
using test::WidthOf;

TEST(BlockTextTest, CharactersLandWhereTheirAdvancesSay) {
    SetApplicationTextEncoding("CP932");
    const TestWorld world(20, 10);
    world.Erase();
    TextSize(8);
    RGBForeColor({ 65535, 0, 0x8080 });
    const std::string text = "a \x82\xA0";
    Draw(1, 7, text);
    EXPECT_EQ(WidthOf(text), 2 * block_font::Narrow(8) + block_font::Wide(8));
    const std::vector<std::uint32_t> pixels = world.Pixels();
    for (int y = 0; y < 10; ++y) {
        for (int x = 0; x < 20; ++x) {
            const bool row = y >= 7 - block_font::Ascent(8) && y < 7;
            const bool inked = row && ((x >= 1 && x < 4) || (x >= 9 && x < 16));
            EXPECT_EQ(pixels[y * 20 + x], inked ? 0xFF0080u : 0xFFFFFFu) << x << "," << y;
        }
    }
    SetApplicationTextEncoding("UTF-8");
}

TEST(BlockTextTest, ThePenMovesByTheWidth) {
    const TestWorld together(40, 10), apart(40, 10);
    for (const TestWorld* world : { &together, &apart }) {
        SetPort(world->World());
        world->Erase();
        TextSize(8);
    }
    SetPort(together.World());
    Draw(2, 8, "abc");
    SetPort(apart.World());
    Draw(2, 8, "ab");
    DrawText("c", 0, 1);
    EXPECT_EQ(apart.Pixels(), together.Pixels());
}

} // namespace
