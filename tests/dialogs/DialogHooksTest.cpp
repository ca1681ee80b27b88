// SPDX-License-Identifier: BSD-3-Clause
// The calls of hosts that lack something or throw, and what is left of dialogs that were destroyed.
#include <malloc.h>

#include "dialogs/DialogFixture.h"

namespace {

using DialogHooksTest = test::DialogFixture;

TEST_F(DialogHooksTest, NeedsParametersAndSettingsForAWindowAndNoTables) {
    const _EPIRECORD whole = record;
    record.pParamProcs = nullptr;
    record.pHostProcs = nullptr;
    record.pWindowProcs = nullptr;
    record.hComposite = nullptr;
    ASSERT_NE(Open(kEdit), nullptr);
    EXPECT_EQ(Notify(epiNotifyOK), 1);
    EXPECT_EQ(heard, "");
    Destroy();
    record = whole;
    record.pSettings = nullptr;
    EXPECT_EQ(Open(kEdit), nullptr);
    Destroy();
    record.hFixedParam = nullptr;
    EXPECT_EQ(Open(kEdit), nullptr);
    Destroy();
    EXPECT_NE(Open(kPanel), nullptr) << "it has a summary of nothing";
}

// Whichever unlocking of the parameters throws, the host can end what it has of the dialog.
TEST_F(DialogHooksTest, SurvivesAHostThatThrowsWhenParametersAreUnlocked) {
    static const EPIHandleProcs* s_host;
    static int s_throwAt;
    s_host = record.pHandleProcs;
    EPIHandleProcs procs = *s_host;
    procs.Unlock = [](EPIHandleRef handle) {
        s_host->Unlock(handle);
        if (s_throwAt-- == 0)
            throw test::HostThrows();
    };
    record.pHandleProcs = &procs;
    for (const std::uint32_t flags : { kPanel, kEdit }) {
        record.dwDialogFlags = flags;
        int at = 0;
        for (bool hasThrown = true; hasThrown; ++at) {
            s_throwAt = at;
            try {
                Run(epiCreateSettingDialog);
            } catch (const test::HostThrows&) { // or it became an error that the host shows
            }
            hasThrown = std::exchange(s_throwAt, -1) < 0;
            Destroy();
            errors.TakeAll();
        }
        EXPECT_GT(at, 1) << "nothing was unlocked";
    }
    record.pHandleProcs = s_host;
}

TEST_F(DialogHooksTest, LeavesNothingOfHundredsOfDialogs) {
    constexpr int kManyDialogs = 300;
    const auto standing = [] {
        std::vector<std::int64_t> counts;
        for (const platform::EventTypeSpec& type :
             { platform::EventTypeSpec { platform::kEventClassCommand,
                                         platform::kEventCommandProcess },
               { platform::kEventClassMouse, platform::kEventMouseMoved },
               { platform::kEventClassWindow, platform::kEventWindowClosed } })
            counts.push_back(
                platform::CountEventHandlers(platform::GetApplicationEventTarget(), type));
        counts.push_back(std::ssize(platform::UIObject::All(platform::ObjectKind::kWindow)));
        for (const host::Lent kind : { host::Lent::kHandle, host::Lent::kImage })
            counts.push_back(host::Ledger::Get().Outstanding(kind));
        return counts;
    };
    for (const std::uint32_t flags : { kPanel, kEdit }) {
        record.dwDialogFlags = flags;
        const auto makeAndDestroy = [&](int count) {
            for (int i = 0; i < count; ++i) {
                Run(epiCreateSettingDialog);
                test::At(record.hDialogWindow).Show();
                Destroy();
                // As a host's event loop does between two of its dialogs.
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                QCoreApplication::processEvents();
            }
        };
        makeAndDestroy(50); // caches are full then
        const std::size_t before = mallinfo2().uordblks;
        const auto standingBefore = standing();
        makeAndDestroy(kManyDialogs);
        // Caches of the display grow a little still; the smallest widget is larger than this.
        EXPECT_LT(mallinfo2().uordblks, before + 256 * std::size_t { kManyDialogs });
        EXPECT_EQ(standing(), standingBefore);
        EXPECT_TRUE(host::Ledger::Get().IsBalanced()) << host::Ledger::Get().Describe();
    }
}

} // namespace
