// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxWindowBase.h"

#include "huxCommon/huxCoreFoundation/HuxString.h"
#include "huxCommon/huxGUI/HuxEvents.h"

using namespace platform;

// The window's property must not lead to an object that is gone, so the window goes with it.
HuxWindowBase::~HuxWindowBase() {
    HuxWindowBase::Dispose();
}

void HuxWindowBase::Dispose() {
    const Alive alive(*this);
    if (IsValid())
        DisposeWindow(m_hwnd);
    if (alive)
        m_hwnd = nullptr;
}

bool HuxWindowBase::IsValid() const {
    return IsValidWindowPtr(m_hwnd);
}

EventTargetRef HuxWindowBase::GetEventTarget() const {
    return GetWindowEventTarget(m_hwnd);
}

HuxWindowBase* HuxWindowBase::FromWindow(WindowRef window) {
    return static_cast<HuxWindowBase*>(
        GetWindowProperty(window, kHuxPropertyCreator, kHuxPropertyObject));
}

OSStatus HuxWindowBase::OpenNibWindow(const char* windowName, const char* nibName,
                                      CFBundleRef bundle) {
    m_hwnd = nullptr;
    if (!windowName || !nibName)
        return kParamErr;
    IBNibRef nib = nullptr;
    HuxString const nibText = HuxString::FromUTF8(nibName);
    OSStatus status = bundle ? CreateNibReferenceWithCFBundle(bundle, nibText.GetCFString(), &nib)
                             : CreateNibReference(nibText.GetCFString(), &nib);
    if (status != kNoErr)
        return status;
    status = CreateWindowFromNib(nib, HuxString::FromUTF8(windowName).GetCFString(), &m_hwnd);
    DisposeNibReference(nib);
    if (status != kNoErr) {
        m_hwnd = nullptr;
        return status;
    }
    SetWindowProperty(m_hwnd, kHuxPropertyCreator, kHuxPropertyObject, this);
    return kNoErr;
}
