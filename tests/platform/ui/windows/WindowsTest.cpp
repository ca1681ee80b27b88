// SPDX-License-Identifier: BSD-3-Clause
#include <gmock/gmock.h>

#include "platform/ui/Windows.h"

namespace platform {
namespace {

TEST(WindowsTest, AReferenceToNothingGivesAStatus) {
    EXPECT_FALSE(IsValidWindowPtr(nullptr));
    EXPECT_EQ(ShowWindow(nullptr), kErrInvalidWindow);
    EXPECT_EQ(GetWindowEventTarget(nullptr), nullptr);
}

} // namespace
} // namespace platform
