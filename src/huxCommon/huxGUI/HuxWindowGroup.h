// SPDX-License-Identifier: BSD-3-Clause
// Owns a group of windows. The windows stay where they are when it ends.
#pragma once

#include <memory>

#include "platform/ui/Windows.h"

class HuxWindowGroup {
public:
    bool IsValid() const { return m_group != nullptr; } // not at first
    void Create(std::uint32_t attributes) {             // in place of the one before
        m_group = std::make_unique<platform::WindowGroup>(attributes);
    }
    platform::OSStatus Add(platform::WindowRef window) {
        platform::Window* const found = platform::Window::Find(window);
        if (!m_group || !found)
            return platform::kParamErr;
        m_group->Add(*found);
        return platform::kNoErr;
    }

private:
    std::unique_ptr<platform::WindowGroup> m_group;
};
