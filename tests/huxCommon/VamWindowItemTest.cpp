// SPDX-License-Identifier: BSD-3-Clause
#include <gmock/gmock.h>

#include "huxCommon/huxGUI/HuxEvents.h"
#include "huxCommon/huxUtility/VamWindowItem.h"
#include "platform/ui/Controls.h"
#include "support/WindowRefs.h"

TEST(VamWindowItem, GivesTheBoundsOfTheItemAndTheAddressOfItsResult) {
    platform::WindowRef window = nullptr;
    ASSERT_TRUE(window = platform::Window::Create({ 0, 0, 100, 200 }));
    platform::Control::Create(window, "UserPane", { 10, 20, 40, 80 })->id =
        platform::ControlID { kHuxPropertyCreator, 91 };

    platform::Rect bounds { 1, 2, 3, 4 };
    EXPECT_EQ(vamGetWindowItemAsRect(window, 92, &bounds), platform::kErrControlNotFound);
    EXPECT_EQ(bounds.right, 4);
    const platform::OSStatus status = vamGetWindowItemAsRect(window, 91, &bounds);
    EXPECT_EQ(status, static_cast<std::int32_t>(reinterpret_cast<std::uintptr_t>(&bounds)));
    EXPECT_EQ(bounds.top, 10);
    EXPECT_EQ(bounds.left, 20);
    EXPECT_EQ(bounds.bottom, 40);
    EXPECT_EQ(bounds.right, 80);
    test::Dispose(window);
    EXPECT_NE(vamGetWindowItemAsRect(window, 91, &bounds), platform::kNoErr);
}
