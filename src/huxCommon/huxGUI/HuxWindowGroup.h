// SPDX-License-Identifier: BSD-3-Clause
// Owns a group of windows. The windows stay where they are when it ends.
#pragma once

#include "platform/ui/Windows.h"

class HuxWindowGroup {
public:
    HuxWindowGroup() = default;
    HuxWindowGroup(const HuxWindowGroup&) = delete;
    HuxWindowGroup& operator=(const HuxWindowGroup&) = delete;
    ~HuxWindowGroup() { Release(); }

    platform::WindowGroupRef GetGroupRef() const { return m_refGroup; } // null at first
    bool IsValid() const { return m_refGroup != nullptr; }
    platform::OSStatus Create(std::uint32_t attributes); // in place of the one before
    void Release();
    platform::OSStatus SetParent(platform::WindowGroupRef parent);
    platform::OSStatus Add(platform::WindowRef window);

private:
    platform::WindowGroupRef m_refGroup = nullptr;
};
