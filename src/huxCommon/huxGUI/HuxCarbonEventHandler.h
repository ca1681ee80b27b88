// SPDX-License-Identifier: BSD-3-Clause
// The base of everything that handles events: one platform handler, three phases, and no exception
// that crosses into the platform.
//
//   event -> s_HuxCarbonEventHandler -> Begin --handled--------> End
//                                         \--not-> Current ----> End      the result is Begin's or
//                                                                         Current's, never End's
//
// An object may be destroyed in any of its phases, or in a dispatch nested inside one; whatever would
// come after that is skipped. User-interface thread only.
#pragma once

#include <cstdint>
#include <new>
#include <vector>

#include "huxCommon/huxUtility/HuxException.h"
#include "platform/Events.h"

class HuxCarbonEventHandler {
public:
    HuxCarbonEventHandler();
    HuxCarbonEventHandler(const HuxCarbonEventHandler&) = delete;
    HuxCarbonEventHandler& operator=(const HuxCarbonEventHandler&) = delete;
    virtual ~HuxCarbonEventHandler();

    // Installs with the type list of the class.
    virtual platform::OSStatus Install(platform::EventTargetRef target);
    virtual platform::OSStatus InstallSelf(platform::EventTargetRef target);
    virtual platform::OSStatus Remove();
    // Adds the types when the object is installed already.
    virtual platform::OSStatus InstallCarbonEventHandler(platform::EventTargetRef target,
                                                         unsigned long count,
                                                         const platform::EventTypeSpec* types);
    virtual platform::OSStatus AddEventTypes(unsigned long count,
                                             const platform::EventTypeSpec* types);
    virtual platform::OSStatus RemoveEventTypes(unsigned long count,
                                                const platform::EventTypeSpec* types);

    // Classes in between override these, to put work around the ...Self call; the last ones override
    // ...Self.
    virtual platform::OSStatus HandleEventBegin(platform::EventHandlerCallRef call,
                                                platform::EventRef event);
    virtual platform::OSStatus HandleEventBeginSelf(platform::EventHandlerCallRef call,
                                                    platform::EventRef event);
    virtual platform::OSStatus HandleEventCurrent(platform::EventHandlerCallRef call,
                                                  platform::EventRef event);
    virtual platform::OSStatus HandleEventCurrentSelf(platform::EventHandlerCallRef call,
                                                      platform::EventRef event);
    virtual platform::OSStatus HandleEventEnd(platform::EventHandlerCallRef call,
                                              platform::EventRef event);
    virtual platform::OSStatus HandleEventEndSelf(platform::EventHandlerCallRef call,
                                                  platform::EventRef event);

    // What becomes of an exception out of a phase: posted to the host as a 'HUXE' event.
    virtual void HandleErrorHuxException(HuxException& error);
    virtual void HandleErrorBadAlloc(std::bad_alloc& error);
    virtual void HandleErrorOther();

    // Within a phase: lets the next handler of the platform's chain act now.
    platform::OSStatus CallNext();
    platform::EventRef GetEventRef() const { return m_refEventCurrent; }
    platform::EventHandlerCallRef GetEventHandlerCallRef() const { return m_refHandlerCallCurrent; }
    bool IsInstalled() const { return m_refHandler != nullptr; }

    // The object whose event is in hand; null when there is none, or when it is gone.
    static HuxCarbonEventHandler* GetCurrentObject();

private:
    static platform::OSStatus s_HuxCarbonEventHandler(platform::EventHandlerCallRef call,
                                                      platform::EventRef event, void* userData);
    static void PushObject(HuxCarbonEventHandler* object);
    static void PopObject();
    static void InvalidObject(const HuxCarbonEventHandler* object);

    static void RunPhases(HuxCarbonEventHandler* object, platform::EventHandlerCallRef call,
                          platform::EventRef event, platform::OSStatus& result);
    void PostError(long errorCode) noexcept;

    platform::EventHandlerRef m_refHandler = nullptr;
    platform::EventHandlerUPP m_uppCarbonEventHandler;
    platform::EventRef m_refEventCurrent = nullptr;
    platform::EventHandlerCallRef m_refHandlerCallCurrent = nullptr;

    // Objects whose handling is in progress, the innermost last; null for one that is gone.
    static std::vector<HuxCarbonEventHandler*> s_ObjectStack;
};

// The event by which the toolkit tells the host of a failure inside a handler. It travels as an event parameter
// of exactly this size.
struct _HUX_ERROR {
    char strError[256]; // always zero: the words are the host's
    std::int32_t nErrorCode;
    std::uint32_t uEventClass; // of the event in hand when it happened; 0 if there was none
    std::uint32_t uEventKind;
};
static_assert(sizeof(_HUX_ERROR) == 268);

// Class of the event, name of its one parameter and the parameter's type.
inline constexpr platform::OSType kHuxErrorCode = 0x48555845; // "HUXE"
inline constexpr std::uint32_t kHuxErrorKind = 1;
