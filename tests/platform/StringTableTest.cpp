// SPDX-License-Identifier: BSD-3-Clause
#include "platform/StringTable.h"

#include <gmock/gmock.h>

namespace platform {
namespace {

using testing::ElementsAre;
using testing::Pair;

TEST(StringTable, ReadsValues) {
    // A text and the value of its key "k".
    const std::pair<const char*, const char*> rows[] {
        { R"("k" = "v";)", "v" },
        { R"("k"="v";"l"="w";)", "v" },
        { "\xEF\xBB\xBF k = v-1.0_x ;", "v-1.0_x" },
        { "/* \"k\" = \"no\"; */ // more\n\"k\" /* here */ = // there\n\"v\" ;", "v" },
        { R"("k" = "a // b /* c */";)", "a // b /* c */" },
        { R"("k" = "\"\\\n\r\t\'";)", "\"\\\n\r\t'" },
        { R"("k" = "\U00e9\u3042\UD83D\UDE00";)", "é\u3042\U0001F600" },
        { "\"k\" = \"two\nlines\";", "two\nlines" },
        { R"("k" = "（OFF）";)", "（OFF）" },
        { R"("k" = "first"; "k" = "last";)", "last" },
        { R"("k" = "";)", "" },
    };
    for (const auto& [text, value] : rows) {
        std::string faults;
        const StringTable table =
            ParseStringTable(text, [&](std::size_t, std::string_view reason) { faults += reason; });
        EXPECT_EQ(faults, "") << text;
        ASSERT_TRUE(table.contains("k")) << text;
        EXPECT_EQ(table.at("k"), value) << text;
    }
}

TEST(StringTable, NamesWhatItCannotReadAndGoesOn) {
    struct Row {
        const char* text; // "good" = "1"; follows on a line of its own
        std::size_t line;
        const char* reason;
    };
    for (const Row& row : {
             Row { "\"k\" = \"v\"", 1, "';' is missing" },
             Row { "\n\n\"k\" \"v\";", 3, "'=' is missing" },
             Row { "= \"v\";", 1, "a key is missing" },
             Row { "k = ;", 1, "a value is missing" },
             Row { "// fine\nk = \"\\q\";", 2, "the backslash stands before no known character" },
             Row { "k = \"\\U12g4\";", 1, "\\U takes four hexadecimal digits" },
             Row { "k = \"\\UD83D\";", 1, "half a surrogate pair" },
             Row { "k = \"\xE3\x81\";", 1, "the text is not UTF-8" },
             Row { "/* \xE3", 1, "the comment has no end" },
         }) {
        std::vector<std::pair<std::size_t, std::string>> faults;
        const StringTable table = ParseStringTable(
            std::string(row.text) + "\n\"good\" = \"1\";",
            [&](std::size_t line, std::string_view why) { faults.emplace_back(line, why); });
        EXPECT_THAT(faults, ElementsAre(Pair(row.line, row.reason))) << row.text;
        EXPECT_THAT(table, ElementsAre(Pair("good", "1"))) << row.text;
    }
}

// Each of them would be looked for to the end of the text.
TEST(StringTable, ReadsATableOfCommentsWithoutEnds) {
    std::string text;
    for (int i = 0; i < 100'000; ++i)
        text += "/*\n";
    std::size_t faults = 0;
    ParseStringTable(text,
                     [&](std::size_t line, std::string_view) { faults += line == faults + 1; });
    EXPECT_EQ(faults, 100'000U);
}

} // namespace
} // namespace platform
