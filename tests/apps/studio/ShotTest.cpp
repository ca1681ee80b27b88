// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Shot.h"

#include <gmock/gmock.h>

#include "apps/studio/StudioFixture.h"
#include "apps/studio/TestCard.h"

namespace studio {

namespace {

TEST(Shot, MakesAPatternOfANumberedName) {
    struct Row {
        const char* file;
        std::optional<std::string> pattern;
    };
    for (auto const& row : {
             Row { "a/shot.0012.png", "a/shot.####.png" },
             Row { "shot9.png", "shot#.png" },
             Row { "c012_0003.png", "c012_####.png" },
             Row { "12.png", "##.png" },
             Row { "take 2/title.png", std::nullopt },
             Row { "100%_01.png", std::nullopt },
             Row { "#1.png", std::nullopt },
         })
        EXPECT_EQ(PatternOf(row.file), row.pattern) << row.file;
}

TEST(Shot, TakesSeveralFilesAsOneInput) {
    struct Row {
        std::vector<std::string> files;
        std::optional<std::string> input;
    };
    for (auto const& row : {
             Row { { "a/x.0001.png" }, "a/x.0001.png" },
             Row { { "a/x.0001.png", "a/x.0007.png" }, "a/x.####.png" },
             Row { { "a/title.png", "a/end.png" }, "a" },
             Row { { "title.png", "end.png" }, "." },
             Row { { "a/x.1.png", "b/x.2.png" }, std::nullopt },
         }) {
        std::string why;
        EXPECT_EQ(InputOf(row.files, why), row.input) << row.files.front();
        EXPECT_EQ(why.empty(), row.input.has_value()) << row.files.front();
    }
}

TEST(Shot, TestCardHasAFrameForEachNumberAndNoTwoAlike) {
    TheApplication(); // the card is drawn with its fonts
    auto const card = Shot::TestCard();
    ASSERT_EQ(card->Count(), 100U);
    EXPECT_EQ(card->IndexOf(100), 99U);
    EXPECT_EQ(card->IndexOf(5000), 99U);
    EXPECT_EQ(card->IndexOf(-3), 0U);
    host::PngReader reader;
    host::Frame frame;
    std::string why;
    ASSERT_TRUE(card->Read(0, reader, frame, why)) << why;
    EXPECT_EQ(frame.image->Width(), kTestCardWidth);
    EXPECT_EQ(frame.image->Height(), kTestCardHeight);
    EXPECT_NE(DrawTestCard(1), DrawTestCard(2));
    EXPECT_EQ(DrawTestCard(7), DrawTestCard(7));
}

} // namespace

} // namespace studio
