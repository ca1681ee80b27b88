// SPDX-License-Identifier: BSD-3-Clause
// The main queue: events wait here, by priority, until the user-interface thread delivers them.
#include <algorithm>
#include <array>
#include <deque>
#include <mutex>
#include <optional>

#include "platform/events/Event.h"

namespace platform {

namespace {

using Lane = std::deque<HeldEvent>;

} // namespace

struct EventQueue {
public:
    // Whether the queue was empty before; nothing for an event that waits already.
    std::optional<bool> Push(EventRef event, EventPriority priority) {
        const std::lock_guard lock(m_mutex);
        if (Has(event))
            return std::nullopt;
        const bool first = std::ranges::all_of(m_lanes, &Lane::empty);
        m_lanes[static_cast<std::size_t>(priority)].emplace_back(event);
        return first;
    }

    std::optional<HeldEvent> Pop() {
        const std::lock_guard lock(m_mutex);
        for (auto lane = m_lanes.rbegin(); lane != m_lanes.rend(); ++lane) {
            if (!lane->empty()) {
                std::optional<HeldEvent> event(std::move(lane->front()));
                lane->pop_front();
                return event;
            }
        }
        return std::nullopt;
    }

    void SetWakeUp(std::function<void()> wakeUp) {
        const std::lock_guard lock(m_mutex);
        m_wakeUp = std::move(wakeUp);
    }

    void WakeUp() {
        std::function<void()> wakeUp;
        {
            const std::lock_guard lock(m_mutex);
            wakeUp = m_wakeUp;
        }
        if (wakeUp)
            wakeUp();
    }

private:
    bool Has(EventRef event) const {
        return std::ranges::any_of(m_lanes, [event](const Lane& lane) {
            return std::ranges::find(lane, event, &HeldEvent::Get) != lane.end();
        });
    }

    std::mutex m_mutex;
    std::array<Lane, 3> m_lanes; // by priority, the lowest first
    std::function<void()> m_wakeUp;
};

namespace {

EventTargetRef PostTarget(EventRef event) {
    EventTargetRef target = nullptr;
    // NOLINTNEXTLINE(bugprone-sizeof-expression): the parameter is the reference itself.
    constexpr std::uint32_t kSize = sizeof target;
    const OSStatus status = GetEventParameter(event, kEventParamPostTarget, kTypeEventTargetRef,
                                              nullptr, kSize, nullptr, &target);
    return status == kNoErr && target ? target : GetApplicationEventTarget();
}

} // namespace

EventQueueRef GetMainEventQueue() {
    // Never destroyed: a thread may post while the process ends.
    static EventQueue& queue = *new EventQueue;
    return &queue;
}

OSStatus PostEventToQueue(EventQueueRef queue, EventRef event, EventPriority priority) {
    if (!queue || !event || priority < EventPriority::kLow || priority > EventPriority::kHigh)
        return kParamErr;
    const std::optional<bool> first = queue->Push(event, priority);
    if (!first)
        return kEventAlreadyPostedErr;
    if (*first)
        queue->WakeUp();
    return kNoErr;
}

bool DeliverNextEvent() {
    const std::optional<HeldEvent> event = GetMainEventQueue()->Pop();
    if (event)
        SendEventToEventTarget(event->Get(), PostTarget(event->Get()));
    return event.has_value();
}

void SetMainQueueWakeUp(std::function<void()> wakeUp) {
    GetMainEventQueue()->SetWakeUp(std::move(wakeUp));
}

} // namespace platform
