// SPDX-License-Identifier: BSD-3-Clause
// Hears of failures inside a plug-in's dialogs, which come as events of class 'HUXE' to the
// application's target.
#pragma once

#include <cstdint>
#include <functional>

#include <QString>

#include "platform/Events.h"

namespace studio {

// What such an event carries, as plug-ins lay it out.
struct PluginError {
    char reserved[256];
    std::int32_t code;        // a platform status
    std::uint32_t eventClass; // of the event that was being handled; 0 if there was none
    std::uint32_t eventKind;
};
static_assert(sizeof(PluginError) == 268);

inline constexpr platform::OSType kPluginErrorClass = 0x48555845; // "HUXE"; its parameter, too
inline constexpr std::uint32_t kPluginErrorKind = 1;

// For people: what was being handled, in words where they are known, and the code.
QString Describe(const PluginError& error);

// Listens as long as it lives. User-interface thread.
class ErrorEvents {
public:
    explicit ErrorEvents(std::function<void(const PluginError&)> hear);
    ErrorEvents(const ErrorEvents&) = delete;
    ErrorEvents& operator=(const ErrorEvents&) = delete;
    ~ErrorEvents();

private:
    static platform::OSStatus Handle(platform::EventHandlerCallRef call, platform::EventRef event,
                                     void* self);

    std::function<void(const PluginError&)> m_hear;
    platform::EventHandlerRef m_handler = nullptr;
};

} // namespace studio
