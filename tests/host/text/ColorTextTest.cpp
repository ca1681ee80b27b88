// SPDX-License-Identifier: BSD-3-Clause
#include "host/text/ColorText.h"

#include <gmock/gmock.h>

namespace host {
namespace {

TEST(ColorText, ReadsEveryWayOfWritingAColorAndNamesWhatIsNone) {
    struct Row {
        const char* text;
        COLORREF word = 0;           // with red in its low byte
        const char* color = nullptr; // none
    };
    for (const auto& row : {
             Row { "#102030", 0x302010, "#102030" },
             Row { "#fAb", 0xBBAAFF, "#FFAABB" },
             Row { "1, 2 ,255", 0xFF0201, "#0102FF" },
             Row { " White ", 0xFFFFFF, "#FFFFFF" },
             Row { "ORANGE", 0x00A5FF, "#FFA500" },
             Row { "" },
             Row { "#" },
             Row { "#12" },
             Row { "#1234567" },
             Row { "#12345g" },
             Row { "#-12" },
             Row { "1,2" },
             Row { "1,2,3,4" },
             Row { "1,2,256" },
             Row { "1,-2,3" },
             Row { "1,,3" },
             Row { "whiteish" },
             Row { "+1,2,3" },
         }) {
        std::string why;
        const auto color = ParseColor(row.text, why);
        ASSERT_EQ(color.has_value(), row.color != nullptr) << row.text << why;
        if (!color) {
            const auto named = "'" + std::string(row.text) + "' is no color";
            EXPECT_THAT(why, testing::StartsWith(named));
            continue;
        }
        EXPECT_EQ(*color, row.word) << row.text;
        EXPECT_EQ(FormatColor(*color), row.color) << row.text;
    }
}

} // namespace
} // namespace host
