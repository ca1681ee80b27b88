// SPDX-License-Identifier: BSD-3-Clause
#include "effect/EntryPoint.h"

#include <climits>
#include <cstring>

#include <gmock/gmock.h>

#include "effect/CEPIObject.h"
#include "support/CountingHost.h"

namespace {

// Gives a number of its own for each operation.
class RecordingObject : public CEPIObject {
public:
    long Init(_EPIRECORD* record) override { return Note(record, 100); }
    long Term(_EPIRECORD* record) override { return Note(record, 101); }
    long InitFixedParam(_EPIRECORD* record) override { return Note(record, 102); }
    long InitSettings(_EPIRECORD* record) override { return Note(record, 103); }
    long ParamInfo(_EPIRECORD* record) override { return Note(record, 104); }
    long CreateSettingDialog(_EPIRECORD* record) override { return Note(record, 105); }
    long DialogNotify(_EPIRECORD* record) override { return Note(record, 106); }
    long DestroySettingDialog(_EPIRECORD* record) override { return Note(record, 107); }
    long DoFilter(_EPIRECORD* record) override { return Note(record, 108); }
    long Serialize(_EPIRECORD* record) override { return Note(record, 109); }
    long CalcRenderBound(_EPIRECORD* record) override { return Note(record, 110); }

    const _EPIRECORD* lastRecord = nullptr;

private:
    long Note(_EPIRECORD* record, long result) {
        lastRecord = record;
        return result;
    }
};

TEST(EntryPoint, DrivesTheObjectThatWasConstructedLast) {
    CEPIObject* const own = s_pObject; // the process's
    RecordingObject object;
    _EPIRECORD record {};
    for (long selector = epiInit; selector <= epiCalcRenderBound; ++selector) {
        EXPECT_EQ(EntryPoint(selector, &record), 100 + selector);
        EXPECT_EQ(object.lastRecord, &record) << selector;
    }
    s_pObject = own;
}

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
    host.MakeTrouble(index, trouble);
    bool thrown = false;
    try {
        EXPECT_EQ(host.Call(selector), 0) << selector << " callback " << index;
    } catch (const HostFailure&) {
        thrown = true;
    }
    EXPECT_EQ(thrown, trouble == CountingHost::Trouble::kThrow) << selector << " at " << index;
    EXPECT_EQ(host.LocksOutstanding(), 0) << selector << " callback " << index;
    EXPECT_EQ(host.Misuse(), "") << selector << " callback " << index;
    EXPECT_TRUE(host.PaddingIsUntouched()) << selector << " callback " << index;
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
