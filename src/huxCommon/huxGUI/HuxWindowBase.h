// SPDX-License-Identifier: BSD-3-Clause
// The base of window objects: which window it is. The window's property 'VELM'/"EXDA" leads back.
#pragma once

#include "platform/Lifetime.h"
#include "platform/ui/Windows.h"

class HuxWindowBase : public platform::Lifetime {
public:
    HuxWindowBase() = default;
    virtual ~HuxWindowBase();
    // Ends the window when it is still there.
    virtual void Dispose();

    platform::WindowRef GetWindowRef() const { return m_hwnd; } // null when there is none
    // Null when there is none, or when it is gone. Found anew after each step that sends events.
    platform::Window* GetWindow() const { return platform::Window::Find(m_hwnd); }
    bool IsValid() const { return GetWindow() != nullptr; }
    platform::EventTargetRef GetEventTarget() const;

    // The object of a window of this toolkit; null for other windows.
    static HuxWindowBase* FromWindow(platform::WindowRef window);

protected:
    // Makes the hidden window and its property; no window on failure. Names are UTF-8, bundle null
    // is the main bundle.
    platform::OSStatus OpenNibWindow(const char* windowName, const char* nibName,
                                     platform::CFBundleRef bundle);

    platform::WindowRef m_hwnd = nullptr;
};
