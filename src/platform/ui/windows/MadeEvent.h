// SPDX-License-Identifier: BSD-3-Clause
// An event that is made, given its parameters and sent in one place.
#pragma once

#include "platform/Events.h"

namespace platform {

class MadeEvent {
public:
    MadeEvent(OSType eventClass, std::uint32_t kind) {
        CreateEvent(eventClass, kind, GetCurrentEventTime(), &m_event);
    }
    MadeEvent(const MadeEvent&) = delete;
    MadeEvent& operator=(const MadeEvent&) = delete;
    ~MadeEvent() { ReleaseEvent(m_event); }

    EventRef Get() const { return m_event; } // null without memory; sending it gives a status
    template <class T>
    void Set(OSType name, OSType type, const T& value) {
        // NOLINTNEXTLINE(bugprone-sizeof-expression): a reference is a value of its own size.
        SetEventParameter(m_event, name, type, sizeof value, &value);
    }

private:
    EventRef m_event = nullptr;
};

} // namespace platform
