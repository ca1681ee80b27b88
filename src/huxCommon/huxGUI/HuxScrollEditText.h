// SPDX-License-Identifier: BSD-3-Clause
// Text of several lines that scrolls.
#pragma once

#include "huxCommon/huxGUI/HuxControlImpl.h"

class HuxScrollEditText : public HuxControlImpl {
public:
    platform::OSStatus SetReadOnly(bool readOnly);
    platform::OSStatus SetWrap(bool wrap); // at words
    // Lines end with CR; CR LF counts as one.
    platform::OSStatus SetText(const HuxString& text);
    HuxString GetText() const;
};
