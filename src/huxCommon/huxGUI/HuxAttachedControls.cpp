// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxAttachedControls.h"

#include "huxCommon/huxGUI/HuxControlImpl.h"

using namespace platform;

HuxAttachedControls::~HuxAttachedControls() {
    DetachAll();
}

void HuxAttachedControls::Add(HuxControlImpl& control) {
    if (control.m_pAttachedTo == this)
        return;
    if (control.m_pAttachedTo)
        control.m_pAttachedTo->Remove(control);
    m_controls.push_back(&control);
    control.m_pAttachedTo = this;
}

void HuxAttachedControls::Remove(HuxControlImpl& control) {
    if (std::erase(m_controls, &control) > 0)
        control.m_pAttachedTo = nullptr;
}

void HuxAttachedControls::DetachAll() {
    while (!m_controls.empty()) {
        HuxControlImpl& control = *m_controls.back();
        Remove(control);
        control.Detach();
    }
}

bool HuxAttachedControls::CheckControlValues() const {
    std::vector<ControlRef> controls;
    for (const HuxControlImpl* const control : m_controls)
        controls.push_back(control->GetControlRef());
    // From here on only references are followed, which are found out when what they meant is gone.
    for (const ControlRef control : controls) {
        HuxControlImpl* const wrapper = HuxControlImpl::FromControl(control);
        if (wrapper && !wrapper->CheckControlValue())
            return false;
    }
    return true;
}
