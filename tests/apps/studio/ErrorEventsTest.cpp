// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/ErrorEvents.h"

#include <gmock/gmock.h>

namespace studio {

namespace {

TEST(ErrorEvents, SayWhatWasBeingHandled) {
    struct Row {
        std::uint32_t eventClass, kind;
        std::int32_t code;
        const char* text;
    };
    for (auto const& row : {
             Row { 0x636D6473, 1, -50, "handled a command ('cmds', kind 1; code -50)" },
             Row { 0x6D6F7573, 10, -1, "handled the mouse wheel ('mous', kind 10; code -1)" },
             Row { 0x6D6F7573, 1, -1, "handled the mouse ('mous'" },
             Row { 0x41424344, 7, 3, "handled an event ('ABCD', kind 7; code 3)" },
             Row { 0x00424344, 7, 3, "handled an event (0x00424344, kind 7" },
             Row { 0, 0, -108, "ran into an error (code -108)" },
         }) {
        PluginError const error { {}, row.code, row.eventClass, row.kind };
        EXPECT_THAT(Describe(error).toStdString(), testing::HasSubstr(row.text));
    }
}

// A parameter of another size is not read past its end.
TEST(ErrorEvents, HearOnlyWholeRecords) {
    int heard = 0;
    ErrorEvents const listener([&heard](const PluginError&) { ++heard; });
    struct Row {
        std::size_t size;
        int heard;
    };
    PluginError const error { {}, 1, 2, 3 };
    for (auto const& row : { Row { sizeof error - 4, 0 }, Row { sizeof error, 1 } }) {
        platform::EventRef event = nullptr;
        ASSERT_EQ(platform::CreateEvent(kPluginErrorClass, kPluginErrorKind, 0, &event), 0);
        platform::SetEventParameter(event, kPluginErrorClass, kPluginErrorClass,
                                    static_cast<std::uint32_t>(row.size), &error);
        platform::SendEventToEventTarget(event, platform::GetApplicationEventTarget());
        platform::ReleaseEvent(event);
        EXPECT_EQ(heard, row.heard) << row.size;
    }
}

} // namespace

} // namespace studio
