// SPDX-License-Identifier: BSD-3-Clause
// The loop that delivers events and fires timers where no display's own loop does it.
#include "platform/events/EventLoop.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>

#include "platform/Events.h"

namespace platform {

namespace {

struct LoopState {
    std::mutex mutex;
    std::condition_variable changed;
    bool signalled = false;
    int quits = 0; // asked for and not yet obeyed
};

LoopState& TheLoop() {
    static LoopState& loop = *new LoopState;
    return loop;
}

bool TakeQuit() {
    LoopState& loop = TheLoop();
    std::lock_guard const lock(loop.mutex);
    if (loop.quits == 0)
        return false;
    --loop.quits;
    return true;
}

void WaitUntil(EventTime time) {
    LoopState& loop = TheLoop();
    std::unique_lock lock(loop.mutex);
    auto const woken = [&loop] { return loop.signalled || loop.quits > 0; };
    EventTime const seconds = time - GetCurrentEventTime();
    constexpr EventTime kLongest = 3600; // further away than a duration holds: look once an hour
    loop.changed.wait_for(
        lock, std::chrono::duration<EventTime>(std::clamp(seconds, 0.0, kLongest)), woken);
    loop.signalled = false;
}

} // namespace

void SignalEventLoop() {
    LoopState& loop = TheLoop();
    {
        std::lock_guard const lock(loop.mutex);
        loop.signalled = true;
    }
    loop.changed.notify_all();
}

OSStatus RunEventLoop(EventTime timeout) {
    EventTime const end = GetCurrentEventTime() + timeout;
    for (;;) {
        if (TakeQuit())
            return kEventLoopQuitErr;
        FireTimers(GetCurrentEventTime());
        if (DeliverNextEvent())
            continue;
        if (GetCurrentEventTime() >= end)
            return TakeQuit() ? kEventLoopQuitErr : kEventLoopTimedOutErr;
        WaitUntil(std::min(end, NextTimerTime()));
    }
}

void QuitEventLoop() {
    LoopState& loop = TheLoop();
    {
        std::lock_guard const lock(loop.mutex);
        ++loop.quits;
    }
    loop.changed.notify_all();
}

} // namespace platform
