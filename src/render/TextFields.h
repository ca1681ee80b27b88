// SPDX-License-Identifier: BSD-3-Clause
// Texts in fixed fields: reading those that may lack their NUL, copying them so that they end, filling
// others without running over, and the platform's length-prefixed strings.
#pragma once

#include <cstddef>
#include <string_view>

#include <epi/epi.h>

// The text in a field of size bytes, of which it uses all when there is no NUL. Null is empty.
std::string_view FieldText(const char* field, std::size_t size);
template <std::size_t kSize>
std::string_view FieldText(const char (&field)[kSize]) {
    return FieldText(field, kSize);
}

// dst receives a length byte and at most 255 bytes of src; no NUL. It has room for 256.
void CtoPascalString(unsigned char* dst, const char* src);
void CtoPascalString(unsigned char* dst, std::string_view src);

// Puts strings one after the other into a fixed buffer and drops what does not fit.
class BoundedText {
public:
    // Empties out, which has room for size bytes with the NUL; size is above 0.
    BoundedText(char* out, std::size_t size) : m_start(out), m_at(out), m_left(size - 1) {
        *m_at = '\0';
    }

    void Append(std::string_view text);
    std::string_view Text() const { return { m_start, static_cast<std::size_t>(m_at - m_start) }; }

private:
    char* m_start;
    char* m_at;
    std::size_t m_left;
};

namespace render {

// A record's four information strings of up to 64 bytes, with the NULs that the fields may lack.
class InfoStrings {
public:
    explicit InfoStrings(const _EPIRECORD& record);
    const char* Get(std::size_t index) const { return m_texts[index]; }
    // Null when the host says that it has none.
    const char* Present(std::size_t index) const { return m_arePresent ? m_texts[index] : nullptr; }

private:
    char m_texts[4][65] = {};
    bool m_arePresent;
};

// Strings that fill their field lose their last byte, in the copy only: a file can hold such ones.
_TEXTPARAM TerminatedCopy(const _TEXTPARAM& param);

} // namespace render
