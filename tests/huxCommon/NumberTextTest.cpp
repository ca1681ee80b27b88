// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxUtility/NumberText.h"

#include <clocale>
#include <cmath>

#include <gmock/gmock.h>

namespace {

constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(NumberTextTest, ReadsTheNumberThatATextBeginsWith) {
    struct Row {
        const char* text;
        long integer;
        double real;
    };
    for (const Row& row :
         { Row { "", 0, 0 }, Row { "-", 0, 0 }, Row { " 12", 12, 12 }, Row { "+12px", 12, 12 },
           Row { "+-12", 0, 0 }, Row { "-1-2", -1, -1 }, Row { "3.75.1", 3, 3.75 },
           Row { ".5", 0, 0.5 }, Row { "-.5", 0, -0.5 }, Row { "1,5", 1, 1 },
           Row { "2e3", 2, 2000 }, Row { "inf", 0, 0 }, Row { "-nan", 0, 0 },
           Row { "99999999999999999999", std::numeric_limits<long>::max(), 1e20 },
           Row { "-99999999999999999999", std::numeric_limits<long>::min(), -1e20 },
           Row { "1e999", 1, kLargest }, Row { "-1e999", -1, -kLargest }, Row { "1e-999", 1, 0 },
           Row { "\xFF", 0, 0 } }) {
        EXPECT_EQ(ParseInteger(row.text), row.integer) << row.text;
        EXPECT_DOUBLE_EQ(ParseDouble(row.text), row.real) << row.text;
    }
    EXPECT_EQ(ParseDouble(std::string(400, '9')), kLargest);
    EXPECT_EQ(ParseDouble("0." + std::string(400, '0') + "1"), 0);
}

TEST(NumberTextTest, WritesByAnyFormatThatHasOneNumber) {
    struct Row {
        const char* format;
        double number;
        std::string text;
    };
    const Row rows[] = {
        Row { "%.1f", 3.14159, "3.1" }, Row { "%.0f", 2.5, "2" }, Row { "%f", -1, "-1.000000" },
        Row { "%+.2f", 1, "+1.00" }, Row { "% .2f", 1, " 1.00" }, Row { "%05.1f", -2.5, "-02.5" },
        Row { "%8.1f", 2.5, "2.5" }, Row { "%-08.1f", 2.5, "2.5" },
        Row { "%.2e", 12345, "1.23e+04" }, Row { "%.2E", 12345, "1.23E+04" },
        Row { "%g", 0.5, "0.5" }, Row { "%G", 1e20, "1E+20" }, Row { "%d", 3.9, "3" },
        Row { "%03ld", 7, "007" }, Row { "%.0f%%", 50, "50%" }, Row { "x%.1fy", 1, "x1.0y" },
        Row { "%.1f", -0.01, "0.0" }, Row { "%.1f", std::nan(""), "0.0" },
        Row { "%d", kInfinity, std::to_string(std::numeric_limits<long>::max()) },
        Row { "%d", std::nan(""), "0" }, Row { "%d", -2.9, "-2" },
        // None of one number: as with "%.1f".
        Row { "", 1.25, "1.2" }, Row { "none", 1.25, "1.2" }, Row { "%s", 1.25, "1.2" },
        Row { "%n", 1.25, "1.2" }, Row { "%", 1.25, "1.2" }, Row { "%.1f %.1f", 1.25, "1.2" },
        Row { "%*f", 1.25, "1.2" }, Row { "%5%", 1.25, "1.2" }
    };
    for (const auto& row : rows)
        EXPECT_EQ(FormatDouble(row.format, row.number), row.text) << row.format;
    EXPECT_EQ(FormatDouble("%.99999999999999f", kInfinity).size(), 309U + 1 + 40);
    EXPECT_EQ(FormatDouble("%0999999999999f", 1).size(), 64U);
}

} // namespace
