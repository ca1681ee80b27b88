// SPDX-License-Identifier: BSD-3-Clause
#include "host/document/SettingsJson.h"

#include <cstring>

#include <gmock/gmock.h>

namespace host {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

bool SameBytes(const _TEXTPARAM& a, const _TEXTPARAM& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

_TEXTPARAM Example() {
    _TEXTPARAM param {};
    param.ptPos = { -12, 345 };
    std::strcpy(param.szFontName, "DejaVu Sans");
    param.nFontSize = 36;
    param.crText = 0x00332211;
    param.crBack = 0x00665544;
    param.nOpacity = 70;
    param.nScoreFormat = 3;
    std::strcpy(param.szInfoText, "PAN \"left\"");
    std::strcpy(param.szCharacter, "太郎\xFF");
    std::strcpy(param.szDialogue, "one\rtwo\r\nC:\\three\r");
    param.dwFlags = TEXT_DIALOGUE | TEXT_BOX | TEXT_MONOLOGUE;
    return param;
}

TEST(SettingsJson, EveryFieldComesBackInFormsThatPeopleCanRead) {
    std::string why;
    auto uncommon = Example();
    uncommon.crText = 0xFF000000;
    uncommon.nFontSize = -2147483647 - 1;
    for (const std::uint32_t flags : { Example().dwFlags, 0u, TEXT_INFO | TEXT_SCORE, 0xFFFFFFFFu,
                                       0x80000000u, TEXT_OFFCHARACTER | TEXT_BOX }) {
        auto param = flags == Example().dwFlags ? Example() : uncommon;
        param.dwFlags = flags;
        const auto back = SettingsFromJson(SettingsToJson(param), _TEXTPARAM {}, why);
        ASSERT_TRUE(back) << why;
        EXPECT_TRUE(SameBytes(*back, param)) << SettingsToJson(param);
    }
    for (const auto* part :
         { "\"kind\": \"dialogue\"", "\"color\": \"#112233\"", R"("info": "PAN \"left\"")",
           R"("character": "太郎\\xFF")", R"("dialogue": "one\ntwo\n\\x0AC:\\\\three\n")" })
        EXPECT_THAT(SettingsToJson(Example()), HasSubstr(part));
}

TEST(SettingsJson, NamesTheKeyAndTheReason) {
    using Row = std::tuple<std::string, std::string, std::string>;
    const auto x64 = "\"" + std::string(64, 'x') + "\"";
    for (const auto& [key, value, reason] :
         { Row { "colour", "1", "no such setting" }, Row { "size", "\"36\"", "whole number" },
           Row { "size", "36.5", "whole number" }, Row { "size", "2147483648", "outside" },
           Row { "opacity", "18446744073709551615", "outside 0 to 100" },
           Row { "scoreFormat", "4", "outside 0 to 3" }, Row { "position", "[1]", "[x, y]" },
           Row { "position", "[1,null]", "whole number" },
           Row { "color", "\"blau\"", "'blau' is no color" },
           Row { "boxColor", "4294967296", "outside" }, Row { "box", "1", "true or false" },
           Row { "kind", "\"title\"", "'title' is no kind" },
           Row { "kind", "[\"info\",3]", "a text" }, Row { "info", "\"\\u0000\"", "zero byte" },
           Row { "info", "\"\\\\q\"", "no escape" }, Row { "info", x64, "64 bytes" },
           Row { "size", "1,\"size\":2", "twice" } }) {
        std::string why;
        EXPECT_FALSE(SettingsFromJson("{\"" + key + "\":" + value + "}", Example(), why));
        EXPECT_THAT(why, StartsWith(key + ": ")) << value;
        EXPECT_THAT(why, HasSubstr(reason)) << value;
    }
    for (const auto& [json, reason] : { std::pair { "[1]", "not one { ... }" },
                                        std::pair { "{\"size\":", "not readable as JSON: parse" },
                                        std::pair { "", "not readable as JSON" } }) {
        std::string why;
        EXPECT_FALSE(SettingsFromJson(json, Example(), why)) << json;
        EXPECT_THAT(why, HasSubstr(reason));
    }
}

} // namespace
} // namespace host
