// SPDX-License-Identifier: BSD-3-Clause
// Making events and reading and writing their parameters.
#include "platform/events/Event.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

namespace platform {

namespace {

std::atomic<std::uint32_t> s_keyModifiers { 0 };

} // namespace

Event::Parameter* Event::Find(OSType name) {
    const auto found = std::ranges::find(parameters, name, &Parameter::name);
    return found == parameters.end() ? nullptr : &*found;
}

OSStatus CreateEvent(OSType eventClass, std::uint32_t kind, EventRef* event) {
    if (!event)
        return kParamErr;
    *event = new (std::nothrow) Event { eventClass, kind, {} };
    return *event ? kNoErr : kMemFullErr;
}

EventRef RetainEvent(EventRef event) {
    if (event)
        event->count.fetch_add(1, std::memory_order_relaxed);
    return event;
}

void ReleaseEvent(EventRef event) {
    if (event && event->count.fetch_sub(1, std::memory_order_acq_rel) == 1)
        const std::unique_ptr<Event> last(event);
}

OSType GetEventClass(EventRef event) {
    return event ? event->eventClass : 0;
}

std::uint32_t GetEventKind(EventRef event) {
    return event ? event->kind : 0;
}

OSStatus SetEventParameter(EventRef event, OSType name, OSType type, std::uint32_t size,
                           const void* data) {
    if (!event || (size > 0 && !data))
        return kParamErr;
    try {
        const auto* bytes = static_cast<const std::byte*>(data);
        std::vector<std::byte> copy(bytes, bytes + size);
        if (Event::Parameter* const old = event->Find(name))
            *old = { name, type, std::move(copy) };
        else
            event->parameters.push_back({ name, type, std::move(copy) });
        return kNoErr;
    } catch (const std::bad_alloc&) {
        return kMemFullErr;
    }
}

OSStatus GetEventParameter(EventRef event, OSType name, OSType desiredType, OSType* actualType,
                           std::uint32_t bufferSize, std::uint32_t* actualSize, void* buffer) {
    if (!event)
        return kParamErr;
    const Event::Parameter* const parameter = event->Find(name);
    if (!parameter || (desiredType != kTypeWildCard && desiredType != parameter->type))
        return kEventParameterNotFoundErr;
    if (actualType)
        *actualType = parameter->type;
    if (actualSize)
        *actualSize = static_cast<std::uint32_t>(parameter->bytes.size());
    const std::size_t copied = std::min<std::size_t>(bufferSize, parameter->bytes.size());
    if (buffer && copied > 0)
        std::memcpy(buffer, parameter->bytes.data(), copied);
    return kNoErr;
}

std::uint32_t GetCurrentEventKeyModifiers() {
    return s_keyModifiers.load(std::memory_order_relaxed);
}

void SetCurrentEventKeyModifiers(std::uint32_t modifiers) {
    s_keyModifiers.store(modifiers, std::memory_order_relaxed);
}

} // namespace platform
