// SPDX-License-Identifier: BSD-3-Clause
// Copies of a host's text fields in which every string ends: a file can hold strings that fill their
// field.
#pragma once

#include <cstddef>
#include <cstring>

#include <epi/epi.h>

namespace render {

// An information string of up to 64 bytes, with the NUL that the field itself may lack.
class InfoString {
public:
    explicit InfoString(const char (&field)[64]) { std::memcpy(m_text, field, sizeof field); }
    const char* Get() const { return m_text; }

private:
    char m_text[65] = {};
};

// Strings that fill their field lose their last byte, in the copy only.
inline _TEXTPARAM TerminatedCopy(const _TEXTPARAM& param) {
    _TEXTPARAM copy = param;
    copy.szFontName[sizeof copy.szFontName - 1] = '\0';
    copy.szInfoText[sizeof copy.szInfoText - 1] = '\0';
    copy.szCharacter[sizeof copy.szCharacter - 1] = '\0';
    copy.szDialogue[sizeof copy.szDialogue - 1] = '\0';
    return copy;
}

} // namespace render
