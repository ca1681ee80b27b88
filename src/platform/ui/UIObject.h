// SPDX-License-Identifier: BSD-3-Clause
// What windows, controls, menus and alerts have in common: a number that is never given again, which
// is their reference, an event target, and objects of others that belong to them. Each class has one
// Find, which gives the object behind a reference while it is there. User-interface thread only.
#pragma once

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "platform/Commands.h"
#include "platform/Lifetime.h"

namespace platform {

enum class ObjectKind { kWindow, kControl, kMenu, kAlert };

class UIObject : public Lifetime {
public:
    // A command that the object leaves unhandled goes on to parent (null: the application).
    UIObject(ObjectKind kind, EventTargetRef parent);
    virtual ~UIObject();

    ObjectKind Kind() const { return m_kind; }
    EventTargetRef Target() const { return m_target; }
    template <class Ref>
    Ref As() const {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): a number, which nobody looks behind.
        return reinterpret_cast<Ref>(m_number);
    }

    // An object that others leave with this one; null takes it away, and is what a property that was
    // never set has.
    void SetProperty(OSType creator, OSType tag, void* value);
    void* Property(OSType creator, OSType tag) const;

    // Null when it is gone or of another kind.
    static UIObject* Find(const void* reference);
    static UIObject* Find(const void* reference, ObjectKind kind);
    static EventTargetRef TargetOf(const void* reference); // null when it is gone
    // In the order in which they were made. Any of them may be gone after an event was sent.
    static std::vector<UIObject*> All(ObjectKind kind);

private:
    ObjectKind m_kind;
    std::uintptr_t m_number;
    EventTargetRef m_target;
    std::map<std::pair<OSType, OSType>, void*> m_properties;
};

// An event that is made, given its parameters and sent in one place.
class MadeEvent {
public:
    MadeEvent(OSType eventClass, std::uint32_t kind) { CreateEvent(eventClass, kind, &m_event); }
    MadeEvent(const MadeEvent&) = delete;
    MadeEvent& operator=(const MadeEvent&) = delete;
    ~MadeEvent() { ReleaseEvent(m_event); }

    EventRef Get() const { return m_event; } // null without memory; sending it gives a status
    template <class T>
    void Set(OSType name, OSType type, const T& value) const {
        // NOLINTNEXTLINE(bugprone-sizeof-expression): a reference is a value of its own size.
        SetEventParameter(m_event, name, type, sizeof value, &value);
    }

private:
    EventRef m_event = nullptr;
};

inline void NoMore(const MadeEvent&) {}

// Makes an event of the class and kind with the object as its direct object and sends it to the
// object's target. more may add parameters. The object may be gone afterwards.
template <class More = decltype(&NoMore)>
OSStatus SendObjectEvent(const UIObject& object, OSType eventClass, std::uint32_t kind,
                         OSType typeOfObject, More more = NoMore) {
    if (eventClass != kEventClassCommand &&
        CountEventHandlers(object.Target(), { eventClass, kind }) == 0)
        return kEventNotHandledErr;
    const MadeEvent event(eventClass, kind);
    event.Set(kEventParamDirectObject, typeOfObject, object.As<void*>());
    more(event);
    return SendEventToEventTarget(event.Get(), object.Target());
}

// Whether there is, or can be, an application with a display; makes the application when the process
// has none. The first call connects the main queue with its loop.
bool EnsureUserInterface();

} // namespace platform
