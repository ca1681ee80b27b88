// SPDX-License-Identifier: BSD-3-Clause
// Radio buttons of which one is selected. The group's value is its number, from 1 in the order in
// which they were added; 0 when none is. The group's command comes when the user selects another.
#pragma once

#include "huxCommon/huxGUI/HuxRadioButton.h"

class HuxRadioGroup : public HuxControlImpl {
public:
    // Makes the group's control in the window, with the id and the command, and attaches to it.
    platform::OSStatus Create(platform::WindowRef window, const platform::ControlID& id,
                              std::uint32_t commandID);
    platform::OSStatus AddButton(HuxRadioButton& button);
};
