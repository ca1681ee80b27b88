// SPDX-License-Identifier: BSD-3-Clause
// The three calls of a host: what each dialog makes of notifications, and what is left of dialogs that
// were destroyed.
#include <cstring>

#include <malloc.h>

#include "dialogs/DialogFixture.h"
#include "support/WindowRefs.h"

namespace {

using DialogHooksTest = test::DialogFixture;

TEST_F(DialogHooksTest, NotifiesEachDialogOfWhatConcernsIt) {
    const struct {
        std::uint32_t flags;
        std::int32_t code, result;
        const char* heard;
        bool showsUpdate;
    } rows[] = {
        { kPanel, epiNotifyOK, 77, "", false },
        { kPanel, epiNotifyUpdate, 77, "", true },
        { kPanel, 4, 77, "", false },
        { kEdit, epiNotifyUpdate, 77, "", false },
        { kEdit, 0, 77, "", false },
        { kEdit, epiNotifyOK, 1, "changed option1 ", false },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.flags << ' ' << row.code);
        Destroy();
        std::strcpy(effect->Params()->szDialogue, "Before");
        Open(row.flags);
        std::strcpy(effect->Params()->szDialogue, "After");
        TakeHeard();
        EXPECT_EQ(Notify(row.code), row.result);
        EXPECT_EQ(TakeHeard(), row.heard);
        auto* const shown = root->findChild<QPlainTextEdit*>();
        EXPECT_EQ(shown->toPlainText(), row.showsUpdate ? "After" : "Before");
    }
}

TEST_F(DialogHooksTest, MakesNoWindowWithoutParametersOrSettings) {
    record.pSettings = nullptr;
    EXPECT_EQ(Open(kEdit), nullptr);
    Destroy();
    record.hFixedParam = nullptr;
    EXPECT_EQ(Open(kEdit), nullptr);
    Destroy();
    EXPECT_NE(Open(kPanel), nullptr) << "it has a summary of nothing";
}

TEST_F(DialogHooksTest, WorksWithoutTheTablesThatMayBeAbsent) {
    record.pParamProcs = nullptr;
    record.pHostProcs = nullptr;
    record.pWindowProcs = nullptr;
    record.hComposite = nullptr;
    ASSERT_NE(Open(kEdit), nullptr);
    EXPECT_EQ(Notify(epiNotifyOK), 1);
    EXPECT_EQ(heard, "");
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

// What a host's event loop does between two of its dialogs.
void RunTheLoop() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

// A sanitizer makes each of them ten times as slow, and sees a leak in the first.
#ifdef __SANITIZE_ADDRESS__
constexpr int kManyDialogs = 100;
#else
constexpr int kManyDialogs = 1000;
#endif

TEST_F(DialogHooksTest, LeavesNothingOfAThousandDialogs) {
    const platform::EventTypeSpec watched[] = {
        { platform::kEventClassCommand, platform::kEventCommandProcess },
        { platform::kEventClassMouse, platform::kEventMouseMoved },
        { platform::kEventClassWindow, platform::kEventWindowClosed },
    };
    const auto handlers = [&] {
        std::size_t count = 0;
        for (const auto& type : watched)
            count += platform::CountEventHandlers(platform::GetApplicationEventTarget(), type);
        return count;
    };
    for (const std::uint32_t flags : { kPanel, kEdit }) {
        const auto makeAndDestroy = [&](int count) {
            for (int i = 0; i < count; ++i) {
                record.dwDialogFlags = flags;
                Run(epiCreateSettingDialog);
                test::At(record.hDialogWindow).Show();
                Destroy();
                RunTheLoop();
            }
        };
        makeAndDestroy(50); // caches are full then
        const std::size_t before = mallinfo2().uordblks;
        const std::size_t handlersBefore = handlers();
        const auto windowsBefore = platform::UIObject::All(platform::ObjectKind::kWindow).size();
        makeAndDestroy(kManyDialogs);
        // Caches of the display grow a little still; the smallest widget is larger than this.
        EXPECT_LT(mallinfo2().uordblks, before + 256 * std::size_t { kManyDialogs });
        EXPECT_EQ(handlers(), handlersBefore);
        EXPECT_EQ(platform::UIObject::All(platform::ObjectKind::kWindow).size(), windowsBefore);
        EXPECT_EQ(host::Ledger::Get().Outstanding(host::Lent::kHandle), 1) << "the parameters";
        EXPECT_EQ(host::Ledger::Get().Outstanding(host::Lent::kImage), 1) << "the composite";
        EXPECT_TRUE(host::Ledger::Get().IsBalanced()) << host::Ledger::Get().Describe();
        TakeHeard();
    }
}

} // namespace
