// SPDX-License-Identifier: BSD-3-Clause
// Asks the user for files to open.
#pragma once

#include "huxCommon/huxCoreFoundation/HuxArray.h"
#include "huxCommon/huxGUI/HuxFileDialog.h"

class HuxGetFileDialog : public HuxFileDialog {
public:
    bool Run(); // true: the user chose
    const HuxArray<FSSpec>& GetFiles() const { return m_files; }

private:
    HuxArray<FSSpec> m_files;
};
