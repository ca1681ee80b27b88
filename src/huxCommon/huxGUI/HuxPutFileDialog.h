// SPDX-License-Identifier: BSD-3-Clause
// Asks the user where to save a file.
#pragma once

#include "huxCommon/huxGUI/HuxFileDialog.h"

class HuxPutFileDialog : public HuxFileDialog {
public:
    void SetFileName(const HuxString& name);         // to begin with
    bool Run();                                      // true: the user chose
    const FSSpec& GetFile() const { return m_file; } // empty until then

private:
    FSSpec m_file {};
};
