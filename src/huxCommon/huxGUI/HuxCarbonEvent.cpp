// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxCarbonEvent.h"

#include <utility>

#include "huxCommon/huxUtility/HuxException.h"

using namespace platform;

HuxCarbonEvent::HuxCarbonEvent(OSType eventClass, std::uint32_t kind) {
    if (const OSStatus status = CreateEvent(eventClass, kind, GetCurrentEventTime(), &m_refEvent))
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

namespace {

HICommandExtended Command(std::uint32_t attributes, std::uint32_t commandID) {
    HICommandExtended command {};
    command.attributes = attributes;
    command.commandID = commandID;
    return command;
}

HICommandExtended FromWindow(WindowRef window, std::uint32_t commandID) {
    HICommandExtended command = Command(kHICommandFromWindow, commandID);
    command.source.window = window;
    return command;
}

HICommandExtended FromControl(ControlRef control, std::uint32_t commandID) {
    HICommandExtended command = Command(kHICommandFromControl, commandID);
    command.source.control = control;
    return command;
}

HICommandExtended FromMenu(MenuRef menu, MenuItemIndex item, std::uint32_t commandID) {
    HICommandExtended command = Command(kHICommandFromMenu, commandID);
    command.source.menu = { menu, item };
    return command;
}

} // namespace

void HuxCarbonEvent::CreateEventCommand(std::uint32_t commandID, long value, void* data) {
    CreateCommand(Command(0, commandID), value, data);
}

void HuxCarbonEvent::CreateEventCommand(WindowRef window, std::uint32_t commandID, long value,
                                        void* data) {
    CreateCommand(FromWindow(window, commandID), value, data);
}

void HuxCarbonEvent::CreateEventCommand(ControlRef control, std::uint32_t commandID, long value,
                                        void* data) {
    CreateCommand(FromControl(control, commandID), value, data);
}

void HuxCarbonEvent::CreateEventCommand(MenuRef menu, MenuItemIndex item, std::uint32_t commandID,
                                        long value, void* data) {
    CreateCommand(FromMenu(menu, item, commandID), value, data);
}

void HuxCarbonEvent::CreateCommand(const HICommandExtended& command, long value, void* data) {
    if (m_refEvent)
        ReleaseEvent(std::exchange(m_refEvent, nullptr));
    OSStatus status =
        CreateEvent(kEventClassCommand, kEventCommandProcess, GetCurrentEventTime(), &m_refEvent);
    if (status == kNoErr)
        status = WriteCommand(command, value, data);
    if (status != kNoErr)
        huxThrowError(status, __FILE__, __LINE__);
}

OSStatus HuxCarbonEvent::SetCommandParameter(std::uint32_t commandID, long value, void* data) {
    return WriteCommand(Command(0, commandID), value, data);
}

OSStatus HuxCarbonEvent::SetCommandParameter(WindowRef window, std::uint32_t commandID, long value,
                                             void* data) {
    return WriteCommand(FromWindow(window, commandID), value, data);
}

OSStatus HuxCarbonEvent::SetCommandParameter(ControlRef control, std::uint32_t commandID,
                                             long value, void* data) {
    return WriteCommand(FromControl(control, commandID), value, data);
}

OSStatus HuxCarbonEvent::SetCommandParameter(MenuRef menu, MenuItemIndex item,
                                             std::uint32_t commandID, long value, void* data) {
    return WriteCommand(FromMenu(menu, item, commandID), value, data);
}

OSStatus HuxCarbonEvent::WriteCommand(const HICommandExtended& command, long value, void* data) {
    OSStatus status =
        SetParameter(kEventParamDirectObject, kTypeHICommand, sizeof command, &command);
    std::uint32_t const modifiers = GetCurrentEventKeyModifiers();
    if (status == kNoErr)
        status = SetParameter(kEventParamKeyModifiers, kTypeUInt32, sizeof modifiers, &modifiers);
    auto const value32 = static_cast<std::int32_t>(value);
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

// Posting and sending commands ---------------------------------------------------------------------

namespace {

template <class... Source>
OSStatus Post(EventTargetRef target, std::uint32_t commandID, long value, Source... source) {
    HuxCarbonEvent event;
    event.CreateEventCommand(source..., commandID, value, nullptr);
    return event.PostToQueue(target);
}

template <class... Source>
OSStatus Send(EventTargetRef target, std::uint32_t commandID, long value, void* data,
              Source... source) {
    HuxCarbonEvent event;
    event.CreateEventCommand(source..., commandID, value, data);
    return SendEventToEventTarget(event.GetEventRef(), target);
}

} // namespace

OSStatus HuxCarbonEvent::PostEventCommand(EventTargetRef target, std::uint32_t commandID,
                                          long value) {
    return Post(target, commandID, value);
}

OSStatus HuxCarbonEvent::PostEventCommand(EventTargetRef target, WindowRef window,
                                          std::uint32_t commandID, long value) {
    return Post(target, commandID, value, window);
}

OSStatus HuxCarbonEvent::PostEventCommand(EventTargetRef target, ControlRef control,
                                          std::uint32_t commandID, long value) {
    return Post(target, commandID, value, control);
}

OSStatus HuxCarbonEvent::PostEventCommand(EventTargetRef target, MenuRef menu, MenuItemIndex item,
                                          std::uint32_t commandID, long value) {
    return Post(target, commandID, value, menu, item);
}

OSStatus HuxCarbonEvent::SendEventCommand(EventTargetRef target, std::uint32_t commandID,
                                          long value, void* data) {
    return Send(target, commandID, value, data);
}

OSStatus HuxCarbonEvent::SendEventCommand(EventTargetRef target, WindowRef window,
                                          std::uint32_t commandID, long value, void* data) {
    return Send(target, commandID, value, data, window);
}

OSStatus HuxCarbonEvent::SendEventCommand(EventTargetRef target, ControlRef control,
                                          std::uint32_t commandID, long value, void* data) {
    return Send(target, commandID, value, data, control);
}

OSStatus HuxCarbonEvent::SendEventCommand(EventTargetRef target, MenuRef menu, MenuItemIndex item,
                                          std::uint32_t commandID, long value, void* data) {
    return Send(target, commandID, value, data, menu, item);
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
