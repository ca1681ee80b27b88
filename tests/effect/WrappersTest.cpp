// SPDX-License-Identifier: BSD-3-Clause
// The wrappers over host objects give back what they took, in the order that the host needs, whatever
// the host throws meanwhile.
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "effect/PIArchive.h"
#include "effect/PIHandle.h"
#include "render/PIOffscreen.h"

namespace {

std::string s_calls;
std::string s_throwing; // names of calls that throw their name
bool s_works = true;
int s_thing;

void Note(const std::string& call) {
    s_calls += call + " ";
    if (s_throwing.find(call) != std::string::npos)
        throw call;
}

void* Pin() {
    Note("pin");
    return &s_thing;
}

const EPIObjectProcs kObjects { sizeof kObjects, nullptr, [](EPIObjectRef, std::int32_t kind) {
                                   Note("release" + std::to_string(kind));
                               } };
const EPIHandleProcs kHandles = [] {
    EPIHandleProcs procs {};
    procs.Lock = [](EPIHandleRef) { return Pin(); };
    procs.Unlock = [](EPIHandleRef) { Note("unlock"); };
    procs.Dispose = [](EPIHandleRef) { Note("dispose"); };
    return procs;
}();
const EPIArchiveProcs kArchives = [] {
    EPIArchiveProcs procs {};
    procs.Open = [](EPIArchiveRef, const FSSpec*, std::uint32_t, std::int32_t mode) {
        Note("open");
        return std::int32_t { mode == epiArchiveRead };
    };
    procs.Close = [](EPIArchiveRef) { Note("close"); };
    return procs;
}();
const EPIOffscreenProcs kImages = [] {
    EPIOffscreenProcs procs {};
    procs.nSize = sizeof procs;
    procs.Lock = [](EPIImageRef, std::int32_t) { return std::int32_t { Pin() != nullptr }; };
    procs.Unlock = [](EPIImageRef) { Note("unlock"); };
    return procs;
}();

template <class Ref>
Ref Thing() {
    return reinterpret_cast<Ref>(&s_thing);
}

void Work() {
    if (!s_works)
        throw std::string("work");
}

// What comes out of the scope, and in s_calls what was called in it.
std::string Thrown(const std::string& throwing, void (*scope)()) {
    s_calls.clear();
    s_throwing = throwing;
    try {
        scope();
    } catch (const std::string& call) {
        return call;
    }
    return "";
}

void UseHandle() {
    PIHandle handle(&kObjects, &kHandles, Thing<EPIHandleRef>(), HandleOwner::kWrapper);
    EXPECT_EQ(handle.Lock(), &s_thing);
    Work();
}

void UseArchive() {
    PIArchive archive(&kObjects, &kArchives, Thing<EPIArchiveRef>(), epiObjectArchive);
    EXPECT_TRUE(archive.Open(FSSpec {}, 0, epiArchiveRead));
    Work();
}

void UseImage() {
    PIOffscreen image(&kObjects, &kImages, Thing<EPIImageRef>(), epiObjectImage);
    for (int i = 0; i < 2; ++i) // which lock once
        EXPECT_TRUE(image.Lock(PIOffscreen::Access::kRead));
    Work();
}

void UseTwoLocks() {
    PIOffscreen dst(&kObjects, &kImages, Thing<EPIImageRef>(), 0);
    PIOffscreen src(&kObjects, &kImages, Thing<EPIImageRef>(), epiObjectImage);
    const PIOffscreenLock first(dst, PIOffscreen::Access::kWrite, PIOffscreenLock::Unlock::kAlways);
    const PIOffscreenLock second(src, PIOffscreen::Access::kRead, PIOffscreenLock::Unlock::kAlways);
    Work();
}

// Nothing passes a pointer's end but what was on its way before.
void UseHeldImage() {
    const auto image =
        std::make_unique<PIOffscreen>(&kObjects, &kImages, Thing<EPIImageRef>(), epiObjectImage);
    image->Lock(PIOffscreen::Access::kRead);
    Work();
}

// A host sees a close for each open that it was asked for, also for one that it refused.
void UseRefusedArchive() {
    PIArchive archive(&kObjects, &kArchives, Thing<EPIArchiveRef>());
    EXPECT_FALSE(archive.Open(FSSpec {}, 0, epiArchiveWrite));
    Work();
}

void UseWhatIsNotTheirs() {
    PIHandle handle(&kObjects, &kHandles, Thing<EPIHandleRef>());
    handle.Lock();
    handle.Unlock();
    handle.Unlock();
    const PIObject borrowed(&kObjects, &s_thing, 0);
    PIArchive none(&kObjects, &kArchives, nullptr, epiObjectArchive);
    EXPECT_FALSE(none.Open(FSSpec {}, 0, epiArchiveRead));
    Work();
}

TEST(Wrappers, PassOnTheFirstThingThrownAndGiveBackTheRest) {
    struct Row {
        void (*use)();
        const char *throwing, *calls, *thrown;
    };
    for (const Row& row : {
             Row { UseHandle, "", "pin unlock dispose ", "" },
             Row { UseHandle, "dispose", "pin unlock dispose ", "dispose" },
             Row { UseHandle, "unlock dispose", "pin unlock dispose ", "unlock" },
             Row { UseArchive, "close release2", "open close release2 ", "close" },
             Row { UseImage, "unlock release1", "pin unlock release1 ", "unlock" },
             Row { UseTwoLocks, "unlock release1", "pin pin unlock unlock release1 ", "unlock" },
             Row { UseHeldImage, "unlock release1", "pin unlock release1 ", "" },
             Row { UseRefusedArchive, "", "open close ", "" },
             Row { UseWhatIsNotTheirs, "", "pin unlock ", "" },
         }) {
        for (const bool works : { true, false }) {
            s_works = works;
            EXPECT_EQ(Thrown(row.throwing, row.use), works ? row.thrown : "work") << row.throwing;
            EXPECT_EQ(s_calls, row.calls) << row.throwing;
        }
    }
    s_works = true;
}

// An exception that is older than the wrapper is no reason to keep quiet about a newer one.
TEST(Wrappers, PassOnWhatIsThrownWhileAnOlderExceptionGoesOn) {
    struct CleansUp {
        ~CleansUp() { EXPECT_EQ(Thrown("unlock", UseHandle), "unlock"); }
    };
    const auto fail = [] {
        const CleansUp cleansUp;
        throw 1;
    };
    EXPECT_THROW(fail(), int);
}

} // namespace
