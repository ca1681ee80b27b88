// SPDX-License-Identifier: BSD-3-Clause
#include "host/text/ColorText.h"

#include <gmock/gmock.h>

namespace host {
namespace {

TEST(ColorText, ReadsEveryWayOfWritingAColor) {
    struct Row {
        const char* text;
        COLORREF word; // with red in its low byte
        const char* color;
    };
    for (const auto& row : {
             Row { "#102030", 0x302010, "#102030" },
             Row { "#fAb", 0xBBAAFF, "#FFAABB" },
             Row { "1, 2 ,255", 0xFF0201, "#0102FF" },
             Row { " White ", 0xFFFFFF, "#FFFFFF" },
             Row { "ORANGE", 0x00A5FF, "#FFA500" },
         }) {
        std::string why;
        const auto color = ParseColor(row.text, why);
        ASSERT_EQ(color, row.word) << row.text << ": " << why;
        EXPECT_EQ(FormatColor(*color), row.color) << row.text;
    }
}

TEST(ColorText, NamesWhatIsNoColor) {
    for (const std::string text : { "", "#", "#12", "#1234567", "#12345g", "#-12", "1,2", "1,2,3,4",
                                    "1,2,256", "1,-2,3", "1,,3", "whiteish", "+1,2,3" }) {
        std::string why;
        EXPECT_FALSE(ParseColor(text, why)) << text;
        EXPECT_THAT(why, testing::StartsWith("'" + text + "' is no color")) << text;
    }
}

} // namespace
} // namespace host
