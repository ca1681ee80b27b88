// SPDX-License-Identifier: BSD-3-Clause
// The dialogs that open and save files.
#pragma once

#include "huxCommon/huxCoreFoundation/HuxArray.h"
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

// Asks the user for files to open.
class HuxGetFileDialog : public HuxFileDialog {
public:
    bool Run(); // true: the user chose
    const HuxArray<FSSpec>& GetFiles() const { return m_files; }

private:
    HuxArray<FSSpec> m_files;
};

// Asks the user where to save a file.
class HuxPutFileDialog : public HuxFileDialog {
public:
    void SetFileName(const HuxString& name);         // to begin with
    bool Run();                                      // true: the user chose
    const FSSpec& GetFile() const { return m_file; } // empty until then

private:
    FSSpec m_file {};
};
