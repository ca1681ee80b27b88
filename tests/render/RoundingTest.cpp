// SPDX-License-Identifier: BSD-3-Clause
#include "render/Rounding.h"

#include <climits>
#include <limits>

#include <gtest/gtest.h>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

struct Row {
    double value;
    long nearest;  // by Double2Int
    long nearest2; // by Double2Int2
};

TEST(RoundingTest, GivesTheNearestInteger) {
    for (const Row& row :
         { Row { 0, 0, 0 }, Row { 2.5, 2, 3 }, Row { 2.5006, 3, 3 }, Row { 2.9996, 3, 3 },
           Row { 2.4996, 2, 2 }, Row { -2.5, -2, -3 }, Row { -0.6, -1, -1 },
           // Up, also below zero.
           Row { -2.9996, -1, -3 }, Row { -0.9996, 1, -1 },
           // Limits of 32 bits, on every machine.
           Row { 2147483646.7, INT_MAX, INT_MAX }, Row { 1e300, INT_MAX, INT_MAX },
           Row { -1e300, INT_MIN, INT_MIN }, Row { kInfinity, INT_MAX, INT_MAX },
           Row { -kInfinity, INT_MIN, INT_MIN }, Row { kNan, 0, 0 } }) {
        EXPECT_EQ(Double2Int(row.value), row.nearest) << row.value;
        EXPECT_EQ(Double2Int2(row.value), row.nearest2) << row.value;
    }
}

TEST(MulDivTest, MultipliesBeforeItDivides) {
    struct Row {
        long a, b, c, result;
    };
    for (const Row& row :
         { Row { 50, 255, 100, 127 }, Row { 100, 255, 100, 255 }, Row { 720, 85, 100, 612 },
           Row { 540, 85, 100, 459 }, Row { 7, 9, 0, 0 }, Row { 0, 0, 0, 0 },
           Row { -7, 10, 4, -17 }, Row { INT_MAX, INT_MAX, INT_MAX, INT_MAX },
           Row { INT_MIN, INT_MIN, INT_MIN, INT_MIN }, Row { INT_MAX, INT_MAX, 1, INT_MAX },
           Row { INT_MIN, INT_MAX, 1, INT_MIN }, Row { INT_MIN, 1, -1, INT_MAX } })
        EXPECT_EQ(piMulDiv(row.a, row.b, row.c), row.result)
            << row.a << " * " << row.b << " / " << row.c;
}

TEST(TruncationTest, GoesTowardsZeroAndStaysInside32Bits) {
    for (const auto& [value, result] :
         { std::pair { -0.999, 0 }, std::pair { 1.9, 1 }, std::pair { 4e9, INT_MAX },
           std::pair { -kInfinity, INT_MIN }, std::pair { kNan, 0 } })
        EXPECT_EQ(TruncateToInt32(value), result) << value;
    EXPECT_EQ(SaturateToInt32(std::int64_t { 1 } << 31), INT_MAX);
    EXPECT_EQ(SaturateToInt32(-(std::int64_t { 1 } << 31) - 1), INT_MIN);
}

} // namespace
