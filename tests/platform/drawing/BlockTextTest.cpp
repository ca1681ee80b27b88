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
    Draw(1, 7, "a ");
    DrawText("\x82\xA0", 0, 2); // where the pen has moved to
    EXPECT_EQ(WidthOf("a \x82\xA0"), 2 * block_font::Narrow(8) + block_font::Wide(8));
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

} // namespace
