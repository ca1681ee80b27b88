// SPDX-License-Identifier: BSD-3-Clause
// What the dialogs that open and save files have in common.
#pragma once

#include "huxCommon/huxCoreFoundation/HuxString.h"
#include "platform/ui/Dialogs.h"

class HuxFileDialog {
public:
    // The folder of the last choice is remembered under the key.
    void SetPreferenceKey(std::uint32_t key) { m_options.preferenceKey = key; }
    // The one entry of the type popup, and the file names that it stands for, such as "*.txt".
    void SetType(const HuxString& name, const char* pattern);
    void SetTitle(const HuxString& title);
    void SetParent(platform::WindowRef parent) { m_options.parent = parent; }

protected:
    HuxFileDialog() = default;
    ~HuxFileDialog() = default;

    platform::FileDialogOptions m_options;
};
