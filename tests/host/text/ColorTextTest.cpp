// SPDX-License-Identifier: BSD-3-Clause
#include "host/text/ColorText.h"

#include <gmock/gmock.h>

namespace host {
namespace {

TEST(ColorText, ReadsEveryWayOfWritingAColor) {
    struct Row {
        const char* text;
        const char* color;
    };
    for (auto const& row : {
             Row { "#102030", "#102030" },
             Row { "#fAb", "#FFAABB" },
             Row { "1, 2 ,255", "#0102FF" },
             Row { " White ", "#FFFFFF" },
             Row { "ORANGE", "#FFA500" },
         }) {
        std::string why;
        auto const color = ParseColor(row.text, why);
        ASSERT_TRUE(color) << row.text << ": " << why;
        EXPECT_EQ(FormatColor(*color), row.color) << row.text;
    }
}

TEST(ColorText, PutsRedIntoTheLowByte) {
    std::string why;
    EXPECT_EQ(ParseColor("#112233", why), 0x332211u);
    EXPECT_EQ(ParseColor("1,2,3", why), 0x030201u);
}

TEST(ColorText, NamesWhatIsNoColor) {
    for (std::string const text : { "", "#", "#12", "#1234567", "#12345g", "#-12", "1,2", "1,2,3,4",
                                    "1,2,256", "1,-2,3", "1,,3", "whiteish", "+1,2,3" }) {
        std::string why;
        EXPECT_FALSE(ParseColor(text, why)) << text;
        EXPECT_THAT(why, testing::StartsWith("'" + text + "' is no color")) << text;
    }
}

} // namespace
} // namespace host
