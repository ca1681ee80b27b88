// SPDX-License-Identifier: BSD-3-Clause
// What is on or off: check boxes, radio buttons, and what makes these exclude each other.
#pragma once

#include "huxCommon/huxGUI/HuxControlImpl.h"

// A box that is checked or not.
class HuxCheckBox : public HuxControlImpl {
public:
    bool IsChecked() const { return GetValue() != 0; }
    void SetChecked(bool checked) { SetValue(checked ? 1 : 0); }
};

// One of several choices; the group that it lies in sees to it that no other is selected.
class HuxRadioButton : public HuxControlImpl {
public:
    void Select() { SetValue(1); }
};

// Radio buttons of which one is selected. The group's value is its number, from 1 in the order in
// which they were added; 0 when none is. The group's command comes when the user selects another.
class HuxRadioGroup : public HuxControlImpl {
public:
    // Makes the group's control in the window, with the id and the command, and attaches to it.
    platform::OSStatus Create(platform::WindowRef window, const platform::ControlID& id,
                              std::uint32_t commandID) {
        platform::Control* const control = platform::Control::Create(window, "RadioGroup", {});
        if (!control)
            return platform::kErrInvalidWindow;
        control->id = id;
        control->commandID = commandID;
        return Attach(control->Ref());
    }
    platform::OSStatus AddButton(HuxRadioButton& button) { return button.Embed(m_hctrl); }
};
