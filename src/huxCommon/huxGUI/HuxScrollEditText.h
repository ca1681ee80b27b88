// SPDX-License-Identifier: BSD-3-Clause
// Text of several lines that scrolls.
#pragma once

#include "huxCommon/huxGUI/HuxControlImpl.h"

class HuxScrollEditText : public HuxControlImpl {
public:
    platform::OSStatus SetReadOnly(bool readOnly) {
        return Do(&platform::EditField::SetReadOnly, readOnly);
    }
    platform::OSStatus SetWrap(bool wrap) {
        return Do(&platform::EditField::SetWrap, wrap);
    } // at words
    // Lines end with CR; CR LF counts as one.
    platform::OSStatus SetText(const HuxString& text) { return SetControlText(text); }
    HuxString GetText() const {
        HuxString text;
        GetControlText(text);
        return text;
    }
};
