// SPDX-License-Identifier: BSD-3-Clause
// A stepper that can be bound to a numeric edit field: each step moves the field's number by the
// increment, within the field's range, from what the field shows at that moment.
#pragma once

#include "huxCommon/huxGUI/HuxControlImpl.h"

class HuxEditText;

class HuxLittleArrows : public HuxControlImpl {
public:
    platform::OSStatus Attach(platform::ControlRef control) override;
    platform::OSStatus InstallSelf(platform::EventTargetRef target) override;
    platform::OSStatus HandleEventCurrentSelf(platform::EventHandlerCallRef call,
                                              platform::EventRef event) override;

    // Seconds between the steps while an arrow is held; 0 leaves it to the platform.
    void SetTimerInterval(double seconds);
    void SetIncrement(std::int32_t increment) { m_nIncrement = increment; }
    // Steps are of the last of the decimal places of a field for real numbers. sendNotify: a step
    // sends the field's own kEditTextChanged. changeFocus: a step gives the field the keyboard focus.
    // The field is attached already, and may end before the stepper; null unbinds.
    virtual void SetEditControl(HuxEditText* edit, long decimals, unsigned char sendNotify,
                                unsigned char changeFocus);
    // One step of the arrow that was clicked, then the command with the arrow's part as its value.
    // The stepper may be gone afterwards.
    virtual bool IncrementValueAndCommand();

    // What the stepper stands at, as a number of the field.
    double GetNumber() const;
    void SetNumber(double number); // the nearest step within the range

protected:
    HuxEditText* GetEditControl() const; // null when there is none, or no longer

    double m_dTimerInterval = 0;
    HuxEditText* m_pEdit = nullptr;
    bool m_fSendChangedEditNotify = false;
    bool m_fChangedEditFocus = false;
    platform::ControlPartCode m_nTrackPartCode = platform::kControlNoPart;
    std::int32_t m_nSmall = 0;
    std::int32_t m_nIncrement = 1;

private:
    void SetRange();
    void Step();
    bool ShowInEditControl();
    void FollowEditControl();

    platform::ControlRef m_refEdit = nullptr;
    HuxString m_refShown; // the field's text after the last step
    double m_dScale = 1;  // steps in a number's unit
    double m_dOrigin = 0; // of the control's value, in steps
};
