// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxRadioGroup.h"

using namespace platform;

OSStatus HuxRadioGroup::Create(WindowRef window, const ControlID& id, std::uint32_t commandID) {
    ControlRef control = nullptr;
    if (const OSStatus status = CreateRadioGroupControl(window, Rect {}, &control))
        return status;
    SetControlID(control, id);
    SetControlCommandID(control, commandID);
    return Attach(control);
}

OSStatus HuxRadioGroup::AddButton(HuxRadioButton& button) {
    return button.Embed(m_hctrl);
}
