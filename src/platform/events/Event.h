// SPDX-License-Identifier: BSD-3-Clause
// One event: its class and kind, its parameters, and how many hold it.
#pragma once

#include <atomic>
#include <cstddef>
#include <utility>
#include <vector>

#include "platform/Events.h"

namespace platform {

struct Event {
    struct Parameter {
        OSType name;
        OSType type;
        std::vector<std::byte> bytes;
    };

    OSType eventClass;
    std::uint32_t kind;
    std::vector<Parameter> parameters; // few, so a search from the front finds them soonest
    std::atomic<std::uint32_t> count { 1 };

    Parameter* Find(OSType name);
};

// Holds one count of an event.
class HeldEvent {
public:
    explicit HeldEvent(EventRef event) : m_event(RetainEvent(event)) {}
    HeldEvent(HeldEvent&& other) noexcept : m_event(std::exchange(other.m_event, nullptr)) {}
    HeldEvent& operator=(HeldEvent&& other) noexcept {
        std::swap(m_event, other.m_event);
        return *this;
    }
    ~HeldEvent() { ReleaseEvent(m_event); }

    EventRef Get() const { return m_event; }

private:
    EventRef m_event;
};

} // namespace platform
