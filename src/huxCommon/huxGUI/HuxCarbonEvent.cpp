// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxCarbonEvent.h"

#include <utility>

#include "huxCommon/huxUtility/HuxException.h"

using namespace platform;

HuxCarbonEvent::HuxCarbonEvent(OSType eventClass, std::uint32_t kind) {
    if (const OSStatus status = CreateEvent(eventClass, kind, &m_refEvent))
        huxThrowError(status, __FILE__, __LINE__);
}

HuxCarbonEvent::HuxCarbonEvent(EventRef event, bool addReference)
    : m_refEvent(addReference && event ? RetainEvent(event) : event) {}

HuxCarbonEvent::~HuxCarbonEvent() {
    if (m_refEvent)
        ReleaseEvent(m_refEvent);
}

// Posting ----------------------------------------------------------------------------------------

OSStatus HuxCarbonEvent::PostToQueue(EventQueueRef queue, Priority priority) {
    return PostEventToQueue(queue ? queue : GetMainEventQueue(), m_refEvent, priority);
}

OSStatus HuxCarbonEvent::PostToQueue(EventTargetRef target, EventQueueRef queue,
                                     Priority priority) {
    return PostAimed(target, IsValidEventTarget(target) ? target : nullptr, queue, priority);
}

OSStatus HuxCarbonEvent::PostAimed(const void* object, EventTargetRef target, EventQueueRef queue,
                                   Priority priority) {
    if (object) {
        // Without its target the event would reach the application instead of nobody.
        if (!target)
            return kParamErr;
        if (const OSStatus status = SetParameter(kEventParamPostTarget, kTypeEventTargetRef,
                                                 sizeof(EventTargetRef), &target))
            return status;
    }
    return PostToQueue(queue, priority);
}

// Commands ---------------------------------------------------------------------------------------

void HuxCarbonEvent::CreateEventCommand(const HuxCommandSource& from, std::uint32_t commandID,
                                        long value, void* data) {
    if (m_refEvent)
        ReleaseEvent(std::exchange(m_refEvent, nullptr));
    OSStatus status = CreateEvent(kEventClassCommand, kEventCommandProcess, &m_refEvent);
    if (status == kNoErr)
        status = SetCommandParameter(from, commandID, value, data);
    if (status != kNoErr)
        huxThrowError(status, __FILE__, __LINE__);
}

OSStatus HuxCarbonEvent::SetCommandParameter(const HuxCommandSource& from, std::uint32_t commandID,
                                             long value, void* data) {
    HICommandExtended command = from.command;
    command.commandID = commandID;
    OSStatus status =
        SetParameter(kEventParamDirectObject, kTypeHICommand, sizeof command, &command);
    const std::uint32_t modifiers = GetCurrentEventKeyModifiers();
    if (status == kNoErr)
        status = SetParameter(kEventParamKeyModifiers, kTypeUInt32, sizeof modifiers, &modifiers);
    const auto value32 = static_cast<std::int32_t>(value);
    if (status == kNoErr && value != 0)
        status = SetParameter(kHuxEventParamValue, kTypeSInt32, sizeof value32, &value32);
    if (status == kNoErr && data)
        status = SetParameter(kHuxEventParamUserData, kTypeUInt32, sizeof data, &data);
    return status;
}

OSStatus HuxCarbonEvent::GetCommandParameter(std::uint32_t* commandID, long* value,
                                             HICommandExtended* command, void** data) const {
    HICommandExtended read {};
    std::int32_t value32 = 0;
    void* readData = nullptr;
    const OSStatus status =
        GetParameter(kEventParamDirectObject, kTypeHICommand, sizeof read, &read);
    if (status == kNoErr) {
        GetParameter(kHuxEventParamValue, kTypeSInt32, sizeof value32, &value32);
        GetParameter(kHuxEventParamUserData, kTypeUInt32, sizeof readData, &readData);
    }
    if (commandID)
        *commandID = read.commandID;
    if (value)
        *value = value32;
    if (command)
        *command = read;
    if (data)
        *data = readData;
    return status;
}

OSStatus HuxCarbonEvent::PostEventCommand(EventTargetRef target, const HuxCommandSource& from,
                                          std::uint32_t commandID, long value) {
    HuxCarbonEvent event;
    event.CreateEventCommand(from, commandID, value, nullptr);
    return event.PostToQueue(target);
}

OSStatus HuxCarbonEvent::SendEventCommand(EventTargetRef target, const HuxCommandSource& from,
                                          std::uint32_t commandID, long value, void* data) {
    HuxCarbonEvent event;
    event.CreateEventCommand(from, commandID, value, data);
    return SendEventToEventTarget(event.GetEventRef(), target);
}

// Parameters -------------------------------------------------------------------------------------

OSStatus HuxCarbonEvent::SetParameter(OSType name, OSType type, std::uint32_t size,
                                      const void* data) {
    return SetEventParameter(m_refEvent, name, type, size, data);
}

OSStatus HuxCarbonEvent::GetParameter(OSType name, OSType type, std::uint32_t size,
                                      void* data) const {
    return GetEventParameter(m_refEvent, name, type, nullptr, size, nullptr, data);
}

OSStatus HuxCarbonEvent::GetParameterType(OSType name, OSType* type) const {
    return GetEventParameter(m_refEvent, name, kTypeWildCard, type, 0, nullptr, nullptr);
}

OSStatus HuxCarbonEvent::GetParameterSize(OSType name, std::uint32_t* size) const {
    return GetEventParameter(m_refEvent, name, kTypeWildCard, nullptr, 0, size, nullptr);
}
