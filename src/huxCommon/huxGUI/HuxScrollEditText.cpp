// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxScrollEditText.h"

using namespace platform;

OSStatus HuxScrollEditText::SetReadOnly(bool readOnly) {
    return Do(&EditField::SetReadOnly, readOnly);
}

OSStatus HuxScrollEditText::SetWrap(bool wrap) {
    return Do(&EditField::SetWrap, wrap);
}

OSStatus HuxScrollEditText::SetText(const HuxString& text) {
    std::string lines;
    for (const char byte : text.GetUTF8())
        if (byte != '\n' || !lines.ends_with('\r'))
            lines += byte;
    return SetControlText(HuxString::FromUTF8(lines));
}

HuxString HuxScrollEditText::GetText() const {
    HuxString text;
    GetControlText(text);
    return text;
}
