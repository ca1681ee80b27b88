// SPDX-License-Identifier: BSD-3-Clause
// Radio buttons that exclude each other across a window, and the value and command of their group.
#include <QRadioButton>
#include <QTest>
#include <QVBoxLayout>

#include "platform/ui/ControlsFixture.h"
#include "platform/ui/controls/RadioGroup.h"

namespace {

using namespace platform;
using namespace test;

class ControlsRadioTest : public ControlsFixture {
protected:
    void SetUp() override {
        ControlsFixture::SetUp();
        ASSERT_EQ(CreateRadioGroupControl(window, { 0, 0, 0, 0 }, &group), kNoErr);
        SetControlCommandID(group, 500);
        // Each in a widget of its own, and embedded in another order than they were made.
        for (ControlRef& radio : radios)
            radio = Make(new QRadioButton(new QWidget(widget)));
        for (const int i : { 2, 0, 1 })
            ASSERT_EQ(EmbedControl(radios[i], group), kNoErr);
        command = std::make_unique<Handler>(
            GetWindowEventTarget(window), std::vector { kCommand }, [this](EventRef event) {
                if (CommandOf(event).commandID == 500)
                    log += std::to_string(GetControl32BitValue(group));
                return kNoErr;
            });
    }
    void Click(int i) { QTest::mouseClick(WidgetOf(radios[i]), Qt::LeftButton, {}, { 5, 20 }); }

    ControlRef group = nullptr;
    ControlRef radios[3] = {};
    std::unique_ptr<Handler> command;
    std::string log;
};

TEST_F(ControlsRadioTest, ValueIsThePlaceInTheOrderOfEmbedding) {
    EXPECT_EQ(GetControl32BitValue(group), 0);
    EXPECT_EQ(GetControl32BitMaximum(group), 3);
    SetControl32BitValue(radios[0], 1);
    EXPECT_EQ(GetControl32BitValue(group), 2);
    SetControl32BitValue(group, 1);
    EXPECT_EQ(GetControl32BitValue(radios[0]), 0);
    EXPECT_EQ(GetControl32BitValue(radios[2]), 1);
    SetControl32BitValue(group, 99);
    EXPECT_EQ(GetControl32BitValue(group), 3);
    SetControl32BitValue(radios[1], 0);
    EXPECT_EQ(GetControl32BitValue(group), 0);
    SetControl32BitValue(group, 2);
    SetControl32BitValue(group, 0);
    EXPECT_EQ(GetControl32BitValue(radios[0]), 0);
    EXPECT_EQ(log, ""); // all that was by call
}

TEST_F(ControlsRadioTest, CommandIsSentWhenTheUserPicksAnother) {
    Click(0);
    Click(0); // the same again
    Click(2);
    SetControl32BitValue(group, 3);
    Click(1); // which is checked already
    QTest::keyClick(WidgetOf(radios[0]), Qt::Key_Space);
    EXPECT_EQ(log, "212");
}

TEST_F(ControlsRadioTest, SubsAreTheEmbeddedOnesInTheirOrder) {
    std::uint16_t count = 0;
    EXPECT_EQ(CountSubControls(group, &count), kNoErr);
    EXPECT_EQ(count, 3);
    ControlRef sub = nullptr, super = nullptr;
    EXPECT_EQ(GetIndexedSubControl(group, 1, &sub), kNoErr);
    EXPECT_EQ(sub, radios[2]);
    EXPECT_EQ(GetSuperControl(sub, &super), kNoErr);
    EXPECT_EQ(super, group);
    for (const std::uint16_t index : { 0, 4 })
        EXPECT_EQ(GetIndexedSubControl(group, index, &sub), kErrControlNotFound);
    EXPECT_EQ(GetSuperControl(group, &super), kNoErr);
    EXPECT_EQ(super, nullptr);
}

TEST_F(ControlsRadioTest, OnesThatAreDisposedCountNoMore) {
    SetControl32BitValue(radios[1], 1);
    DisposeControl(radios[2]);
    EXPECT_EQ(GetControl32BitValue(group), 2);
    DisposeControl(radios[1]);
    EXPECT_EQ(GetControl32BitValue(group), 0);
    DisposeControl(group);
    SetControl32BitValue(radios[0], 1); // without its group
    EXPECT_EQ(GetControl32BitValue(radios[0]), 1);
}

TEST_F(ControlsRadioTest, AHitMayEndTheGroup) {
    const Handler hit(GetControlEventTarget(radios[0]), { kHit }, [&](EventRef) {
        DisposeControl(group);
        return kEventNotHandledErr;
    });
    Click(0);
    EXPECT_EQ(log, "");
    EXPECT_EQ(GetControl32BitValue(radios[0]), 1);
}

TEST_F(ControlsRadioTest, OnesThatLieInAGroupOfAFormBelongToIt) {
    auto* const inForm = MakeCustomWidget(QStringLiteral("RadioGroup"), widget);
    auto* const layout = new QVBoxLayout(inForm);
    std::vector<ControlRef> made;
    for (int i = 0; i < 2; ++i) {
        auto* const button = new QRadioButton(inForm);
        layout->addWidget(button);
        made.push_back(MakeControl(*button, Owner())->Ref());
    }
    const ControlRef formGroup = MakeControl(*inForm, Owner())->Ref();
    SetControl32BitValue(made[1], 1);
    EXPECT_EQ(GetControl32BitValue(formGroup), 2);
    // And leave it for another, where they come last.
    EmbedControl(made[1], group);
    EXPECT_EQ(GetControl32BitValue(formGroup), 0);
    EXPECT_EQ(GetControl32BitValue(group), 4);
}

} // namespace
