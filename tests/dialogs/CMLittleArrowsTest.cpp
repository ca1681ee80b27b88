// SPDX-License-Identifier: BSD-3-Clause
#include "dialogs/CMLittleArrows.h"

#include "huxCommon/HuxLittleArrowsFixture.h"

namespace {

using CMLittleArrowsTest = test::HuxLittleArrowsFixture;

TEST_F(CMLittleArrowsTest, StepsByTenInWideRangesOfRealNumbersAlone) {
    const struct {
        bool isReal;
        double max;
        const char* up;
    } rows[] = { { true, 100, "1.0" }, { true, 1, "0.1" }, { false, 100, "1" } };
    for (const auto& row : rows) {
        auto* const wide = NewArrows<CMLittleArrows>();
        field->SetType(row.isReal, row.max, 0, 0, false);
        field->SetText("0");
        wide->SetEditControl(field, 1, 0, 0);
        Up();
        EXPECT_EQ(Text(), row.up) << row.max;
    }
}

} // namespace
