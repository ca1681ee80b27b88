// SPDX-License-Identifier: BSD-3-Clause
#include "render/Rounding.h"

#include <climits>
#include <limits>

#include <gtest/gtest.h>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// By Double2Int and by Double2Int2.
TEST(RoundingTest, GivesTheNearestInteger) {
    using Row = std::tuple<double, long, long>;
    for (const auto& [value, nearest, nearest2] :
         { Row { 0, 0, 0 }, Row { 2.5, 2, 3 }, Row { 2.5006, 3, 3 }, Row { 2.9996, 3, 3 },
           Row { 2.4996, 2, 2 }, Row { -2.5, -2, -3 }, Row { -0.6, -1, -1 },
           // Up, also below zero.
           Row { -2.9996, -1, -3 }, Row { -0.9996, 1, -1 },
           // Limits of 32 bits, on every machine.
           Row { 2147483646.7, INT_MAX, INT_MAX }, Row { 1e300, INT_MAX, INT_MAX },
           Row { -1e300, INT_MIN, INT_MIN }, Row { kInfinity, INT_MAX, INT_MAX },
           Row { -kInfinity, INT_MIN, INT_MIN }, Row { kNan, 0, 0 } }) {
        EXPECT_EQ(Double2Int(value), nearest) << value;
        EXPECT_EQ(Double2Int2(value), nearest2) << value;
    }
}

TEST(MulDivTest, MultipliesBeforeItDivides) {
    using Row = std::tuple<long, long, long, long>;
    for (const auto& [a, b, c, result] :
         { Row { 50, 255, 100, 127 }, Row { 100, 255, 100, 255 }, Row { 720, 85, 100, 612 },
           Row { 540, 85, 100, 459 }, Row { 7, 9, 0, 0 }, Row { 0, 0, 0, 0 },
           Row { -7, 10, 4, -17 }, Row { INT_MAX, INT_MAX, INT_MAX, INT_MAX },
           Row { INT_MIN, INT_MIN, INT_MIN, INT_MIN }, Row { INT_MAX, INT_MAX, 1, INT_MAX },
           Row { INT_MIN, INT_MAX, 1, INT_MIN }, Row { INT_MIN, 1, -1, INT_MAX } })
        EXPECT_EQ(piMulDiv(a, b, c), result) << a << " * " << b << " / " << c;
}

} // namespace
