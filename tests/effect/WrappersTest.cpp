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
EPIHandleProcs s_handles {};
EPIArchiveProcs s_archives {};
EPIOffscreenProcs s_images {};

class Wrappers : public testing::Test {
protected:
    static void SetUpTestSuite() {
        s_handles.Lock = [](EPIHandleRef) { return Pin(); };
        s_handles.Unlock = [](EPIHandleRef) { Note("unlock"); };
        s_handles.Dispose = [](EPIHandleRef) { Note("dispose"); };
        s_archives.Open = [](EPIArchiveRef, const FSSpec*, std::uint32_t, std::int32_t mode) {
            Note("open");
            return std::int32_t { mode == epiArchiveRead };
        };
        s_archives.Close = [](EPIArchiveRef) { Note("close"); };
        s_images.nSize = sizeof s_images;
        s_images.Lock = [](EPIImageRef, std::int32_t) { return std::int32_t { Pin() != nullptr }; };
        s_images.Unlock = [](EPIImageRef) { Note("unlock"); };
    }
};

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
    PIHandle handle(&kObjects, &s_handles, Thing<EPIHandleRef>(), HandleOwner::kWrapper);
    EXPECT_EQ(handle.Lock(), &s_thing);
    Work();
}

TEST_F(Wrappers, PassOnTheFirstThingThrownAndGiveBackTheRest) {
    using Row = std::tuple<void (*)(), const char*, const char*, const char*>;
    const auto useArchive = [] {
        PIArchive archive(&kObjects, &s_archives, Thing<EPIArchiveRef>(), epiObjectArchive);
        EXPECT_TRUE(archive.Open(FSSpec {}, 0, epiArchiveRead));
        Work();
    };
    const auto useImage = [] {
        PIOffscreen image(&kObjects, &s_images, Thing<EPIImageRef>(), epiObjectImage);
        for (int i = 0; i < 2; ++i) // which lock once
            EXPECT_TRUE(image.Lock(PIOffscreen::Access::kRead));
        Work();
    };
    const auto useTwoLocks = [] {
        PIOffscreen dst(&kObjects, &s_images, Thing<EPIImageRef>(), 0);
        PIOffscreen src(&kObjects, &s_images, Thing<EPIImageRef>(), epiObjectImage);
        using Lock = PIOffscreenLock;
        const Lock first(dst, PIOffscreen::Access::kWrite, Lock::Unlock::kAlways);
        const Lock second(src, PIOffscreen::Access::kRead, Lock::Unlock::kAlways);
        Work();
    };
    // Nothing passes a pointer's end but what was on its way before.
    const auto useHeldImage = [] {
        const auto image = std::make_unique<PIOffscreen>(&kObjects, &s_images, Thing<EPIImageRef>(),
                                                         epiObjectImage);
        image->Lock(PIOffscreen::Access::kRead);
        Work();
    };
    // A host sees a close for each open that it was asked for, also for one that it refused.
    const auto useRefusedArchive = [] {
        PIArchive archive(&kObjects, &s_archives, Thing<EPIArchiveRef>());
        EXPECT_FALSE(archive.Open(FSSpec {}, 0, epiArchiveWrite));
        Work();
    };
    const auto useWhatIsNotTheirs = [] {
        PIHandle handle(&kObjects, &s_handles, Thing<EPIHandleRef>());
        handle.Lock();
        handle.Unlock();
        handle.Unlock();
        const PIObject borrowed(&kObjects, &s_thing, 0);
        PIArchive none(&kObjects, &s_archives, nullptr, epiObjectArchive);
        EXPECT_FALSE(none.Open(FSSpec {}, 0, epiArchiveRead));
        Work();
    };
    for (const auto& [use, throwing, calls, thrown] : {
             Row { UseHandle, "", "pin unlock dispose ", "" },
             Row { UseHandle, "dispose", "pin unlock dispose ", "dispose" },
             Row { UseHandle, "unlock dispose", "pin unlock dispose ", "unlock" },
             Row { useArchive, "close release2", "open close release2 ", "close" },
             Row { useImage, "unlock release1", "pin unlock release1 ", "unlock" },
             Row { useTwoLocks, "unlock release1", "pin pin unlock unlock release1 ", "unlock" },
             Row { useHeldImage, "unlock release1", "pin unlock release1 ", "" },
             Row { useRefusedArchive, "", "open close ", "" },
             Row { useWhatIsNotTheirs, "", "pin unlock ", "" },
         })
        for (const bool works : { true, false }) {
            s_works = works;
            EXPECT_EQ(Thrown(throwing, use), works ? thrown : "work") << throwing;
            EXPECT_EQ(s_calls, calls) << throwing;
        }
    s_works = true;
}

// An exception that is older than the wrapper is no reason to keep quiet about a newer one.
TEST_F(Wrappers, PassOnWhatIsThrownWhileAnOlderExceptionGoesOn) {
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
