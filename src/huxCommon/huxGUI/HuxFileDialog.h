// SPDX-License-Identifier: BSD-3-Clause
// The dialogs that open and save files.
#pragma once

#include <optional>

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
    const FSSpec& GetFile() const { return m_file; } // empty until the user has chosen one

protected:
    HuxFileDialog() = default;
    ~HuxFileDialog() = default;
    bool Take(const std::optional<FSSpec>& file); // true: there is one

    platform::FileDialogOptions m_options;

private:
    FSSpec m_file {};
};

// Asks the user for a file to open.
class HuxGetFileDialog : public HuxFileDialog {
public:
    bool Run() { return Take(platform::RunGetFileDialog(m_options)); } // true: the user chose
};

// Asks the user where to save a file.
class HuxPutFileDialog : public HuxFileDialog {
public:
    void SetFileName(const HuxString& name) {
        m_options.fileName = name.GetUTF8();
    }                                                                  // to begin with
    bool Run() { return Take(platform::RunPutFileDialog(m_options)); } // true: the user chose
};
