// SPDX-License-Identifier: BSD-3-Clause
#include <gmock/gmock.h>

#include "render/DrawColor.h"
#include "support/TestWorld.h"

TEST(DrawColor, FillsFramesAndKeepsThePortsColors) {
    const test::TestWorld world(4, 3);
    world.Erase();
    platform::RGBForeColor({ 1, 2, 3 });
    platform::Rect patch { 0, 0, 3, 3 };
    DrawColor(patch, 0xFF332211);
    EXPECT_THAT(world.Pixels(), testing::ElementsAre(0, 0, 0, 0xFFFFFF,        //
                                                     0, 0x112233, 0, 0xFFFFFF, //
                                                     0, 0, 0, 0xFFFFFF));
    platform::RGBColor fore {};
    platform::GetForeColor(&fore);
    EXPECT_EQ(fore.red, 1);
    EXPECT_EQ(fore.blue, 3);
}
