// SPDX-License-Identifier: BSD-3-Clause
#include "render/TextFields.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t kMaxLength = 255;

} // namespace

std::string_view FieldText(const char* field, std::size_t size) {
    return field ? std::string_view(field, strnlen(field, size)) : std::string_view();
}

void CtoPascalString(unsigned char* dst, const char* src) {
    CtoPascalString(dst, FieldText(src, kMaxLength));
}

void CtoPascalString(unsigned char* dst, std::string_view src) {
    const std::size_t length = std::min(src.size(), kMaxLength);
    dst[0] = static_cast<unsigned char>(length);
    std::copy_n(src.data(), length, dst + 1);
}

void BoundedText::Append(std::string_view text) {
    const std::size_t length = std::min(text.size(), m_left);
    m_at = std::copy_n(text.data(), length, m_at);
    m_left -= length;
    *m_at = '\0';
}

namespace render {

InfoStrings::InfoStrings(const _EPIRECORD& record) : m_arePresent(record.bInfoPresent != 0) {
    std::memcpy(m_texts[0], record.szInfo1, sizeof record.szInfo1);
    std::memcpy(m_texts[1], record.szInfo2, sizeof record.szInfo2);
    std::memcpy(m_texts[2], record.szInfo3, sizeof record.szInfo3);
    std::memcpy(m_texts[3], record.szInfo4, sizeof record.szInfo4);
}

_TEXTPARAM TerminatedCopy(const _TEXTPARAM& param) {
    _TEXTPARAM copy = param;
    copy.szFontName[sizeof copy.szFontName - 1] = '\0';
    copy.szInfoText[sizeof copy.szInfoText - 1] = '\0';
    copy.szCharacter[sizeof copy.szCharacter - 1] = '\0';
    copy.szDialogue[sizeof copy.szDialogue - 1] = '\0';
    return copy;
}

} // namespace render
