// SPDX-License-Identifier: BSD-3-Clause
#include <climits>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "render/CTextRenderer.h"

namespace {

std::string Score(long format, const char* info1, const char* info2, const char* info3,
                  const char* info4) {
    char out[256 + 1];
    std::memset(out, '#', sizeof out);
    CTextRenderer::GetScoreInfoText(out, format, info1, info2, info3, info4);
    EXPECT_EQ(out[256], '#');
    return out;
}

TEST(ScoreTextTest, ComposesTheFormats) {
    struct Row {
        long format;
        const char *info1, *info2, *info3, *info4, *text;
    };
    for (const Row& row : {
             Row { 0, "T", "2", "5", "12", "C-005-0012" },
             Row { 1, "T", "2", "12A", "7", "012A-0007" },
             Row { 2, "T", "A3", "1", "1", "A3-001-0001" },
             Row { 3, "Title 7", "2", "3", "4", "Title 7-002-003-0004" },
             Row { 3, "", "", "", "", "-000-000-0000" },
             Row { 3, nullptr, nullptr, nullptr, nullptr, "-000-000-0000" },
             Row { 1, "", "", "0007B", "12345", "007B-12345" },
             Row { 1, "", "", "000", "00000", "000-0000" },
             Row { 1, "", "", "-5", " 5", "-5- 5" },
             Row { 1, "", "", "5 %s%n", "7%d", "005 %s%n-0007%d" },
             // Longer than any number type.
             Row { 1, "", "", "123456789012345678901234567890x", "1",
                   "123456789012345678901234567890x-0001" },
             Row { 4, "1", "2", "3", "4", "" },
             Row { -1, "1", "2", "3", "4", "" },
         })
        EXPECT_EQ(Score(row.format, row.info1, row.info2, row.info3, row.info4), row.text);
}

TEST(ScoreTextTest, ReadsAndWritesWithinItsFields) {
    const std::string x(64, 'x'), nine(64, '9');
    char full[4][64]; // without a NUL, one behind the other
    std::memset(full, 'x', 192);
    std::memset(full[3], '9', 64);
    EXPECT_EQ(Score(3, full[0], full[1], full[2], full[3]),
              (x + "-" + x + "-" + x + "-" + nine).substr(0, 255));
}

TEST(ScoreTextTest, SplitsANumberFromItsRest) {
    struct Row {
        const char* text;
        bool split;
        long number;
        const char* rest;
    };
    for (const Row& row :
         { Row { "", true, 0, "" }, Row { "12A", true, 12, "A" }, Row { "3 4", true, 3, " 4" },
           Row { "A3", false, 0, "old" }, Row { "2147483648b", true, INT_MAX, "b" },
           Row { "99999999999999999999999", true, INT_MAX, "" } }) {
        long number = -1;
        char rest[256] = "old";
        EXPECT_EQ(CTextRenderer::SplitNumberAndString(row.text, &number, rest), row.split)
            << row.text;
        EXPECT_EQ(number, row.number) << row.text;
        EXPECT_STREQ(rest, row.rest) << row.text;
    }
}

} // namespace
