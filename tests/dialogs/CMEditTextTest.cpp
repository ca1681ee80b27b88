// SPDX-License-Identifier: BSD-3-Clause
// Editing commands that reach a field and go on to its window.
#include "dialogs/CMEditText.h"

#include "huxCommon/HuxEditTextFixture.h"
#include "support/WindowRefs.h"

using namespace platform;

namespace {

class CMEditTextTest : public test::HuxEditTextFixture {
protected:
    void SetUp() override {
        HuxEditTextFixture::SetUp();
        mine = NewField<CMEditText>(&mineEdit, 72);
        const EventTypeSpec status { kEventClassCommand, kEventCommandUpdateStatus };
        InstallEventHandler(UIObject::TargetOf(window), Answer, 1, &status, &statusAsked, nullptr);
    }
    void Send(std::uint32_t kind, std::uint32_t commandID) {
        HuxCarbonEvent event(kEventClassCommand, kind);
        event.SetCommandParameter(commandID, 0, nullptr);
        SendEventToEventTarget(event.GetEventRef(), mine->GetEventTarget());
    }
    static OSStatus Answer(EventHandlerCallRef, EventRef, void* asked) {
        ++*static_cast<int*>(asked);
        return kNoErr;
    }

    CMEditText* mine = nullptr;
    QLineEdit* mineEdit = nullptr;
    int statusAsked = 0;
};

TEST_F(CMEditTextTest, PostsEditingCommandsToTheWindowAndLeavesTheRestOnTheirWay) {
    for (const std::uint32_t command :
         { kHICommandUndo, kHICommandRedo, kHICommandCut, kHICommandCopy, kHICommandPaste,
           kHICommandSelectAll, kHICommandClear, kHICommandOK }) {
        const std::string seen = std::to_string(command) + ":0 ";
        Send(kEventCommandProcess, command);
        EXPECT_EQ(log, command == kHICommandOK ? seen : "") << "posted, not sent";
        Drain();
        EXPECT_EQ(std::exchange(log, {}), seen);
    }
    Send(kEventCommandUpdateStatus, kHICommandPaste);
    EXPECT_GE(statusAsked, 1) << "the window says whether it can be done";
    Drain();
    EXPECT_EQ(log, "") << "a status that was answered is no command";
}

} // namespace
