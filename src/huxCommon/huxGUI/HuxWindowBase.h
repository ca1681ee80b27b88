// SPDX-License-Identifier: BSD-3-Clause
// The base of window objects: which window it is. The window's property 'VELM'/"EXDA" leads back.
#pragma once

#include <memory>

#include "platform/ui/Windows.h"

class HuxWindowBase {
public:
    HuxWindowBase() = default;
    HuxWindowBase(const HuxWindowBase&) = delete;
    HuxWindowBase& operator=(const HuxWindowBase&) = delete;
    virtual ~HuxWindowBase();
    // Ends the window when it is still there.
    virtual void Dispose();

    platform::WindowRef GetWindowRef() const { return m_hwnd; } // null when there is none
    bool IsValid() const; // it has a window, and that is there
    platform::EventTargetRef GetEventTarget() const;

    // The object of a window of this toolkit; null for other windows.
    static HuxWindowBase* FromWindow(platform::WindowRef window);

protected:
    // Expires with the object: for code that goes on after events which may have ended it.
    std::weak_ptr<const void> Life() const { return m_life; }

    // Makes the hidden window and its property; no window on failure. Names are UTF-8, bundle null
    // is the main bundle.
    platform::OSStatus OpenNibWindow(const char* windowName, const char* nibName,
                                     platform::CFBundleRef bundle);

    platform::WindowRef m_hwnd = nullptr;

private:
    std::shared_ptr<const void> m_life = std::make_shared<char>();
};
