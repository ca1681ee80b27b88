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
        EventTypeSpec const status { kEventClassCommand, kEventCommandUpdateStatus };
        InstallEventHandler(UIObject::TargetOf(window), Answer, 1, &status, &statusAsked, nullptr);
    }
    OSStatus Send(std::uint32_t kind, std::uint32_t commandID) {
        HuxCarbonEvent event(kEventClassCommand, kind);
        event.SetCommandParameter(commandID, 0, nullptr);
        return SendEventToEventTarget(event.GetEventRef(), mine->GetEventTarget());
    }
    static OSStatus Answer(EventHandlerCallRef, EventRef, void* asked) {
        ++*static_cast<int*>(asked);
        return kNoErr;
    }

    CMEditText* mine = nullptr;
    QLineEdit* mineEdit = nullptr;
    int statusAsked = 0;
};

TEST_F(CMEditTextTest, PostsEditingCommandsToTheWindow) {
    for (const std::uint32_t command :
         { kHICommandUndo, kHICommandRedo, kHICommandCut, kHICommandCopy, kHICommandPaste,
           kHICommandSelectAll, kHICommandClear }) {
        std::vector<std::uint32_t> seen;
        onNotice = [&](std::uint32_t commandID, long) { seen.push_back(commandID); };
        EXPECT_EQ(Send(kEventCommandProcess, command), kNoErr);
        EXPECT_TRUE(seen.empty()) << "posted, not sent";
        Drain();
        EXPECT_THAT(seen, testing::ElementsAre(command));
    }
}

TEST_F(CMEditTextTest, LeavesOtherCommandsOnTheirWay) {
    Send(kEventCommandProcess, kHICommandOK);
    EXPECT_EQ(std::exchange(log, {}), std::to_string(kHICommandOK) + ":0 ");
    Drain();
    EXPECT_EQ(log, "");
}

TEST_F(CMEditTextTest, LetsTheWindowSayWhetherACommandCanBeDone) {
    Send(kEventCommandUpdateStatus, kHICommandPaste);
    EXPECT_GE(statusAsked, 1);
    Drain();
    EXPECT_EQ(log, "") << "a status that was answered is no command";
}

} // namespace
