// SPDX-License-Identifier: BSD-3-Clause
// Events of a class and a kind with typed parameters; targets whose chains of handlers receive them;
// the main queue. Knows no display: the user interface feeds it and drives it.
//
// Targets, handlers and sending belong to the user-interface thread. Events may be made and
// posted on any thread, but one event is used by one thread at a time.
//
// References to targets and handlers are never reused: a call with one that is gone gives a
// status, whenever it comes.
#pragma once

#include <cstdint>
#include <functional>

#include "platform/Status.h"

namespace platform {

using OSType = std::uint32_t; // four characters, the first in the high byte
using EventTime = double;     // seconds

struct Event;
struct EventHandlerCall;
struct EventQueue;
struct OpaqueEventTarget;
struct OpaqueEventHandler;
using EventRef = Event*;
using EventHandlerCallRef = EventHandlerCall*;
using EventQueueRef = EventQueue*;
using EventTargetRef = OpaqueEventTarget*;
using EventHandlerRef = OpaqueEventHandler*;

inline constexpr OSStatus kEventAlreadyPostedErr = -9860;
inline constexpr OSStatus kEventParameterNotFoundErr = -9870;
inline constexpr OSStatus kEventNotHandledErr = -9874;

struct EventTypeSpec {
    OSType eventClass;
    std::uint32_t eventKind;
    bool operator==(const EventTypeSpec&) const = default;
};

// Events -----------------------------------------------------------------------------------------

// Events are counted: CreateEvent gives the first count, ReleaseEvent ends one.
OSStatus CreateEvent(OSType eventClass, std::uint32_t kind, EventRef* event);
EventRef RetainEvent(EventRef event);
void ReleaseEvent(EventRef event);

OSType GetEventClass(EventRef event);
std::uint32_t GetEventKind(EventRef event);

inline constexpr OSType kTypeWildCard = 0x2A2A2A2A; // "****": any type
// The parameter of a posted event that names the target it is aimed at.
inline constexpr OSType kEventParamPostTarget = 0x70747267; // "ptrg"
inline constexpr OSType kTypeEventTargetRef = 0x65747267;   // "etrg"

// Copies size bytes into the event under the name, in place of what was there.
OSStatus SetEventParameter(EventRef event, OSType name, OSType type, std::uint32_t size,
                           const void* data);
// Copies at most bufferSize bytes of the parameter. actualType, actualSize (that of the whole
// parameter) and buffer may be null. A parameter that is missing or of another type gives
// kEventParameterNotFoundErr, and nothing is written.
OSStatus GetEventParameter(EventRef event, OSType name, OSType desiredType, OSType* actualType,
                           std::uint32_t bufferSize, std::uint32_t* actualSize, void* buffer);

// The state of the modifier keys at the event in hand; the user interface keeps it up to date.
std::uint32_t GetCurrentEventKeyModifiers();
void SetCurrentEventKeyModifiers(std::uint32_t modifiers);

// Targets and handlers ---------------------------------------------------------------------------

// A command that a target leaves unhandled goes on to its parent (null: to nobody). Ended by
// DisposeEventTarget, which removes the target's handlers; a handler of it that is running goes on.
EventTargetRef CreateEventTarget(EventTargetRef parent);
void DisposeEventTarget(EventTargetRef target);
bool IsValidEventTarget(EventTargetRef target);
// The target of last resort, which posted events without a target of their own go to. Never ends.
EventTargetRef GetApplicationEventTarget();

// Gives 0 for handled, kEventNotHandledErr to let the next handler have the event, or an error.
using EventHandlerProc = OSStatus (*)(EventHandlerCallRef call, EventRef event, void* userData);
using EventHandlerUPP = EventHandlerProc;

// The handler installed last is asked first. It is not asked about an event that is on its way
// already. handler may be null.
OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP proc, std::uint32_t count,
                             const EventTypeSpec* types, void* userData, EventHandlerRef* handler);
// May come while the handler runs; it is not called again then.
OSStatus RemoveEventHandler(EventHandlerRef handler);
OSStatus AddEventTypesToHandler(EventHandlerRef handler, std::uint32_t count,
                                const EventTypeSpec* types);
OSStatus RemoveEventTypesFromHandler(EventHandlerRef handler, std::uint32_t count,
                                     const EventTypeSpec* types);

// How many handlers of the target want events of the type: whoever makes events for a target asks
// before it makes one for nobody. Handlers of the target's parent do not count. Allocates nothing.
std::uint32_t CountEventHandlers(EventTargetRef target, const EventTypeSpec& type);

// Runs the chain now. kEventNotHandledErr when nobody handles the event. Exceptions of handlers
// pass through.
OSStatus SendEventToEventTarget(EventRef event, EventTargetRef target);
// Only within a handler, with its own call: runs the rest of the chain now. Whatever the handler
// gives afterwards, the rest is not run again.
OSStatus CallNextEventHandler(EventHandlerCallRef call, EventRef event);

// The main queue ---------------------------------------------------------------------------------

enum class EventPriority : std::int16_t { kLow = 0, kStandard = 1, kHigh = 2 };

// Keeps a count of the event until it was delivered. Higher priorities go first, and within one the
// event posted first.
OSStatus PostEventToQueue(EventQueueRef queue, EventRef event, EventPriority priority);
EventQueueRef GetMainEventQueue();
// Delivers the main queue's first event to its target, or to the application when it has none; an event whose
// target is gone is dropped. False when the queue was empty.
bool DeliverNextEvent();
// Called, on the posting thread, when the queue gets its first event: the user interface then sees
// to it that DeliverNextEvent is called until there is none. Empty: nobody.
void SetMainQueueWakeUp(std::function<void()> wakeUp);

} // namespace platform
