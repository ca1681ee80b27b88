// SPDX-License-Identifier: BSD-3-Clause
// The focus comes and goes, between two fields and between windows, with values that may not stay.
#include "huxCommon/HuxEditTextFixture.h"
#include "support/WindowRefs.h"

using namespace platform;

namespace {

class HuxEditTextFocusTest : public test::HuxEditTextFixture {
protected:
    void SetUp() override {
        HuxEditTextFixture::SetUp();
        field->SetType(false, 100, 0, 50, false);
        other->SetType(true, 10, 0, 1, false);
        field->SetInt(1);
        other->SetDouble(1);
        Focus(edit);
    }
};

TEST_F(HuxEditTextFocusTest, ChecksTheValueWhenTheFocusLeaves) {
    const struct {
        const char *typed, *shown, *told;
    } rows[] = { { "123", "100", "beep 1 5 71:4 " },
                 { "", "50", "beep 1 5 71:4 " },
                 { "7", "7", "5 71:4 " },
                 { "007", "7", "1 5 71:4 " } };
    for (const auto& row : rows) {
        Enter(row.typed);
        TakeLog();
        QTest::keyClick(edit, Qt::Key_Tab);
        EXPECT_TRUE(otherEdit->hasFocus());
        EXPECT_EQ(Text(), row.shown) << row.typed;
        // The tab itself is a key that was passed, and its notice is posted.
        EXPECT_EQ(TakeLog(), std::string(row.told) + "1 ") << row.typed;
        edit->setFocus();
        EXPECT_EQ(TakeLog(), "71:5 4 ");
    }
}

TEST_F(HuxEditTextFocusTest, TwoInvalidFieldsDoNotFightForTheFocus) {
    // The owner answers every correction by going back to the field.
    int notices = 0;
    onNotice = [&](std::uint32_t commandID, long value) {
        if (++notices < 100 && value == kEditTextChanged)
            test::At(window).SetKeyboardFocus(
                Control::Find((commandID == 70 ? field : other)->GetControlRef()));
    };
    edit->setText("999");
    otherEdit->setText("999.9");
    otherEdit->setFocus();
    Drain();
    EXPECT_LT(notices, 20) << log;
    onNotice = nullptr;
    edit->setFocus();
    otherEdit->setFocus();
    Drain();
    EXPECT_EQ(Text(), "100");
    EXPECT_EQ(TextOf(*other), "10.0");
}

TEST_F(HuxEditTextFocusTest, IsLeftAloneWhileItMayNotBeChecked) {
    const struct {
        const char* what;
        std::function<void()> begin;
        std::function<void()> end;
    } rows[] = {
        { "unchecked", [&] { field->SetAutoCheck(false); }, [&] { field->SetAutoCheck(true); } },
        { "hidden", [&] { field->Hide(true); }, [&] { field->Show(true); } },
        { "disabled", [&] { field->Disable(); }, [&] { field->Enable(); } },
    };
    for (const auto& row : rows) {
        row.begin();
        edit->setText("999");
        EXPECT_TRUE(field->CheckControlValue()) << row.what;
        EXPECT_EQ(Text(), "999") << row.what;
        row.end();
    }
    Drain();
    EXPECT_FALSE(field->CheckControlValue());
    long start = 0, end = 0;
    EXPECT_TRUE(field->GetSelection(start, end));
    EXPECT_EQ(std::pair(start, end), std::pair(0L, 3L)) << "what was wrong is selected";
}

TEST_F(HuxEditTextFocusTest, IsCheckedBeforeItIsDisabled) {
    Enter("999");
    TakeLog();
    field->Disable();
    EXPECT_EQ(Text(), "100");
    EXPECT_FALSE(edit->hasFocus());
    field->Enable();
    Enter("5");
    EXPECT_EQ(Text(), "5");
}

TEST_F(HuxEditTextFocusTest, FollowsTheWindowsFocus) {
    Enter("999");
    TakeLog();
    const auto send = [&](std::uint32_t kind) {
        HuxCarbonEvent const event(kEventClassWindow, kind);
        SendEventToEventTarget(event.GetEventRef(), UIObject::TargetOf(window));
        return TakeLog();
    };
    EXPECT_EQ(send(kEventWindowFocusRelinquish), "beep 1 5 ");
    EXPECT_EQ(send(kEventWindowFocusAcquired), "4 ");
    test::At(window).SetKeyboardFocus(nullptr);
    EXPECT_EQ(TakeLog(), "5 ");
    EXPECT_EQ(send(kEventWindowFocusRelinquish), "");
}

} // namespace
