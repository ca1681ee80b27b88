// SPDX-License-Identifier: BSD-3-Clause
// What the dialogs' fields and steppers do beyond those of the toolkit.
#include "dialogs/CMEditText.h"
#include "dialogs/CMLittleArrows.h"
#include "huxCommon/HuxEditTextFixture.h"

using namespace platform;

namespace {

using CMControlsTest = test::HuxEditTextFixture;

TEST_F(CMControlsTest, AFieldPostsEditingCommandsToTheWindowAndLeavesTheRestOnTheirWay) {
    QLineEdit* widget = nullptr;
    auto* const mine = NewField<CMEditText>(&widget, 72);
    int statusAsked = 0;
    const test::ChainHandler status(UIObject::TargetOf(window),
                                    { { kEventClassCommand, kEventCommandUpdateStatus } },
                                    [&](EventRef) {
                                        ++statusAsked;
                                        return kNoErr;
                                    });
    const auto send = [&](std::uint32_t kind, std::uint32_t commandID) {
        HuxCarbonEvent event(kEventClassCommand, kind);
        event.SetCommandParameter(commandID, 0, nullptr);
        SendEventToEventTarget(event.GetEventRef(), mine->GetEventTarget());
    };
    for (const std::uint32_t command :
         { kHICommandUndo, kHICommandRedo, kHICommandCut, kHICommandCopy, kHICommandPaste,
           kHICommandSelectAll, kHICommandClear, kHICommandOK }) {
        const std::string seen = std::to_string(command) + ":0 ";
        send(kEventCommandProcess, command);
        EXPECT_EQ(log, command == kHICommandOK ? seen : "") << "posted, not sent";
        EXPECT_EQ(TakeLog(), seen);
    }
    send(kEventCommandUpdateStatus, kHICommandPaste);
    EXPECT_GE(statusAsked, 1) << "the window says whether it can be done";
    EXPECT_EQ(TakeLog(), "") << "a status that was answered is no command";
}

TEST_F(CMControlsTest, AStepperStepsByTenInWideRangesOfRealNumbersAlone) {
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
