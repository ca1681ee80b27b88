// SPDX-License-Identifier: BSD-3-Clause
// Events with their parameters, the handlers that are asked about them, and the queue in which they wait.
#include <functional>
#include <optional>
#include <string>

#include <gmock/gmock.h>

#include "platform/events/Event.h"
#include "support/ChainHandler.h"

namespace platform {
namespace {

constexpr OSType kName = 0x6E616D65;
constexpr OSType kLong = 0x6C6F6E67;
constexpr OSType kText = 0x74657874;
constexpr EventTypeSpec kType { 0x74657374, 1 };
constexpr EventTypeSpec kProcess { 0x636D6473, 1 };

HeldEvent Make(EventTypeSpec type) {
    EventRef event = nullptr;
    CreateEvent(type.eventClass, type.eventKind, &event);
    HeldEvent held(event);
    ReleaseEvent(event);
    return held;
}

OSStatus Pass(EventHandlerCallRef, EventRef) {
    return kEventNotHandledErr;
}

class EventsTest : public testing::Test {
protected:
    using Handler = std::optional<test::ChainHandler>;

    ~EventsTest() override {
        DeliverAll();
        DisposeEventTarget(m_target);
        SetMainQueueWakeUp({});
    }
    // One that writes its name into the log and then does what it is told. No target: the test's.
    void Install(Handler& handler, const char* name, test::ChainHandler::Act act = Pass,
                 EventTypeSpec type = kType, EventTargetRef target = nullptr) {
        handler.emplace(
            target ? target : m_target, std::vector { type },
            [this, name, act = std::move(act)](EventHandlerCallRef call, EventRef event) {
                m_log += name;
                return act(call, event);
            });
    }
    OSStatus Send() { return SendEventToEventTarget(Make(kType).Get(), m_target); }
    static void Post(const HeldEvent& event, EventTargetRef target, EventPriority priority) {
        SetEventParameter(event.Get(), kEventParamPostTarget, kTypeEventTargetRef, sizeof target,
                          &target);
        EXPECT_EQ(PostEventToQueue(GetMainEventQueue(), event.Get(), priority), kNoErr);
    }
    static void DeliverAll() {
        while (DeliverNextEvent()) {
        }
    }

    EventTargetRef m_target = CreateEventTarget(nullptr);
    std::string m_log;
    Handler m_a, m_b, m_c;
};

TEST_F(EventsTest, ParametersAreReadWithinTheirBufferAndByTheirType) {
    const HeldEvent made = Make(kType);
    const EventRef event = made.Get();
    SetEventParameter(event, kName, kLong, 2, "yz");
    SetEventParameter(event, kName, kText, 5, "abcde"); // in the place of the other
    char buffer[] = "....";
    std::uint32_t size = 0;
    EXPECT_EQ(GetEventParameter(event, kName, kText, nullptr, 3, &size, buffer), kNoErr);
    EXPECT_STREQ(buffer, "abc.");
    EXPECT_EQ(size, 5U);
    for (const auto& [name, type] : { std::pair(kText, kText), std::pair(kName, kLong) })
        EXPECT_EQ(GetEventParameter(event, name, type, nullptr, 4, nullptr, buffer),
                  kEventParameterNotFoundErr);
    EXPECT_STREQ(buffer, "abc.");
    EXPECT_EQ(SetEventParameter(event, kName, kText, 1, nullptr), kParamErr);
}

TEST_F(EventsTest, PassingOnRunsTheRestOnceAndGivesItsResult) {
    Install(m_a, "a", [](auto, auto) { return -7; });
    Install(m_b, "b", [this](auto call, auto event) {
        EXPECT_EQ(CallNextEventHandler(call, event), -7);
        m_log += "+";
        return kEventNotHandledErr;
    });
    EXPECT_EQ(Send(), kEventNotHandledErr);
    EXPECT_EQ(m_log, "ba+");
}

TEST_F(EventsTest, AHandlerMayRemoveItselfAndOthersAndAddOneForTheNextEvent) {
    Install(m_a, "a");
    Install(m_b, "b");
    Install(m_c, "c", [this](auto, auto) {
        m_b.reset();
        Install(m_b, "new");
        m_c.reset();
        return kEventNotHandledErr;
    });
    Send();
    EXPECT_EQ(m_log, "ca");
    Send();
    EXPECT_EQ(m_log, "canewa");
}

TEST_F(EventsTest, ATargetDisposedWhileItIsAskedAsksNobodyElse) {
    Install(m_a, "a");
    Install(m_b, "b", [this](auto call, auto event) {
        DisposeEventTarget(m_target);
        return CallNextEventHandler(call, event);
    });
    EXPECT_EQ(Send(), kEventNotHandledErr);
    EXPECT_EQ(m_log, "b");
    EXPECT_FALSE(IsValidEventTarget(m_target));
    EXPECT_EQ(Send(), kParamErr);
    const EventHandlerProc proc = [](EventHandlerCallRef, EventRef, void*) -> OSStatus {
        return 0;
    };
    EXPECT_EQ(InstallEventHandler(m_target, proc, 1, &kType, nullptr, nullptr), kParamErr);
}

TEST_F(EventsTest, OnlyUnhandledCommandsGoUpToTheParent) {
    const EventTargetRef child = CreateEventTarget(m_target);
    const auto send = [child](EventTypeSpec type) {
        return SendEventToEventTarget(Make(type).Get(), child);
    };
    Install(m_a, "a", Pass, kProcess);
    Install(m_c, "c");
    Install(m_b, "b", Pass, kProcess, child);
    EXPECT_EQ(send(kType), kEventNotHandledErr);
    send(kProcess);
    EXPECT_EQ(m_log, "ba");
    Install(
        m_b, "b", [](auto, auto) { return kNoErr; }, kProcess, child);
    send(kProcess);
    EXPECT_EQ(m_log, "bab");
    DisposeEventTarget(m_target);
    m_b.reset();
    EXPECT_EQ(send(kProcess), kEventNotHandledErr);
    DisposeEventTarget(child);
}

TEST_F(EventsTest, AreDeliveredByPriorityAndThenInTheOrderOfPosting) {
    int wakeUps = 0;
    SetMainQueueWakeUp([&wakeUps] { ++wakeUps; });
    Install(m_a, "", [this](auto, auto event) {
        std::uint32_t number = 0;
        GetEventParameter(event, kName, kLong, nullptr, sizeof number, nullptr, &number);
        m_log += std::to_string(number);
        return kNoErr;
    });
    using enum EventPriority;
    std::uint32_t number = 0;
    for (const EventPriority priority : { kLow, kStandard, kHigh, kLow, kStandard, kHigh }) {
        const HeldEvent event = Make(kType);
        SetEventParameter(event.Get(), kName, kLong, sizeof number, &number);
        ++number;
        Post(event, m_target, priority);
    }
    DeliverAll();
    EXPECT_EQ(m_log, "251403");
    EXPECT_EQ(wakeUps, 1) << "for the first that waits";
    Post(Make(kType), m_target, kStandard);
    EXPECT_EQ(wakeUps, 2);
}

TEST_F(EventsTest, WaitOnceAndGoToTheApplicationWithoutATargetAndToNobodyForADeadOne) {
    Install(m_a, "a", [](auto, auto) { return kNoErr; });
    Install(m_b, "application", Pass, kType, GetApplicationEventTarget());
    const HeldEvent event = Make(kType);
    Post(event, m_target, EventPriority::kLow);
    EXPECT_EQ(PostEventToQueue(GetMainEventQueue(), event.Get(), EventPriority::kHigh),
              kEventAlreadyPostedErr);
    DeliverAll();
    EXPECT_EQ(event.Get()->count, 1U);
    EXPECT_EQ(m_log, "a");
    Post(event, m_target, EventPriority::kStandard);
    const HeldEvent plain = Make(kType);
    PostEventToQueue(GetMainEventQueue(), plain.Get(), EventPriority::kStandard);
    DisposeEventTarget(m_target);
    DeliverAll();
    EXPECT_EQ(m_log, "aapplication");
}

} // namespace
} // namespace platform
