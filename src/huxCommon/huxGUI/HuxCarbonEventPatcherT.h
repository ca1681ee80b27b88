// SPDX-License-Identifier: BSD-3-Clause
// Lets a class handle events of a target that is not its own: the phases go to plain functions of T.
#pragma once

#include "huxCommon/huxGUI/HuxCarbonEventHandler.h"

template <class T>
class HuxCarbonEventPatcherT : public HuxCarbonEventHandler {
public:
    // The functions get the object as their user data; a null one leaves its phase unhandled. The
    // object outlives this handler.
    void SetHandler(T* object, platform::EventHandlerProc current,
                    platform::EventHandlerProc begin = nullptr,
                    platform::EventHandlerProc end = nullptr) {
        m_pHandlerObject = object;
        m_pHandlerFunc = current;
        m_pHandlerBeginFunc = begin;
        m_pHandlerEndFunc = end;
    }

    platform::OSStatus HandleEventBeginSelf(platform::EventHandlerCallRef call,
                                            platform::EventRef event) override {
        return Call(m_pHandlerBeginFunc, call, event);
    }
    platform::OSStatus HandleEventCurrentSelf(platform::EventHandlerCallRef call,
                                              platform::EventRef event) override {
        return Call(m_pHandlerFunc, call, event);
    }
    platform::OSStatus HandleEventEndSelf(platform::EventHandlerCallRef call,
                                          platform::EventRef event) override {
        return Call(m_pHandlerEndFunc, call, event);
    }

private:
    platform::OSStatus Call(platform::EventHandlerProc function, platform::EventHandlerCallRef call,
                            platform::EventRef event) {
        if (!m_pHandlerObject || !function)
            return platform::kEventNotHandledErr;
        return function(call, event, m_pHandlerObject);
    }

    T* m_pHandlerObject = nullptr;
    platform::EventHandlerProc m_pHandlerFunc = nullptr;
    platform::EventHandlerProc m_pHandlerBeginFunc = nullptr;
    platform::EventHandlerProc m_pHandlerEndFunc = nullptr;
};
