// SPDX-License-Identifier: BSD-3-Clause
#include <climits>
#include <cstring>

#include <gmock/gmock.h>

#include "support/CountingHost.h"

namespace {

TEST(EntryPoint, UnknownSelectorsTouchNothing) {
    CountingHost host(8, 8, 32);
    const _EPIRECORD before = host.record;
    for (const long selector : { 11L, -1L, static_cast<long>(0xFFFFFFFFu), LONG_MAX, LONG_MIN }) {
        EXPECT_EQ(host.Call(selector), 0x6001138EL) << selector;
        EXPECT_EQ(std::memcmp(&host.record, &before, sizeof before), 0) << selector;
    }
    EXPECT_EQ(host.CallbacksSoFar(), 0);
}

// One run of the selector with trouble at a callback; the number of callbacks that it took.
int RunSelector(long selector, bool loading, int index, CountingHost::Trouble trouble) {
    CountingHost host(64, 48, 32);
    host.loading = loading;
    host.archive.assign(sizeof(_TEXTPARAM), 0);
    host.Param().nFontSize = 12;
    std::strcpy(host.Param().szInfoText, "Text");
    host.Param().dwFlags = TEXT_INFO | TEXT_BOX;
    host.Param().nOpacity = 100;
    const _TEXTPARAM before = host.Param();
    host.MakeTrouble(index, trouble);
    bool thrown = false;
    try {
        EXPECT_EQ(host.Call(selector), 0) << selector << " callback " << index;
    } catch (const HostFailure&) {
        thrown = true;
    }
    EXPECT_EQ(thrown, trouble == CountingHost::Trouble::kThrow) << selector << " at " << index;
    if (selector == epiSerialize && thrown && index < 3) // to the read or the write
        EXPECT_EQ(std::memcmp(&before, &host.Param(), sizeof before), 0) << index;
    EXPECT_EQ(host.LocksOutstanding(), 0) << selector << " callback " << index;
    EXPECT_EQ(host.image.readableLocks, 0) << "a frame is locked for writing";
    EXPECT_TRUE(host.image.MarksAreWhole()) << selector << " callback " << index;
    return host.CallbacksSoFar();
}

TEST(EntryPoint, LeavesNothingLockedWhateverFails) {
    for (long selector = epiInit; selector <= epiCalcRenderBound; ++selector) {
        for (const bool loading : { false, true }) {
            const int callbacks = RunSelector(selector, loading, -1, CountingHost::Trouble::kNone);
            for (int index = 0; index < callbacks; ++index) {
                RunSelector(selector, loading, index, CountingHost::Trouble::kFail);
                RunSelector(selector, loading, index, CountingHost::Trouble::kThrow);
            }
        }
    }
}

} // namespace
