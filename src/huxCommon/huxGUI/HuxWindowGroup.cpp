// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxWindowGroup.h"

#include <utility>

using namespace platform;

OSStatus HuxWindowGroup::Create(std::uint32_t attributes) {
    Release();
    return CreateWindowGroup(attributes, &m_refGroup);
}

void HuxWindowGroup::Release() {
    if (m_refGroup)
        ReleaseWindowGroup(std::exchange(m_refGroup, nullptr));
}

OSStatus HuxWindowGroup::SetParent(WindowGroupRef parent) {
    return m_refGroup ? SetWindowGroupParent(m_refGroup, parent) : kParamErr;
}

OSStatus HuxWindowGroup::Add(WindowRef window) {
    return m_refGroup ? SetWindowGroup(window, m_refGroup) : kParamErr;
}
