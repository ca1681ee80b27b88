// SPDX-License-Identifier: BSD-3-Clause
#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <thread>

#include <gmock/gmock.h>

#include "platform/events/Event.h"

namespace platform {
namespace {

constexpr OSType kClass = 0x74657374;
constexpr double kFarAway = 1e6; // seconds; no test waits for it

class EventLoopTest : public testing::Test {
protected:
    EventLoopTest() {
        EventTypeSpec const types[] = { { kClass, 1 }, { kClass, 2 }, { kClass, 3 } };
        InstallEventHandler(m_target, Note, 3, types, this, nullptr);
        InstallEventHandler(GetApplicationEventTarget(), NoteApplication, 3, types, this,
                            &m_application);
    }
    ~EventLoopTest() override {
        while (DeliverNextEvent()) {
        }
        DisposeEventTarget(m_target);
        RemoveEventHandler(m_application);
        SetMainQueueWakeUp({});
    }

    static OSStatus Note(EventHandlerCallRef, EventRef event, void* self) {
        auto& test = *static_cast<EventLoopTest*>(self);
        test.m_log += std::to_string(GetEventKind(event));
        auto const act = test.m_act; // which may change it
        if (act)
            act();
        return kNoErr;
    }
    static OSStatus NoteApplication(EventHandlerCallRef, EventRef event, void* self) {
        static_cast<EventLoopTest*>(self)->m_log += "A" + std::to_string(GetEventKind(event));
        return kNoErr;
    }

    HeldEvent Make(std::uint32_t kind, EventTargetRef target) {
        EventRef event = nullptr;
        CreateEvent(kClass, kind, 0, &event);
        if (target)
            SetEventParameter(event, kEventParamPostTarget, kTypeEventTargetRef, sizeof target,
                              &target);
        HeldEvent held(event);
        ReleaseEvent(event);
        return held;
    }
    void Post(std::uint32_t kind, EventPriority priority = EventPriority::kStandard) {
        HeldEvent const event = Make(kind, m_target);
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

TEST_F(EventLoopTest, DeliversByPriorityAndThenInTheOrderOfPosting) {
    Post(1, EventPriority::kLow);
    Post(2);
    Post(3, EventPriority::kHigh);
    Post(1);
    Post(2, EventPriority::kHigh);
    DeliverAll();
    EXPECT_EQ(m_log, "32211");
}

TEST_F(EventLoopTest, AnEventWaitsOnlyOnceAndIsReleasedAfterDelivery) {
    HeldEvent const event = Make(1, m_target);
    EXPECT_EQ(PostEventToQueue(GetMainEventQueue(), event.Get(), EventPriority::kLow), kNoErr);
    EXPECT_EQ(PostEventToQueue(GetMainEventQueue(), event.Get(), EventPriority::kHigh),
              kEventAlreadyPostedErr);
    EXPECT_TRUE(IsEventInQueue(GetMainEventQueue(), event.Get()));
    DeliverAll();
    EXPECT_FALSE(IsEventInQueue(GetMainEventQueue(), event.Get()));
    EXPECT_EQ(GetEventRetainCount(event.Get()), 1U);
    EXPECT_EQ(m_log, "1");
}

TEST_F(EventLoopTest, ARemovedEventIsNotDelivered) {
    HeldEvent const event = Make(1, m_target);
    PostEventToQueue(GetMainEventQueue(), event.Get(), EventPriority::kStandard);
    EXPECT_EQ(RemoveEventFromQueue(GetMainEventQueue(), event.Get()), kNoErr);
    EXPECT_EQ(RemoveEventFromQueue(GetMainEventQueue(), event.Get()), kEventNotInQueueErr);
    EXPECT_FALSE(DeliverNextEvent());
    EXPECT_EQ(m_log, "");
}

TEST_F(EventLoopTest, WithoutATargetTheApplicationHasItAndForADeadOneNobody) {
    HeldEvent const plain = Make(1, nullptr);
    PostEventToQueue(GetMainEventQueue(), plain.Get(), EventPriority::kStandard);
    Post(2);
    DisposeEventTarget(m_target);
    DeliverAll();
    EXPECT_EQ(m_log, "A1");
}

TEST_F(EventLoopTest, WhatAHandlerPostsComesAfterIt) {
    m_act = [this] {
        m_act = {};
        Post(2);
        m_log += "+";
    };
    Post(1);
    DeliverAll();
    EXPECT_EQ(m_log, "1+2");
}

TEST_F(EventLoopTest, WakesUpOnlyForTheFirstWaitingEvent) {
    int wakeUps = 0;
    SetMainQueueWakeUp([&wakeUps] { ++wakeUps; });
    Post(1);
    Post(2);
    EXPECT_EQ(wakeUps, 1);
    DeliverAll();
    Post(1);
    EXPECT_EQ(wakeUps, 2);
}

TEST_F(EventLoopTest, RunsUntilItIsQuitFromAnotherThread) {
    std::thread other([this] {
        Post(1);
        HeldEvent const event = Make(2, m_target);
        PostEventToQueue(GetMainEventQueue(), event.Get(), EventPriority::kStandard);
    });
    m_act = [this] {
        if (m_log == "12")
            std::thread(QuitEventLoop).join();
    };
    EXPECT_EQ(RunEventLoop(kFarAway), kEventLoopQuitErr);
    other.join();
    EXPECT_EQ(m_log, "12");
}

TEST_F(EventLoopTest, QuittingEndsTheInnermostLoop) {
    m_act = [this] {
        m_act = [] { QuitEventLoop(); };
        Post(2);
        EXPECT_EQ(RunEventLoop(kFarAway), kEventLoopQuitErr);
        m_log += "+";
        Post(3);
    };
    Post(1);
    EXPECT_EQ(RunEventLoop(kFarAway), kEventLoopQuitErr);
    EXPECT_EQ(m_log, "12+3");
    EXPECT_EQ(RunEventLoop(0), kEventLoopTimedOutErr);
}

struct Ticker {
    EventLoopTimerRef timer = nullptr;
    std::string name;
    std::string* log = nullptr;
    std::function<void()> act {};

    static void Fire(EventLoopTimerRef timer, void* self) {
        auto& ticker = *static_cast<Ticker*>(self);
        EXPECT_EQ(timer, ticker.timer);
        *ticker.log += ticker.name;
        if (ticker.act)
            ticker.act();
    }
    void Start(EventTime delay, EventTime interval) {
        ASSERT_EQ(InstallEventLoopTimer(delay, interval, Fire, this, &timer), kNoErr);
    }
    ~Ticker() { RemoveEventLoopTimer(timer); }
};

TEST_F(EventLoopTest, TimersFireInTheOrderOfTheirTimesOnceEach) {
    Ticker late { .name = "l", .log = &m_log };
    Ticker early { .name = "e", .log = &m_log };
    late.Start(20, 0);
    early.Start(10, 10);
    EventTime const now = GetCurrentEventTime();
    FireTimers(now);
    EXPECT_EQ(m_log, "");
    FireTimers(now + 100);
    EXPECT_EQ(m_log, "el");
    FireTimers(now + 100.5);
    EXPECT_EQ(m_log, "ele");
    EXPECT_NEAR(NextTimerTime(), now + 100.5, 10);
}

TEST_F(EventLoopTest, ATimerMayRemoveOrPutOffAnotherThatIsDue) {
    Ticker first { .name = "f", .log = &m_log };
    Ticker removed { .name = "r", .log = &m_log };
    Ticker putOff { .name = "p", .log = &m_log };
    first.Start(1, 0);
    removed.Start(2, 0);
    putOff.Start(3, 0);
    first.act = [&] {
        RemoveEventLoopTimer(first.timer);
        RemoveEventLoopTimer(removed.timer);
        SetEventLoopTimerNextFireTime(putOff.timer, kFarAway);
    };
    FireTimers(GetCurrentEventTime() + 10);
    EXPECT_EQ(m_log, "f");
    EXPECT_EQ(RemoveEventLoopTimer(removed.timer), kParamErr);
    FireTimers(GetCurrentEventTime() + 2 * kFarAway);
    EXPECT_EQ(m_log, "fp");
    EXPECT_EQ(NextTimerTime(), std::numeric_limits<EventTime>::infinity());
}

TEST_F(EventLoopTest, TheLoopFiresTimersWhileItWaits) {
    Ticker ticker { .name = "t", .log = &m_log };
    ticker.act = [this] {
        if (m_log == "ttt")
            QuitEventLoop();
    };
    ticker.Start(0, 0.001);
    EXPECT_EQ(RunEventLoop(kFarAway), kEventLoopQuitErr);
    EXPECT_EQ(m_log, "ttt");
}

TEST_F(EventLoopTest, RefusesTimersThatSayNothing) {
    EventLoopTimerRef timer = nullptr;
    EXPECT_EQ(InstallEventLoopTimer(0, 0, nullptr, nullptr, &timer), kParamErr);
    EXPECT_EQ(InstallEventLoopTimer(std::nan(""), 0, Ticker::Fire, nullptr, &timer), kParamErr);
    EXPECT_EQ(SetEventLoopTimerNextFireTime(timer, 1), kParamErr);
}

} // namespace
} // namespace platform
