// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Shot.h"

#include <map>

#include "apps/studio/Player.h"
#include "apps/studio/StudioFixture.h"

using namespace studio;

namespace {

TEST(Shot, TakesSeveralFilesAsOneInput) {
    struct Row {
        std::vector<std::string> files;
        std::optional<std::string> input;
    };
    for (const auto& row : {
             Row { { "a/x.0001.png" }, "a/x.0001.png" },
             Row { { "a/x.0001.png", "a/x.0007.png" }, "a/x.####.png" },
             Row { { "title.png", "end.png" }, "." },
             Row { { "a/x.1.png", "b/x.2.png" }, std::nullopt },
         }) {
        std::string why;
        EXPECT_EQ(InputOf(row.files, why), row.input) << row.files.front();
        EXPECT_EQ(why.empty(), row.input.has_value()) << row.files.front();
    }
}

TEST(Shot, ANumberBesideItsFramesMeansTheNearestEnd) {
    TheApplication(); // the card is drawn with its fonts
    const auto card = Shot::TestCard();
    for (const auto& [number, index] :
         { std::pair(100, 99U), { 5000, 99U }, { -3, 0U }, { 7, 6U } })
        EXPECT_EQ(card->IndexOf(number), index) << number;
}

TEST(Player, KeepsThePaceOfFilmAndGoesRound) {
    EXPECT_EQ(Player::FrameAt(0, 100, {}, 41), 0U);
    EXPECT_EQ(Player::FrameAt(0, 100, {}, 42), 1U);
    EXPECT_EQ(Player::FrameAt(90, 100, {}, 1000), 14U);
    EXPECT_EQ(Player::FrameAt(3, 7, {}, 3600000), (3U + 86400U) % 7);
    std::string why;
    const auto slow = *host::FrameRate::Parse("29.97", why); // a frame is 33.3667 ms
    EXPECT_EQ(Player::FrameAt(0, 1000, slow, 33366), 999U);
    EXPECT_EQ(Player::FrameAt(0, 1001, slow, 33367), 1000U);
}

} // namespace
