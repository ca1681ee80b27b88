// SPDX-License-Identifier: BSD-3-Clause
// A box that is checked or not.
#pragma once

#include "huxCommon/huxGUI/HuxControlImpl.h"

class HuxCheckBox : public HuxControlImpl {
public:
    bool IsChecked() const { return GetValue() != 0; }
    void SetChecked(bool checked) { SetValue(checked ? 1 : 0); }
};
