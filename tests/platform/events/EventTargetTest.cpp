// SPDX-License-Identifier: BSD-3-Clause
#include <functional>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>

#include "platform/events/Event.h"

namespace platform {
namespace {

constexpr OSType kClass = 0x74657374;
constexpr OSType kCommand = 0x636D6473;
constexpr EventTypeSpec kKindOne { kClass, 1 };
constexpr EventTypeSpec kKindTwo { kClass, 2 };
constexpr EventTypeSpec kProcess { kCommand, 1 };

// A handler that writes its name into a log and then does what it is told.
struct Step {
    std::string name;
    std::string* log;
    std::function<OSStatus(EventHandlerCallRef, EventRef)> act = [](auto, auto) {
        return kEventNotHandledErr;
    };
    EventHandlerRef handler = nullptr;

    static OSStatus Run(EventHandlerCallRef call, EventRef event, void* userData) {
        auto& step = *static_cast<Step*>(userData);
        *step.log += step.name;
        return step.act(call, event);
    }
    void Install(EventTargetRef target, EventTypeSpec type = kKindOne) {
        ASSERT_EQ(InstallEventHandler(target, Run, 1, &type, this, &handler), kNoErr);
    }
};

class EventTargetTest : public testing::Test {
protected:
    ~EventTargetTest() override { DisposeEventTarget(m_target); }

    OSStatus Send(EventTypeSpec type, EventTargetRef target) {
        EventRef event = nullptr;
        CreateEvent(type.eventClass, type.eventKind, &event);
        const HeldEvent held(event);
        ReleaseEvent(event);
        return SendEventToEventTarget(event, target);
    }
    OSStatus Send(EventTypeSpec type = kKindOne) { return Send(type, m_target); }

    EventTargetRef m_target = CreateEventTarget(nullptr);
    std::string m_log;
    Step m_a { "a", &m_log };
    Step m_b { "b", &m_log };
    Step m_c { "c", &m_log };
};

TEST_F(EventTargetTest, StopsAtTheFirstThatHandlesOrFails) {
    for (const OSStatus status : { kNoErr, kParamErr }) {
        m_log.clear();
        m_a.Install(m_target);
        m_b.act = [status](auto, auto) { return status; };
        m_b.Install(m_target); // the one installed last is asked first
        EXPECT_EQ(Send(), status);
        EXPECT_EQ(m_log, "b");
    }
}

TEST_F(EventTargetTest, PassingOnRunsTheRestOnceAndGivesItsResult) {
    m_a.Install(m_target);
    m_a.act = [](auto, auto) { return -7; };
    m_b.Install(m_target);
    m_b.act = [this](auto call, auto event) {
        EXPECT_EQ(CallNextEventHandler(call, event), -7);
        m_log += "+";
        return kEventNotHandledErr;
    };
    EXPECT_EQ(Send(), kEventNotHandledErr);
    EXPECT_EQ(m_log, "ba+");
}

TEST_F(EventTargetTest, AHandlerMayRemoveItselfAndOthersWhileItRuns) {
    m_a.Install(m_target);
    m_b.Install(m_target);
    m_c.Install(m_target);
    m_c.act = [this](auto, auto) {
        EXPECT_EQ(RemoveEventHandler(m_c.handler), kNoErr);
        EXPECT_EQ(RemoveEventHandler(m_b.handler), kNoErr);
        EXPECT_EQ(RemoveEventHandler(m_b.handler), kParamErr);
        return kEventNotHandledErr;
    };
    Send();
    Send();
    EXPECT_EQ(m_log, "caa");
}

TEST_F(EventTargetTest, AHandlerInstalledMeanwhileWaitsForTheNextEvent) {
    m_a.Install(m_target);
    m_a.act = [this](auto, auto) {
        if (!m_b.handler)
            m_b.Install(m_target);
        return kEventNotHandledErr;
    };
    Send();
    EXPECT_EQ(m_log, "a");
    Send();
    EXPECT_EQ(m_log, "aba");
}

TEST_F(EventTargetTest, ATargetDisposedWhileItIsAskedAsksNobodyElse) {
    m_a.Install(m_target);
    m_b.Install(m_target);
    m_b.act = [this](auto call, auto event) {
        DisposeEventTarget(m_target);
        return CallNextEventHandler(call, event);
    };
    EXPECT_EQ(Send(), kEventNotHandledErr);
    EXPECT_EQ(m_log, "b");
    EXPECT_FALSE(IsValidEventTarget(m_target));
    EXPECT_EQ(RemoveEventHandler(m_a.handler), kParamErr);
    EXPECT_EQ(Send(), kParamErr);
    EXPECT_EQ(InstallEventHandler(m_target, Step::Run, 1, &kKindOne, &m_a, nullptr), kParamErr);
}

TEST_F(EventTargetTest, OnlyUnhandledCommandsGoUpToTheParent) {
    const EventTargetRef child = CreateEventTarget(m_target);
    m_a.Install(m_target, kProcess);
    AddEventTypesToHandler(m_a.handler, 1, &kKindOne);
    m_b.Install(child, kProcess);
    EXPECT_EQ(Send(kKindOne, child), kEventNotHandledErr);
    Send(kProcess, child);
    EXPECT_EQ(m_log, "ba");
    m_b.act = [](auto, auto) { return kNoErr; };
    Send(kProcess, child);
    EXPECT_EQ(m_log, "bab");
    DisposeEventTarget(m_target);
    m_b.act = [](auto, auto) { return kEventNotHandledErr; };
    EXPECT_EQ(Send(kProcess, child), kEventNotHandledErr);
    DisposeEventTarget(child);
}

} // namespace
} // namespace platform
