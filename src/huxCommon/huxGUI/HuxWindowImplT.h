// SPDX-License-Identifier: BSD-3-Clause
// A window object that makes its window from a form, handles its events and holds the wrappers of its
// controls.
//
//   CreateNibWindow -> the window, its property, its handler
//                   -> initialize event -> _AttachControls, HandleInitWindow
//                                          false -> initialize-error event, and the status -50
#pragma once

#include "huxCommon/huxCoreFoundation/HuxCFObject.h"
#include "huxCommon/huxGUI/HuxAttachedControls.h"
#include "huxCommon/huxGUI/HuxCarbonEvent.h"
#include "huxCommon/huxGUI/HuxCarbonEventHandler.h"
#include "huxCommon/huxGUI/HuxControlImpl.h"
#include "huxCommon/huxGUI/HuxWindowBase.h"
#include "huxCommon/huxGUI/HuxWindowCompatibleT.h"

// Regions of a window that follow the mouse. The platform reports the mouse all over the window, so
// a window has none until it asks for one.
struct OpaqueMouseTracking;
using MouseTrackingRef = OpaqueMouseTracking*;

template <class Base>
class HuxWindowImplT : public HuxWindowCompatibleT<Base>, public HuxCarbonEventHandler {
public:
    ~HuxWindowImplT() override;

    // UTF-8. The window is the form <GetWindowName()>.ui of the nib.
    virtual const char* GetWindowName();
    virtual const char* GetNibName();
    // The identifier of the bundle to look in when SetBundle named none; null for the main bundle.
    virtual const char* GetBundleName();
    virtual platform::CFBundleRef GetBundle(); // lent; null means the main bundle
    platform::OSStatus Install(platform::EventTargetRef target) override;
    platform::OSStatus HandleEventCurrent(platform::EventHandlerCallRef call,
                                          platform::EventRef event) override;
    platform::OSStatus HandleEventEnd(platform::EventHandlerCallRef call,
                                      platform::EventRef event) override;
    virtual void _AttachControls();
    virtual bool HandleInitWindow(); // false: the window cannot be used
    // False: one of the attached controls refuses what the user entered.
    virtual bool CheckControlValue();
    virtual platform::OSStatus SendEventInitializWindow();
    virtual platform::OSStatus SendEventInitializWindowError();

    // Keeps a count of the bundle in place of the one before; null: GetBundleName's.
    void SetBundle(platform::CFBundleRef bundle);

    // Makes the hidden window; bundle null means the main bundle. A window that cannot be made gives
    // the platform's status and no window. kParamErr when the object has a window already.
    platform::OSStatus CreateNibWindow(const char* windowName, const char* nibName,
                                       platform::CFBundleRef bundle);

    // For _AttachControls: attaches the wrapper, a member of this object, to the control of the
    // window with the id, or to none when there is no such control, and puts it into the list.
    void AttachControl(HuxControlImpl& wrapper, const platform::ControlID& id);
    void AttachControl(HuxControlImpl& wrapper, std::int32_t number) { // of the signature 'VELM'
        AttachControl(wrapper, { kHuxPropertyCreator, number });
    }

protected:
    // Whether HandleInitWindow refused, or did not come to its end.
    bool IsInitFailed() const { return m_fInitFailed; }

    MouseTrackingRef m_WindowTrackingRef = nullptr;
    HuxAttachedControls m_vectorControls;

private:
    platform::OSStatus HandleInitialize();
    platform::OSStatus SendToSelf(std::uint32_t kind);

    HuxCFObject<platform::CFBundleRef> m_bundle;
    bool m_fInitFailed = false;
};

extern template class HuxWindowImplT<HuxWindowBase>;
