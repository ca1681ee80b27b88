// SPDX-License-Identifier: BSD-3-Clause
// The base of control wrappers: which control it is, where it lies and by what it is known.
#pragma once

#include "platform/Lifetime.h"
#include "platform/ui/Controls.h"

class HuxControl : public platform::Lifetime {
public:
    HuxControl() = default;
    virtual ~HuxControl() = default;

    platform::ControlRef GetControlRef() const { return m_hctrl; } // null when not attached
    bool IsValid() const; // attached, and the control is there
    platform::WindowRef GetOwner() const;
    platform::EventTargetRef GetEventTarget() const;

    platform::ControlID GetID() const; // 0, 0 when it has none
    platform::OSStatus SetID(const platform::ControlID& id);
    std::uint32_t GetCommandID() const; // 0 when it has none
    platform::OSStatus SetCommandID(std::uint32_t commandID);

protected:
    platform::ControlRef m_hctrl = nullptr;
};
