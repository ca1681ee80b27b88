// SPDX-License-Identifier: BSD-3-Clause
// Owns one reference of a platform event: makes it, posts it, and fills and reads its parameters, those
// of command events above all. User-interface thread only.
#pragma once

#include <cstdint>

#include "huxCommon/huxGUI/HuxEvents.h"
#include "platform/Commands.h"
#include "platform/Events.h"

// Where a command comes from: from nothing in particular, a window, a control, or an item of a menu.
struct HuxCommandSource {
    HuxCommandSource() = default;
    HuxCommandSource(platform::WindowRef window) {
        command.attributes = platform::kHICommandFromWindow;
        command.source.window = window;
    }
    HuxCommandSource(platform::ControlRef control) {
        command.attributes = platform::kHICommandFromControl;
        command.source.control = control;
    }
    HuxCommandSource(platform::MenuRef menu, platform::MenuItemIndex item) {
        command.attributes = platform::kHICommandFromMenu;
        command.source.menu = { menu, item };
    }

    platform::HICommandExtended command {}; // but for its id
};

class HuxCarbonEvent {
public:
    HuxCarbonEvent() = default;
    // Timestamped now; a failure is thrown.
    HuxCarbonEvent(platform::OSType eventClass, std::uint32_t kind);
    // Takes over the caller's reference, or one of its own with addReference.
    HuxCarbonEvent(platform::EventRef event, bool addReference);
    HuxCarbonEvent(const HuxCarbonEvent&) = delete;
    HuxCarbonEvent& operator=(const HuxCarbonEvent&) = delete;
    virtual ~HuxCarbonEvent();

    platform::EventRef GetEventRef() const { return m_refEvent; }
    platform::OSType GetClass() const { return platform::GetEventClass(m_refEvent); }
    std::uint32_t GetKind() const { return platform::GetEventKind(m_refEvent); }
    bool Is(platform::OSType eventClass, std::uint32_t kind) const {
        return GetClass() == eventClass && GetKind() == kind;
    }

    // Posting: queue null is the main queue. The forms with an object aim the event at its target
    // first. A null object aims at nothing, so that the event goes to the application; one that is
    // gone gives kParamErr, and nothing is posted.
    using Priority = platform::EventPriority;
    platform::OSStatus PostToQueue(platform::EventQueueRef queue = nullptr,
                                   Priority priority = Priority::kStandard);
    platform::OSStatus PostToQueue(platform::EventTargetRef target,
                                   platform::EventQueueRef queue = nullptr,
                                   Priority priority = Priority::kStandard);
    // A WindowRef, ControlRef, MenuRef, DialogRef or HIObjectRef; with the user interface only
    // (telop-hux-ui).
    template <class Object>
    platform::OSStatus PostToQueue(Object* object, platform::EventQueueRef queue = nullptr,
                                   Priority priority = Priority::kStandard) {
        return PostToObject(object, queue, priority);
    }

    // A new command event in place of the held one, timestamped now; a failure is thrown. value 0
    // and data null are left out of the event.
    void CreateEventCommand(const HuxCommandSource& from, std::uint32_t commandID, long value,
                            void* data);
    void CreateEventCommand(std::uint32_t commandID, long value, void* data) {
        CreateEventCommand({}, commandID, value, data);
    }
    platform::OSStatus SetCommandParameter(const HuxCommandSource& from, std::uint32_t commandID,
                                           long value, void* data);
    platform::OSStatus SetCommandParameter(std::uint32_t commandID, long value, void* data) {
        return SetCommandParameter({}, commandID, value, data);
    }
    // Every pointer may be null. Without a command in the event the status says so and everything
    // becomes 0; a value or data that is missing is 0.
    platform::OSStatus GetCommandParameter(std::uint32_t* commandID, long* value,
                                           platform::HICommandExtended* command, void** data) const;

    // Posts a command without data to the main queue, aimed at target.
    static platform::OSStatus PostEventCommand(platform::EventTargetRef target,
                                               const HuxCommandSource& from,
                                               std::uint32_t commandID, long value);
    static platform::OSStatus PostEventCommand(platform::EventTargetRef target,
                                               std::uint32_t commandID, long value) {
        return PostEventCommand(target, {}, commandID, value);
    }
    // Delivers a command now and gives what became of it.
    static platform::OSStatus SendEventCommand(platform::EventTargetRef target,
                                               const HuxCommandSource& from,
                                               std::uint32_t commandID, long value, void* data);
    static platform::OSStatus SendEventCommand(platform::EventTargetRef target,
                                               std::uint32_t commandID, long value, void* data) {
        return SendEventCommand(target, {}, commandID, value, data);
    }

    platform::OSStatus SetParameter(platform::OSType name, platform::OSType type,
                                    std::uint32_t size, const void* data);
    // At most size bytes; kEventParameterNotFoundErr when there is none of the type.
    platform::OSStatus GetParameter(platform::OSType name, platform::OSType type,
                                    std::uint32_t size, void* data) const;
    platform::OSStatus GetParameterType(platform::OSType name, platform::OSType* type) const;
    platform::OSStatus GetParameterSize(platform::OSType name, std::uint32_t* size) const;

private:
    platform::OSStatus PostToObject(const void* object, platform::EventQueueRef queue,
                                    Priority priority);
    platform::OSStatus PostAimed(const void* object, platform::EventTargetRef target,
                                 platform::EventQueueRef queue, Priority priority);

    platform::EventRef m_refEvent = nullptr;
};
