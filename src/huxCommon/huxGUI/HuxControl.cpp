// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxControl.h"

using namespace platform;

bool HuxControl::IsValid() const {
    return IsValidControlHandle(m_hctrl);
}

WindowRef HuxControl::GetOwner() const {
    return GetControlOwner(m_hctrl);
}

EventTargetRef HuxControl::GetEventTarget() const {
    return GetControlEventTarget(m_hctrl);
}

ControlID HuxControl::GetID() const {
    ControlID id { 0, 0 };
    return GetControlID(m_hctrl, &id) == kNoErr ? id : ControlID { 0, 0 };
}

OSStatus HuxControl::SetID(const ControlID& id) {
    return SetControlID(m_hctrl, id);
}

std::uint32_t HuxControl::GetCommandID() const {
    std::uint32_t commandID = 0;
    return GetControlCommandID(m_hctrl, &commandID) == kNoErr ? commandID : 0;
}

OSStatus HuxControl::SetCommandID(std::uint32_t commandID) {
    return SetControlCommandID(m_hctrl, commandID);
}
