// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Shot.h"

#include <algorithm>
#include <array>

#include <gmock/gmock.h>

#include "apps/studio/Player.h"
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
    for (auto const& [number, index] : { std::pair(100, 99), { 5000, 99 }, { -3, 0 }, { 7, 6 } })
        EXPECT_EQ(card->IndexOf(number), static_cast<std::size_t>(index)) << number;
    host::PngReader reader;
    std::array<host::Frame, 3> frames; // the first, the second, and the first again
    std::string why;
    for (std::size_t i = 0; i < frames.size(); ++i)
        ASSERT_TRUE(card->Read(i % 2, reader, frames[i], why)) << why;
    EXPECT_EQ(frames[0].image->Width(), kTestCardWidth);
    EXPECT_FALSE(std::ranges::equal(frames[0].image->Bytes(), frames[1].image->Bytes()));
    EXPECT_TRUE(std::ranges::equal(frames[0].image->Bytes(), frames[2].image->Bytes()));
}

TEST(Player, KeepsThePaceOfFilmAndGoesRound) {
    struct Row {
        std::size_t start, count;
        qint64 milliseconds;
        std::size_t frame;
    };
    for (auto const& row : { Row { 0, 100, 41, 0 }, Row { 0, 100, 42, 1 }, Row { 0, 100, 1000, 24 },
                             Row { 90, 100, 1000, 14 }, Row { 3, 7, 3600000, (3 + 86400) % 7 } })
        EXPECT_EQ(Player::FrameAt(row.start, row.count, row.milliseconds), row.frame)
            << row.start << " of " << row.count << " after " << row.milliseconds;
}

} // namespace

} // namespace studio
