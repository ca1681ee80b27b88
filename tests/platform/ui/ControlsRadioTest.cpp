// SPDX-License-Identifier: BSD-3-Clause
// Radio buttons that exclude each other across a window, and the value and command of their group.
#include <memory>

#include <QRadioButton>

#include "platform/ui/UIFixture.h"

namespace {

using namespace platform;
using namespace test;

class ControlsRadioTest : public UIFixture {
protected:
    void SetUp() override {
        UIFixture::SetUp();
        group = Control::Create(window, "RadioGroup", {})->Ref();
        On(group).commandID = 500;
        // Each in a widget of its own, and embedded in another order than they were made.
        for (ControlRef& radio : radios)
            radio = Make(new QRadioButton(new QWidget(widget)));
        for (const int i : { 2, 0, 1 })
            ASSERT_EQ(On(radios[i]).EmbedIn(On(group)), kNoErr);
        const auto note = [this](EventRef event) {
            if (CommandOf(event).commandID == 500)
                log += std::to_string(On(group).Value());
            return kNoErr;
        };
        command =
            std::make_unique<ChainHandler>(At(window).Target(), std::vector { kCommand }, note);
    }
    void Click(int i) { QTest::mouseClick(WidgetOf(radios[i]), Qt::LeftButton, {}, { 5, 20 }); }

    ControlRef group = nullptr;
    ControlRef radios[3] = {};
    std::unique_ptr<ChainHandler> command;
};

TEST_F(ControlsRadioTest, ValueIsThePlaceInTheOrderOfEmbedding) {
    EXPECT_EQ(On(group).Value(), 0);
    EXPECT_EQ(On(group).Maximum(), 3);
    On(radios[0]).SetValue(1);
    EXPECT_EQ(On(group).Value(), 2);
    On(group).SetValue(1);
    EXPECT_EQ(On(radios[0]).Value(), 0);
    EXPECT_EQ(On(radios[2]).Value(), 1);
    On(group).SetValue(99);
    EXPECT_EQ(On(group).Value(), 3);
    On(group).SetValue(0);
    EXPECT_EQ(On(radios[1]).Value(), 0);
    EXPECT_EQ(log, ""); // all that was by call
}

TEST_F(ControlsRadioTest, CommandIsSentWhenTheUserPicksAnother) {
    Click(0);
    Click(0); // the same again
    Click(2);
    On(group).SetValue(3);
    Click(1); // which is checked already
    QTest::keyClick(WidgetOf(radios[0]), Qt::Key_Space);
    EXPECT_EQ(log, "212");
}

TEST_F(ControlsRadioTest, OnesThatAreDisposedCountNoMore) {
    On(radios[1]).SetValue(1);
    On(radios[2]).Dispose();
    EXPECT_EQ(On(group).Value(), 2);
    On(radios[1]).Dispose();
    EXPECT_EQ(On(group).Value(), 0);
    On(group).Dispose();
    On(radios[0]).SetValue(1); // without its group
    EXPECT_EQ(On(radios[0]).Value(), 1);
}

TEST_F(ControlsRadioTest, OnesThatLieInAGroupOfAFormBelongToIt) {
    auto* const inForm = MakeCustomWidget(QStringLiteral("RadioGroup"), widget);
    Make(new QRadioButton(inForm));
    Control& second = On(Make(new QRadioButton(inForm)));
    const Control& formGroup = On(Make(inForm));
    second.SetValue(1);
    EXPECT_EQ(formGroup.Value(), 2);
    // And leave it for another, where they come last.
    EXPECT_EQ(second.EmbedIn(On(group)), kNoErr);
    EXPECT_EQ(formGroup.Value(), 0);
    EXPECT_EQ(On(group).Value(), 4);
}

} // namespace
