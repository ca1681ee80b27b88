// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/Progress.h"

#include <gmock/gmock.h>

namespace telop {
namespace {

TEST(ProgressBar, ShowsShareRateAndTimeLeft) {
    using Row = std::tuple<std::int64_t, std::int64_t, double, int, const char*>;
    for (const auto& [done, total, seconds, columns, bar] : {
             Row { 25, 100, 2.5, 50, "[####............] 25/100  10 frames/s  0:08 left" },
             Row { 100, 100, 2.0, 48, "[#############] 100/100  50 frames/s  0:00 left" },
             Row { 1, 10000, 1.0, 48, "[.........] 1/10000  1.0 frames/s  2:46:39 left" },
             Row { 0, 10, 0, 40, "[..................] 0/10  0.0 frames/s" },
             Row { 12, 0, 1.0, 80, "12  12 frames/s" },
             Row { 25, 100, 2.5, 12, "25/100  10 " },
         })
        EXPECT_EQ(ProgressBar(done, total, seconds, columns), bar);
}

TEST(ProgressBar, NeverReachesTheLastColumn) {
    for (int columns = 0; columns < 130; ++columns)
        EXPECT_LE(ProgressBar(77777, 99999, 3.7, columns).size(),
                  static_cast<std::size_t>(std::max(columns - 1, 0)))
            << columns;
}

} // namespace
} // namespace telop
