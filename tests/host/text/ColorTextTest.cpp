// SPDX-License-Identifier: BSD-3-Clause
#include "host/text/ColorText.h"

#include <gmock/gmock.h>

namespace host {
namespace {

TEST(ColorText, ReadsEveryWayOfWritingAColor) {
    for (const auto& [text, written] :
         { std::pair { "#102030", "#102030" }, std::pair { "#fAb", "#FFAABB" },
           std::pair { "1, 2 ,255", "#0102FF" }, std::pair { " White ", "#FFFFFF" },
           std::pair { "ORANGE", "#FFA500" } }) {
        std::string why;
        const auto color = ParseColor(text, why);
        ASSERT_TRUE(color) << text << ": " << why;
        EXPECT_EQ(FormatColor(*color), written);
    }
    std::string why;
    EXPECT_EQ(ParseColor("#102030", why), 0x302010U) << "with red in the low byte";
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
