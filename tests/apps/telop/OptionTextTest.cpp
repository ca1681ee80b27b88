// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/OptionText.h"

#include <gmock/gmock.h>

#include "apps/telop/CommandError.h"
#include "support/TemporaryFolder.h"

namespace telop {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(OptionText, ReadsPoints) {
    struct Row {
        const char* text;
        std::int32_t x, y;
    };
    for (auto const& row : { Row { "54,41", 54, 41 }, Row { "-5,+7", -5, 7 },
                             Row { "2147483647,-2147483648", 2147483647, -2147483647 - 1 } }) {
        auto const point = ParsePoint("--at", row.text);
        EXPECT_EQ(point.x, row.x) << row.text;
        EXPECT_EQ(point.y, row.y) << row.text;
    }
    for (auto const* text :
         { "", "1", "1,", ",1", "1,2,3", "1.5,2", "1, 2", "2147483648,0", "+-1,2" })
        EXPECT_THROW(ParsePoint("--at", text), CommandError) << text;
}

TEST(OptionText, SplitsStringsAtCommas) {
    EXPECT_THAT(SplitStrings("--strings", ",,12,{frame}"), ElementsAre("", "", "12", "{frame}"));
    EXPECT_THAT(SplitStrings("--strings", R"(a\,b,c\d,,)"), ElementsAre("a,b", R"(c\d)", "", ""));
    for (auto const* text : { "", "a,b,c", "a,b,c,d,e" })
        EXPECT_THROW(SplitStrings("--strings", text), CommandError) << text;
}

TEST(OptionText, DialogueBreaksItsLinesWithCarriageReturns) {
    struct Row {
        const char* typed;
        const char* text;
    };
    for (auto const& row : {
             Row { "one", "one" },
             Row { R"(one\ntwo)", "one\rtwo" },
             Row { "one\ntwo\r\nthree", "one\rtwo\rthree" },
             Row { R"(C:\\new \t)", R"(C:\new \t)" },
             Row { "@@home", "@home" },
         })
        EXPECT_EQ(DialogueText("--dialogue", row.typed), row.text) << row.typed;
}

TEST(OptionText, ADialogueFileLosesOnlyItsMarkAndLastLineBreak) {
    TemporaryFolder const folder;
    struct Row {
        const char* contents;
        const char* text;
    };
    for (auto const& row : {
             Row { "\xEF\xBB\xBFone\r\ntwo\r\n", "one\rtwo" },
             Row { "one\n\n", "one\r" },
             Row { R"(a\nb)", R"(a\nb)" },
             Row { "", "" },
         }) {
        auto const file = folder.Write("line.txt", row.contents);
        EXPECT_EQ(DialogueText("--dialogue", "@" + file.string()), row.text) << row.contents;
    }
}

} // namespace
} // namespace telop
