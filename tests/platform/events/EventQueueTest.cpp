// SPDX-License-Identifier: BSD-3-Clause
#include <functional>
#include <string>

#include <gmock/gmock.h>

#include "platform/events/Event.h"

namespace platform {
namespace {

constexpr OSType kClass = 0x74657374;

class EventQueueTest : public testing::Test {
protected:
    EventQueueTest() {
        const EventTypeSpec types[] = { { kClass, 1 }, { kClass, 2 }, { kClass, 3 } };
        InstallEventHandler(m_target, Note, 3, types, this, nullptr);
        InstallEventHandler(GetApplicationEventTarget(), NoteApplication, 3, types, this,
                            &m_application);
    }
    ~EventQueueTest() override {
        DeliverAll();
        DisposeEventTarget(m_target);
        RemoveEventHandler(m_application);
        SetMainQueueWakeUp({});
    }

    static OSStatus Note(EventHandlerCallRef, EventRef event, void* self) {
        auto& test = *static_cast<EventQueueTest*>(self);
        test.m_log += std::to_string(GetEventKind(event));
        const auto act = test.m_act; // which may change it
        if (act)
            act();
        return kNoErr;
    }
    static OSStatus NoteApplication(EventHandlerCallRef, EventRef event, void* self) {
        static_cast<EventQueueTest*>(self)->m_log += "A" + std::to_string(GetEventKind(event));
        return kNoErr;
    }

    HeldEvent Make(std::uint32_t kind, EventTargetRef target) {
        EventRef event = nullptr;
        CreateEvent(kClass, kind, &event);
        if (target)
            SetEventParameter(event, kEventParamPostTarget, kTypeEventTargetRef, sizeof target,
                              &target);
        HeldEvent held(event);
        ReleaseEvent(event);
        return held;
    }
    void Post(std::uint32_t kind, EventPriority priority = EventPriority::kStandard) {
        const HeldEvent event = Make(kind, m_target);
        EXPECT_EQ(PostEventToQueue(GetMainEventQueue(), event.Get(), priority), kNoErr);
    }
    void DeliverAll() {
        while (DeliverNextEvent()) {
        }
    }

    EventTargetRef m_target = CreateEventTarget(nullptr);
    EventHandlerRef m_application = nullptr;
    std::string m_log;
    std::function<void()> m_act;
};

TEST_F(EventQueueTest, DeliversByPriorityAndThenInTheOrderOfPosting) {
    Post(1, EventPriority::kLow);
    Post(2);
    Post(3, EventPriority::kHigh);
    Post(1);
    Post(2, EventPriority::kHigh);
    DeliverAll();
    EXPECT_EQ(m_log, "32211");
}

TEST_F(EventQueueTest, AnEventWaitsOnlyOnceAndIsReleasedAfterDelivery) {
    const HeldEvent event = Make(1, m_target);
    EXPECT_EQ(PostEventToQueue(GetMainEventQueue(), event.Get(), EventPriority::kLow), kNoErr);
    EXPECT_EQ(PostEventToQueue(GetMainEventQueue(), event.Get(), EventPriority::kHigh),
              kEventAlreadyPostedErr);
    DeliverAll();
    EXPECT_EQ(event.Get()->count, 1U);
    EXPECT_EQ(m_log, "1");
}

TEST_F(EventQueueTest, WithoutATargetTheApplicationHasItAndForADeadOneNobody) {
    const HeldEvent plain = Make(1, nullptr);
    PostEventToQueue(GetMainEventQueue(), plain.Get(), EventPriority::kStandard);
    Post(2);
    DisposeEventTarget(m_target);
    DeliverAll();
    EXPECT_EQ(m_log, "A1");
}

TEST_F(EventQueueTest, WakesUpOnlyForTheFirstWaitingEvent) {
    int wakeUps = 0;
    SetMainQueueWakeUp([&wakeUps] { ++wakeUps; });
    Post(1);
    Post(2);
    EXPECT_EQ(wakeUps, 1);
    DeliverAll();
    Post(1);
    EXPECT_EQ(wakeUps, 2);
}

} // namespace
} // namespace platform
