// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxCarbonEventHandler.h"

#include <algorithm>

using namespace platform;

std::vector<HuxCarbonEventHandler*> HuxCarbonEventHandler::s_ObjectStack;

HuxCarbonEventHandler::HuxCarbonEventHandler() : m_uppCarbonEventHandler(s_HuxCarbonEventHandler) {}

HuxCarbonEventHandler::~HuxCarbonEventHandler() {
    m_uppCarbonEventHandler = nullptr;
    HuxCarbonEventHandler::Remove();
}

// Installing -------------------------------------------------------------------------------------

OSStatus HuxCarbonEventHandler::Install(EventTargetRef target) {
    return InstallSelf(target);
}

OSStatus HuxCarbonEventHandler::InstallSelf(EventTargetRef) {
    return kNoErr;
}

OSStatus HuxCarbonEventHandler::Remove() {
    if (m_refHandler)
        RemoveEventHandler(m_refHandler);
    m_refHandler = nullptr;
    InvalidObject(this);
    return kNoErr;
}

OSStatus HuxCarbonEventHandler::InstallCarbonEventHandler(EventTargetRef target,
                                                          unsigned long count,
                                                          const EventTypeSpec* types) {
    if (!target || !m_uppCarbonEventHandler || count == 0)
        return kParamErr;
    if (m_refHandler)
        return AddEventTypes(count, types);
    return InstallEventHandler(target, m_uppCarbonEventHandler, static_cast<std::uint32_t>(count),
                               types, this, &m_refHandler);
}

OSStatus HuxCarbonEventHandler::AddEventTypes(unsigned long count, const EventTypeSpec* types) {
    if (!m_refHandler)
        return kParamErr;
    return AddEventTypesToHandler(m_refHandler, static_cast<std::uint32_t>(count), types);
}

OSStatus HuxCarbonEventHandler::RemoveEventTypes(unsigned long count, const EventTypeSpec* types) {
    if (!m_refHandler)
        return kParamErr;
    return RemoveEventTypesFromHandler(m_refHandler, static_cast<std::uint32_t>(count), types);
}

// Dispatch ---------------------------------------------------------------------------------------

OSStatus HuxCarbonEventHandler::s_HuxCarbonEventHandler(EventHandlerCallRef call, EventRef event,
                                                        void* userData) {
    OSStatus result = kEventNotHandledErr;
    auto* const object = static_cast<HuxCarbonEventHandler*>(userData);
    if (!object || !object->m_refHandler)
        return result;
    PushObject(object);
    object->m_refHandlerCallCurrent = call;
    object->m_refEventCurrent = event;
    try {
        RunPhases(object, call, event, result);
    } catch (HuxException& error) {
        if (GetCurrentObject())
            object->HandleErrorHuxException(error);
    } catch (std::bad_alloc& error) {
        if (GetCurrentObject())
            object->HandleErrorBadAlloc(error);
    } catch (...) {
        if (GetCurrentObject())
            object->HandleErrorOther();
    }
    if (GetCurrentObject()) {
        object->m_refHandlerCallCurrent = nullptr;
        object->m_refEventCurrent = nullptr;
    }
    PopObject();
    return result;
}

// result has what was reached, also when a phase throws.
void HuxCarbonEventHandler::RunPhases(HuxCarbonEventHandler* object, EventHandlerCallRef call,
                                      EventRef event, OSStatus& result) {
    if (GetCurrentObject())
        result = object->HandleEventBegin(call, event);
    if (result == kEventNotHandledErr && GetCurrentObject())
        result = object->HandleEventCurrent(call, event);
    // The end is for follow-up work and never decides the outcome.
    if (GetCurrentObject())
        object->HandleEventEnd(call, event);
}

OSStatus HuxCarbonEventHandler::HandleEventBegin(EventHandlerCallRef call, EventRef event) {
    return HandleEventBeginSelf(call, event);
}

OSStatus HuxCarbonEventHandler::HandleEventBeginSelf(EventHandlerCallRef, EventRef) {
    return kEventNotHandledErr;
}

OSStatus HuxCarbonEventHandler::HandleEventCurrent(EventHandlerCallRef call, EventRef event) {
    return HandleEventCurrentSelf(call, event);
}

OSStatus HuxCarbonEventHandler::HandleEventCurrentSelf(EventHandlerCallRef, EventRef) {
    return kEventNotHandledErr;
}

OSStatus HuxCarbonEventHandler::HandleEventEnd(EventHandlerCallRef call, EventRef event) {
    return HandleEventEndSelf(call, event);
}

OSStatus HuxCarbonEventHandler::HandleEventEndSelf(EventHandlerCallRef, EventRef) {
    return kEventNotHandledErr;
}

OSStatus HuxCarbonEventHandler::CallNext() {
    if (!m_refHandlerCallCurrent || !m_refEventCurrent)
        return kParamErr;
    return CallNextEventHandler(m_refHandlerCallCurrent, m_refEventCurrent);
}

// The objects in progress ------------------------------------------------------------------------

HuxCarbonEventHandler* HuxCarbonEventHandler::GetCurrentObject() {
    return s_ObjectStack.empty() ? nullptr : s_ObjectStack.back();
}

void HuxCarbonEventHandler::PushObject(HuxCarbonEventHandler* object) {
    s_ObjectStack.push_back(object);
}

void HuxCarbonEventHandler::PopObject() {
    s_ObjectStack.pop_back();
}

void HuxCarbonEventHandler::InvalidObject(const HuxCarbonEventHandler* object) {
    std::ranges::replace(s_ObjectStack, object, nullptr);
}

// Errors -----------------------------------------------------------------------------------------

void HuxCarbonEventHandler::HandleErrorHuxException(HuxException& error) {
    PostError(error.GetErrorCode());
}

void HuxCarbonEventHandler::HandleErrorBadAlloc(std::bad_alloc&) {
    PostError(kMemFullErr);
}

void HuxCarbonEventHandler::HandleErrorOther() {
    PostError(0);
}

// A failure while reporting a failure has nobody left to be told to.
void HuxCarbonEventHandler::PostError(long errorCode) noexcept {
    _HUX_ERROR error {};
    error.nErrorCode = static_cast<std::int32_t>(errorCode);
    error.uEventClass = GetEventClass(m_refEventCurrent);
    error.uEventKind = GetEventKind(m_refEventCurrent);
    try {
        EventRef event = nullptr;
        if (CreateEvent(kHuxErrorCode, kHuxErrorKind, &event) != kNoErr)
            return;
        if (SetEventParameter(event, kHuxErrorCode, kHuxErrorCode, sizeof error, &error) == kNoErr)
            PostEventToQueue(GetMainEventQueue(), event, EventPriority::kStandard);
        ReleaseEvent(event);
    } catch (...) {
        return;
    }
}
