// SPDX-License-Identifier: BSD-3-Clause
#include "host/frames/FrameRanges.h"

#include <gmock/gmock.h>

namespace host {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

FrameRanges Ranges(std::string_view text) {
    std::string why;
    auto ranges = FrameRanges::Parse(text, why);
    EXPECT_TRUE(ranges) << why;
    return ranges.value_or(FrameRanges());
}

TEST(FrameRanges, TakesTheFramesOfEachPart) {
    const std::vector<std::int64_t> existing { 0, 1, 2, 3, 8, 9, 10, 11, 12 };
    struct Row {
        std::string text;
        std::vector<std::int64_t> frames;
        std::string printed;
    };
    for (const Row& row :
         std::vector<Row> { { "9", { 9 }, "9" },
                            { "0-3", { 0, 1, 2, 3 }, "0-3" },
                            { "1-11:2", { 1, 3, 9, 11 }, "1-11:2" },
                            { " 2 - 9 : 1 , 012 ", { 2, 3, 8, 9, 12 }, "2-9,12" },
                            { "10-", { 10, 11, 12 }, "10-" },
                            { "1-:4", { 1, 9 }, "1-:4" },
                            { "-2", { 0, 1, 2 }, "0-2" },
                            { "5-7", {}, "5-7" },
                            { "12,12,11-12", { 11, 12 }, "12,12,11-12" },
                            { "0-2147483647:2147483647", { 0 }, "0-:2147483647" } }) {
        const FrameRanges ranges = Ranges(row.text);
        EXPECT_EQ(ranges.Among(existing), row.frames) << row.text;
        EXPECT_EQ(ranges.ToString(), row.printed) << row.text;
        EXPECT_EQ(Ranges(row.printed).Among(existing), row.frames) << row.text;
    }
    EXPECT_EQ(FrameRanges::All().Among(existing), existing);
}

TEST(FrameRanges, SaysWhatIsWrong) {
    for (const auto& [text, reason] : std::vector<std::pair<std::string, std::string>> {
             { "", "no frames are given" },
             { "1,,2", "nothing stands between two commas" },
             { "3,10-5 ", "'10-5': ends before it starts" },
             { "-", "'-': neither end is given" },
             { "a", "'a': 'a' is not a frame number" },
             { "1-2-3", "'1-2-3': '2-3' is not a frame number" },
             { "+1", "'+1' is not a frame number" },
             { "1-9:0", "'1-9:0': the step is 0" },
             { "1-9:", "the step '' is not a frame number" },
             { "2147483648", "above the greatest frame number, 2147483647" },
             { "99999999999999999999", "above the greatest frame number" } }) {
        std::string why;
        EXPECT_FALSE(FrameRanges::Parse(text, why)) << text;
        EXPECT_THAT(why, HasSubstr(reason)) << text;
    }
}

TEST(FrameRanges, ListsWhatIsMissingWithoutWalkingAbsurdRanges) {
    const std::vector<std::int64_t> existing { 1, 2, 4 };
    EXPECT_THAT(Ranges("1-6").Missing(existing, 9), ElementsAre(3, 5, 6));
    EXPECT_THAT(Ranges("1-6,5-7:2").Missing(existing, 9), ElementsAre(3, 5, 6, 7));
    EXPECT_THAT(Ranges("1-2147483646").Missing(existing, 2), ElementsAre(3, 5));
    EXPECT_THAT(Ranges("1-,1-4:3").Missing(existing, 9), ElementsAre());
}

} // namespace
} // namespace host
