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

TEST(SettingsJson, EveryFieldComesBack) {
    std::string why;
    auto uncommon = Example();
    uncommon.crText = 0xFF000000;
    uncommon.nFontSize = -2147483647 - 1;
    for (std::uint32_t const flags : { Example().dwFlags, 0u, TEXT_INFO | TEXT_SCORE, 0xFFFFFFFFu,
                                       0x80000000u, TEXT_OFFCHARACTER | TEXT_BOX }) {
        auto param = flags == Example().dwFlags ? Example() : uncommon;
        param.dwFlags = flags;
        auto const back = SettingsFromJson(SettingsToJson(param), _TEXTPARAM {}, why);
        ASSERT_TRUE(back) << why;
        EXPECT_TRUE(SameBytes(*back, param)) << SettingsToJson(param);
    }
}

TEST(SettingsJson, WritesValuesThatPeopleCanRead) {
    auto const json = SettingsToJson(Example());
    for (auto const* part :
         { "\"kind\": \"dialogue\"", "\"color\": \"#112233\"", "\"boxColor\": \"#445566\"",
           "\"box\": true", "\"monologue\": true", R"("info": "PAN \"left\"")",
           R"("character": "太郎\\xFF")", R"("dialogue": "one\ntwo\n\\x0AC:\\\\three\n")" })
        EXPECT_THAT(json, HasSubstr(part));
}

TEST(SettingsJson, KeysThatAreNotGivenKeepTheirValue) {
    std::string why;
    auto const param =
        SettingsFromJson(R"({"kind":"info","info":"x","box":false})", Example(), why);
    ASSERT_TRUE(param) << why;
    auto expected = Example();
    expected.dwFlags = TEXT_INFO | TEXT_MONOLOGUE;
    std::memset(expected.szInfoText, 0, sizeof expected.szInfoText);
    expected.szInfoText[0] = 'x';
    EXPECT_TRUE(SameBytes(*param, expected)) << SettingsToJson(*param);
}

TEST(SettingsJson, NamesTheKeyAndTheReason) {
    auto const json = [](std::string key, std::string value) {
        return "{\"" + key + "\":" + value + "}";
    };
    struct Row {
        std::string json, start, reason;
    };
    for (auto const& row : {
             Row { json("colour", "1"), "colour: ", "no such setting" },
             Row { json("size", "\"36\""), "size: ", "whole number" },
             Row { json("size", "36.5"), "size: ", "whole number" },
             Row { json("size", "2147483648"), "size: ", "outside" },
             Row { json("size", "-9999999999"), "size: ", "outside" },
             Row { json("opacity", "101"), "opacity: ", "101 is outside 0 to 100" },
             Row { json("opacity", "18446744073709551615"), "opacity: ", "outside 0 to 100" },
             Row { json("scoreFormat", "4"), "scoreFormat: ", "outside 0 to 3" },
             Row { json("position", "[1]"), "position: ", "[x, y]" },
             Row { json("position", "[1,null]"), "position: ", "whole number" },
             Row { json("color", "\"blau\""), "color: ", "'blau' is no color" },
             Row { json("boxColor", "4294967296"), "boxColor: ", "outside" },
             Row { json("box", "1"), "box: ", "true or false" },
             Row { json("kind", "\"title\""), "kind: ", "'title' is no kind" },
             Row { json("kind", "[\"info\",3]"), "kind: ", "a text" },
             Row { json("font", "[]"), "font: ", "a text" },
             Row { json("info", "\"\\u0000\""), "info: ", "zero byte" },
             Row { json("info", "\"\\\\q\""), "info: ", "no escape" },
             Row { json("info", "\"" + std::string(64, 'x') + "\""), "info: ", "64 bytes" },
             Row { json("dialogue", "\"" + std::string(256, 'x') + "\""),
                   "dialogue: ", "limit is 255" },
             Row { R"({"size":1,"size":2})", "size: ", "twice" },
             Row { "[1]", "", "not one { ... }" },
             Row { "{\"size\":", "", "not readable as JSON: parse error at line 1" },
             Row { "", "", "not readable as JSON" },
         }) {
        std::string why;
        EXPECT_FALSE(SettingsFromJson(row.json, Example(), why)) << row.json;
        EXPECT_THAT(why, StartsWith(row.start)) << row.json;
        EXPECT_THAT(why, HasSubstr(row.reason)) << row.json;
    }
}

} // namespace
} // namespace host
