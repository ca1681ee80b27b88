// SPDX-License-Identifier: BSD-3-Clause
// Timers: which are due, in which order, and what becomes of those that are removed while they fire.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "platform/Events.h"

namespace platform {

namespace {

struct Timer {
    EventLoopTimerRef reference;
    EventTime next;
    EventTime interval;
    EventLoopTimerProc proc;
    void* userData;
};

struct Timers {
    std::vector<Timer> all; // few, so a search costs less than an order that must be kept
    std::uintptr_t lastReference = 0;
    std::function<void()> wakeUp;

    Timer* Find(EventLoopTimerRef reference) {
        auto const found = std::ranges::find(all, reference, &Timer::reference);
        return found == all.end() ? nullptr : &*found;
    }
    void Changed() const {
        if (wakeUp)
            wakeUp();
    }
};

Timers& TheTimers() {
    static Timers& timers = *new Timers;
    return timers;
}

constexpr EventTime kNever = std::numeric_limits<EventTime>::infinity();

// A timer that is late fires once, not once for every interval that it missed.
EventTime NextTime(const Timer& timer, EventTime now) {
    return timer.interval > 0 ? std::max(timer.next + timer.interval, now) : kNever;
}

void Fire(EventLoopTimerRef reference, EventTime now) {
    Timer* const timer = TheTimers().Find(reference);
    if (!timer || timer->next > now)
        return; // removed or put off by one that fired before it
    timer->next = NextTime(*timer, now);
    timer->proc(reference, timer->userData);
}

} // namespace

OSStatus InstallEventLoopTimer(EventTime delay, EventTime interval, EventLoopTimerProc proc,
                               void* userData, EventLoopTimerRef* timer) {
    if (!proc || !timer || std::isnan(delay) || std::isnan(interval))
        return kParamErr;
    Timers& timers = TheTimers();
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a number, which nobody looks behind.
    *timer = reinterpret_cast<EventLoopTimerRef>(++timers.lastReference);
    timers.all.push_back({ *timer, GetCurrentEventTime() + delay, interval, proc, userData });
    timers.Changed();
    return kNoErr;
}

OSStatus RemoveEventLoopTimer(EventLoopTimerRef timer) {
    Timers& timers = TheTimers();
    if (std::erase_if(timers.all, [timer](const Timer& t) { return t.reference == timer; }) == 0)
        return kParamErr;
    timers.Changed();
    return kNoErr;
}

OSStatus SetEventLoopTimerNextFireTime(EventLoopTimerRef timer, EventTime delay) {
    Timers& timers = TheTimers();
    Timer* const found = timers.Find(timer);
    if (!found || std::isnan(delay))
        return kParamErr;
    found->next = GetCurrentEventTime() + delay;
    timers.Changed();
    return kNoErr;
}

EventTime NextTimerTime() {
    std::vector<Timer> const& all = TheTimers().all;
    auto const first = std::ranges::min_element(all, {}, &Timer::next);
    return first == all.end() ? kNever : first->next;
}

void FireTimers(EventTime now) {
    std::vector<std::pair<EventTime, EventLoopTimerRef>> due;
    for (Timer const& timer : TheTimers().all) {
        if (timer.next <= now)
            due.emplace_back(timer.next, timer.reference);
    }
    if (due.empty())
        return;
    std::ranges::stable_sort(due, {}, &decltype(due)::value_type::first);
    for (auto const& [time, reference] : due)
        Fire(reference, now);
    TheTimers().Changed();
}

void SetTimerWakeUp(std::function<void()> wakeUp) {
    TheTimers().wakeUp = std::move(wakeUp);
}

} // namespace platform
