// SPDX-License-Identifier: BSD-3-Clause
// Copies of a host's text fields in which every string ends: a file can hold strings that fill their
// field.
#pragma once

#include <cstddef>
#include <cstring>

#include <epi/epi.h>

namespace render {

// A record's four information strings of up to 64 bytes, with the NULs that the fields may lack.
class InfoStrings {
public:
    explicit InfoStrings(const _EPIRECORD& record) : m_arePresent(record.bInfoPresent != 0) {
        std::memcpy(m_texts[0], record.szInfo1, sizeof record.szInfo1);
        std::memcpy(m_texts[1], record.szInfo2, sizeof record.szInfo2);
        std::memcpy(m_texts[2], record.szInfo3, sizeof record.szInfo3);
        std::memcpy(m_texts[3], record.szInfo4, sizeof record.szInfo4);
    }
    const char* Get(std::size_t index) const { return m_texts[index]; }
    // Null when the host says that it has none.
    const char* Present(std::size_t index) const { return m_arePresent ? m_texts[index] : nullptr; }

private:
    char m_texts[4][65] = {};
    bool m_arePresent;
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
