// SPDX-License-Identifier: BSD-3-Clause
// Steps of a stepper that is bound to a field.
#include "huxCommon/huxGUI/HuxLittleArrows.h"

#include "huxCommon/HuxEditTextFixture.h"

using namespace platform;

namespace {

class HuxLittleArrowsTest : public test::HuxEditTextFixture {
protected:
    void SetUp() override {
        HuxEditTextFixture::SetUp();
        arrows = NewArrows<HuxLittleArrows>();
    }

    HuxLittleArrows* arrows = nullptr;
};

TEST_F(HuxLittleArrowsTest, StepsFromWhatTheFieldShowsWithinItsRange) {
    const struct {
        bool isReal;
        double max, min;
        long decimals;
        const char *shown, *up, *down; // one step up, then one down from there
    } rows[] = {
        { false, 100, 0, 1, "50", "51", "50" },
        { false, 100, 0, 0, "100", "100", "99" },
        { false, 100, 0, 0, "0", "1", "0" },
        { false, 100, 0, 0, "999", "100", "99" },
        { false, 5, -5, 0, "-1", "0", "-1" },
        { false, 4294967295, 0, 0, "2147483647", "2147483648", "2147483647" },
        { false, 4294967295, 0, 0, "4294967294", "4294967295", "4294967294" },
        { false, 4294967295, 0, 0, "4294967295", "4294967295", "4294967294" },
        { false, 0, 0, 0, "3000000000", "3000000001", "3000000000" },
        { false, 2147483647, -2147483648.0, 0, "2147483647", "2147483647", "2147483646" },
        { true, 1, 0, 1, "0.5", "0.6", "0.5" },
        { true, 1, 0, 1, "1.0", "1.0", "0.9" },
        { true, 1e30, -1e30, 9, "0.5", "0.5", "0.5" }, // finer than the field shows
    };
    for (const auto& row : rows) {
        field->SetType(row.isReal, row.max, row.min, 0, false);
        arrows->SetEditControl(field, row.decimals, 0, 0);
        field->SetText(row.shown);
        Up();
        EXPECT_EQ(Text(), row.up) << row.shown;
        Down();
        EXPECT_EQ(Text(), row.down) << row.shown;
    }
}

TEST_F(HuxLittleArrowsTest, AddsUpStepsThatAreFinerThanTheFormat) {
    field->SetType(true, 1, 0, 0, false);
    field->SetText("0.5");
    arrows->SetEditControl(field, 2, 1, 1);
    otherEdit->setFocus();
    TakeLog();
    for (int step = 0; step < 4; ++step)
        Up();
    EXPECT_EQ(TakeLog(), "71:5 4 5:20 5:20 5:20 5:20 ") << "the focus, as asked for, alone";
    Up();
    Up();
    EXPECT_EQ(Text(), "0.6");
    field->SetText("0.2");
    Down();
    EXPECT_DOUBLE_EQ(arrows->GetNumber(), 0.19);
}

TEST_F(HuxLittleArrowsTest, TellsTheFieldsChangeOnceAndItsOwnStepAlways) {
    const struct {
        unsigned char notify;
        const char* shown;
        const char* told;
    } rows[] = { { 1, "5", "1 5:20 " }, { 0, "5", "5:20 " }, { 1, "9", "5:20 " } };
    field->SetType(false, 9, 0, 0, false);
    for (const auto& row : rows) {
        arrows->SetEditControl(field, 0, row.notify, 0);
        field->SetText(row.shown);
        TakeLog();
        Up();
        EXPECT_EQ(TakeLog(), row.told) << row.shown;
    }
    Down();
    EXPECT_EQ(TakeLog(), "1 5:21 ");
}

TEST_F(HuxLittleArrowsTest, StepsByItselfWhenTheFieldIsGone) {
    arrows->SetMaximum(3);
    arrows->SetEditControl(field, 0, 1, 1);
    Control::Find(field->GetControlRef())->Dispose();
    TakeLog();
    Up();
    EXPECT_EQ(TakeLog(), "5:20 ");
    arrows->SetEditControl(nullptr, 0, 1, 1);
    arrows->SetValue(0);
    Up();
    EXPECT_EQ(arrows->GetValue(), 1);
}

TEST_F(HuxLittleArrowsTest, MayEndInTheNoticeOfItsStep) {
    for (const std::uint32_t ending : { 70U, 5U }) {
        field->SetType(false, 9, 0, 0, false);
        arrows->SetEditControl(field, 0, 1, 1);
        const ControlRef control = arrows->GetControlRef();
        onNotice = [&](std::uint32_t commandID, long) {
            if (commandID == ending)
                Control::Find(control)->Dispose();
        };
        Up();
        EXPECT_FALSE(Control::Find(control));
        onNotice = nullptr;
        arrows = NewArrows<HuxLittleArrows>();
    }
}

} // namespace
