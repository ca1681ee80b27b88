// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxWindowBase.h"

#include "huxCommon/huxGUI/HuxEvents.h"

using namespace platform;

// The window's property must not lead to an object that is gone, so the window goes with it.
HuxWindowBase::~HuxWindowBase() {
    HuxWindowBase::Dispose();
}

void HuxWindowBase::Dispose() {
    const Alive alive(*this);
    if (Window* const window = GetWindow())
        window->Dispose();
    if (alive)
        m_hwnd = nullptr;
}

EventTargetRef HuxWindowBase::GetEventTarget() const {
    return UIObject::TargetOf(m_hwnd);
}

HuxWindowBase* HuxWindowBase::FromWindow(WindowRef window) {
    const Window* const found = Window::Find(window);
    return found ? static_cast<HuxWindowBase*>(
                       found->Property(kHuxPropertyCreator, kHuxPropertyObject))
                 : nullptr;
}

OSStatus HuxWindowBase::OpenNibWindow(const char* windowName, const char* nibName,
                                      CFBundleRef bundle) {
    m_hwnd = nullptr;
    if (!windowName || !nibName)
        return kParamErr;
    const OSStatus status = CreateWindowFromNib(bundle ? bundle : CFBundleGetMainBundle(), nibName,
                                                windowName, &m_hwnd);
    if (Window* const window = GetWindow())
        window->SetProperty(kHuxPropertyCreator, kHuxPropertyObject, this);
    return status;
}
