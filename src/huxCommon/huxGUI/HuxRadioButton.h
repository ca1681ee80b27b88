// SPDX-License-Identifier: BSD-3-Clause
// One of several choices; the group that it lies in sees to it that no other is selected.
#pragma once

#include "huxCommon/huxGUI/HuxControlImpl.h"

class HuxRadioButton : public HuxControlImpl {
public:
    bool IsSelected() const { return GetValue() != 0; }
    void Select() { SetValue(1); }
};
