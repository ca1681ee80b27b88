// SPDX-License-Identifier: BSD-3-Clause
#include "host/frames/FramePattern.h"

#include <gmock/gmock.h>

namespace host {
namespace {

using ::testing::HasSubstr;

TEST(FramePattern, MakesNamesAndFindsTheirNumbers) {
    struct Row {
        std::string pattern;
        std::int64_t frame;
        std::string path;
    };
    for (const Row& row : std::vector<Row> { { "shot.%04d.png", 7, "shot.0007.png" },
                                             { "shot.####.png", 7, "shot.0007.png" },
                                             { "shot.%4d.png", 7, "shot.0007.png" },
                                             { "a/b#c/%d", 12, "a/b#c/12" },
                                             { "/x/cut#.png", 123, "/x/cut123.png" },
                                             { "##.png", 12345, "12345.png" },
                                             { "%02d", 0, "00" },
                                             { "100%%.%03d%%.png", 5, "100%.005%.png" },
                                             { "50% #.png", 5, "50% 5.png" },
                                             { "\xE3\x82\xAB\xE3\x83\x83\xE3\x83\x88_###.png", 42,
                                               "\xE3\x82\xAB\xE3\x83\x83\xE3\x83\x88_042.png" } }) {
        std::string why;
        EXPECT_TRUE(FramePattern::LooksLikeOne(row.pattern));
        const auto pattern = FramePattern::Parse(row.pattern, why);
        ASSERT_TRUE(pattern) << why;
        EXPECT_EQ(pattern->PathOf(row.frame), row.path);
        EXPECT_EQ(pattern->NumberIn(row.path.substr(pattern->Folder().size())), row.frame)
            << row.pattern;
    }
}

TEST(FramePattern, KnowsOnlyNamesThatItWouldMake) {
    std::string why;
    const auto pattern = FramePattern::Parse("s.####.png", why);
    ASSERT_TRUE(pattern);
    for (const std::string name :
         { "s.007.png", "s.00007.png", "s..png", "s.00a7.png", "s.-007.png", "s.0007.pngx",
           "xs.0007.png", "s.0007", "s.9999999999.png", "s.99999999999999999999.png", "s.png", "" })
        EXPECT_FALSE(pattern->NumberIn(name)) << name;
    EXPECT_EQ(pattern->NumberIn("s.10007.png"), 10007);
    // Before and after may not share characters of the name.
    EXPECT_FALSE(FramePattern::Parse("aa#aa", why)->NumberIn("aaa"));
}

TEST(FramePattern, SaysWhatIsWrong) {
    for (const auto& [text, reason] : std::vector<std::pair<std::string, std::string>> {
             { "a#b/shot.png", "has no place for the frame's number" },
             { "%%d.png", "has no place for the frame's number" },
             { "%d-%d.png", "more than one place" },
             { "#%d.png", "has a %d and a #" },
             { "%d%.png", "neither %d" },
             { "%99999999999999999999999d.png", "more than 18 digits" } }) {
        std::string why;
        EXPECT_FALSE(FramePattern::Parse(text, why)) << text;
        EXPECT_THAT(why, HasSubstr(reason)) << text;
        EXPECT_THAT(why, HasSubstr(text));
    }
    EXPECT_FALSE(FramePattern::LooksLikeOne("a#b/50%.png"));
}

} // namespace
} // namespace host
