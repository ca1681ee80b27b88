// SPDX-License-Identifier: BSD-3-Clause
// Binds an object to one control, whose events it handles. A wrapper never outlives its control's
// use of it, in one of two ways:
//
//   made with new and attached          deletes itself when the control is disposed
//   a member of a window's object, in   is only detached then, and by the window's end; the object
//   the window's list of controls       that it is a member of ends it
//
// Either may end, or be detached, before its control.
#pragma once

#include "huxCommon/huxGUI/HuxCarbonEventHandler.h"
#include "huxCommon/huxGUI/HuxControl.h"

class HuxAttachedControls;

class HuxControlImpl : public HuxControlCompatible, public HuxCarbonEventHandler {
public:
    HuxControlImpl() = default;
    ~HuxControlImpl() override;

    // Null leaves the wrapper without a control, which is no failure. A control without a command
    // of its own, or with four blanks for one, gets its control id as command id.
    virtual platform::OSStatus Attach(platform::ControlRef control);
    virtual void Detach();
    virtual platform::OSStatus Activate();
    virtual platform::OSStatus Deactivate();
    virtual platform::OSStatus SetVisibility(bool visible, bool redraw);
    virtual platform::OSStatus Show(bool redraw);
    virtual platform::OSStatus Hide(bool redraw);
    virtual platform::OSStatus Enable();
    virtual platform::OSStatus Disable();
    virtual platform::OSStatus Draw(bool now); // false: when the loop gets to it
    virtual platform::OSStatus Update();       // redraws when the loop gets to it
    // Shows at once what was drawn within the control's bounds.
    virtual platform::OSStatus FlushPortBuffer();
    virtual platform::OSStatus GetFontStyle(platform::ControlFontStyleRec* style);
    virtual platform::OSStatus SetFontStyle(const platform::ControlFontStyleRec* style);
    virtual platform::OSStatus SetControlSize(unsigned short size); // kControlSize...
    virtual platform::OSStatus Move(long left, long top);           // within the window
    virtual platform::OSStatus SetSize(long width, long height);
    virtual platform::OSStatus Embed(platform::ControlRef container); // this control into container
    virtual platform::OSStatus GetSuper(platform::ControlRef* super);
    virtual platform::ControlRef GetSuper();
    virtual platform::OSStatus CountSub(long* count);
    virtual long CountSub();
    virtual platform::OSStatus GetIndexedSub(long index, platform::ControlRef* sub); // from 1
    virtual platform::ControlRef GetIndexedSub(long index);
    // False: what the user entered may not stay, so the dialog does not close with OK.
    virtual bool CheckControlValue();
    // The control's command, with the value, to the control and from there to its window.
    virtual platform::OSStatus PostCommand(long value);
    virtual platform::OSStatus SendCommand(long value, void* data); // may end this wrapper
    platform::OSStatus Install(platform::EventTargetRef target) override;
    platform::OSStatus HandleEventEnd(platform::EventHandlerCallRef call,
                                      platform::EventRef event) override;

    // The wrapper that is attached to the control; null for none.
    static HuxControlImpl* FromControl(platform::ControlRef control);

private:
    friend class HuxAttachedControls;

    HuxAttachedControls* m_pAttachedTo = nullptr; // the list that has this wrapper
};
