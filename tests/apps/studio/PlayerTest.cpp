// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Player.h"

#include <gmock/gmock.h>

namespace studio {

namespace {

TEST(Player, KeepsThePaceOfFilmAndGoesRound) {
    struct Row {
        std::size_t start, count;
        qint64 milliseconds;
        std::size_t frame;
    };
    for (auto const& row : {
             Row { 0, 100, 0, 0 },
             Row { 0, 100, 41, 0 },
             Row { 0, 100, 42, 1 },
             Row { 0, 100, 1000, 24 },
             Row { 90, 100, 1000, 14 },
             Row { 3, 7, 3600000, (3 + 86400) % 7 },
         })
        EXPECT_EQ(Player::FrameAt(row.start, row.count, row.milliseconds), row.frame)
            << row.start << " of " << row.count << " after " << row.milliseconds;
}

} // namespace

} // namespace studio
