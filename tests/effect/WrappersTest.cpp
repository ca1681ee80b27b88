// SPDX-License-Identifier: BSD-3-Clause
// The wrappers over host objects give back what they took, in the order that the host needs.
#include <string>

#include <gtest/gtest.h>

#include "effect/PIArchive.h"
#include "effect/PIHandle.h"

namespace {

std::string s_calls;
int s_thing;

std::int32_t Open(EPIArchiveRef, const FSSpec*, std::uint32_t, std::int32_t mode) {
    s_calls += "open ";
    return mode == epiArchiveRead ? 1 : 0;
}

EPIObjectProcs ObjectTable() {
    EPIObjectProcs table {};
    table.Release = [](EPIObjectRef, std::int32_t kind) {
        s_calls += "release" + std::to_string(kind) + " ";
    };
    return table;
}

EPIHandleProcs HandleTable() {
    EPIHandleProcs table {};
    table.Lock = [](EPIHandleRef) -> void* {
        s_calls += "lock ";
        return &s_thing;
    };
    table.Unlock = [](EPIHandleRef) { s_calls += "unlock "; };
    table.Dispose = [](EPIHandleRef) { s_calls += "dispose "; };
    return table;
}

EPIArchiveProcs ArchiveTable() {
    EPIArchiveProcs table {};
    table.Open = Open;
    table.Close = [](EPIArchiveRef) { s_calls += "close "; };
    return table;
}

TEST(Wrappers, ObjectsAreReleasedOnlyWhenTheyWereMade) {
    const EPIObjectProcs procs = ObjectTable();
    struct Row {
        void* object;
        std::int32_t kind;
        const char* calls;
    };
    for (const Row& row : { Row { &s_thing, 0, "" }, Row { nullptr, 1, "" },
                            Row { &s_thing, 1, "release1 " }, Row { &s_thing, 2, "release2 " } }) {
        s_calls.clear();
        { const PIObject object(&procs, row.object, row.kind); }
        EXPECT_EQ(s_calls, row.calls) << row.kind;
    }
}

TEST(Wrappers, HandlesAreUnlockedBeforeTheyAreDisposedOf) {
    const EPIObjectProcs objects = ObjectTable();
    const EPIHandleProcs handles = HandleTable();
    auto* const reference = reinterpret_cast<EPIHandleRef>(&s_thing);
    s_calls.clear();
    {
        PIHandle handle(&objects, &handles, reference, HandleOwner::kWrapper);
        EXPECT_EQ(handle.Lock(), &s_thing);
    }
    EXPECT_EQ(s_calls, "lock unlock dispose ");
    s_calls.clear();
    {
        PIHandle handle(&objects, &handles, reference);
        handle.Lock();
        handle.Unlock();
        handle.Unlock();
    }
    EXPECT_EQ(s_calls, "lock unlock ");
}

// A host sees a close for each open that it was asked for, also for one that it refused.
TEST(Wrappers, ArchivesAreClosedWhenTheyWereToBeOpened) {
    const EPIObjectProcs objects = ObjectTable();
    const EPIArchiveProcs archives = ArchiveTable();
    auto* const reference = reinterpret_cast<EPIArchiveRef>(&s_thing);
    const FSSpec file {};
    for (const std::int32_t mode : { epiArchiveRead, epiArchiveWrite }) {
        s_calls.clear();
        {
            PIArchive archive(&objects, &archives, reference, epiObjectArchive);
            EXPECT_EQ(archive.Open(file, 0, mode), mode == epiArchiveRead);
        }
        EXPECT_EQ(s_calls, "open close release2 ");
    }
    s_calls.clear();
    {
        PIArchive none(&objects, &archives, nullptr, epiObjectArchive);
        EXPECT_FALSE(none.Open(file, 0, epiArchiveRead));
        const PIArchive borrowed(&objects, &archives, reference);
    }
    EXPECT_EQ(s_calls, "");
}

} // namespace
