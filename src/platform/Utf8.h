// SPDX-License-Identifier: BSD-3-Clause
// Reading and writing single code points of UTF-8. Knows nothing of the application's encoding.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

// Bytes of the well-formed sequence at the start of text (RFC 3629: no overlong forms, surrogates or
// values above U+10FFFF), 0 when there is none.
inline std::size_t Utf8SequenceLength(std::string_view text) {
    if (text.empty())
        return 0;
    const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    const std::uint8_t lead = byte(0);
    if (lead < 0x80)
        return 1;
    if (lead < 0xC2 || lead > 0xF4)
        return 0;
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (text.size() < length)
        return 0;
    // Only the second byte's range depends on the lead.
    const std::uint8_t low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const std::uint8_t high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (byte(1) < low || byte(1) > high)
        return 0;
    for (std::size_t i = 2; i < length; ++i)
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
    return length;
}

// Whether all of it is well-formed.
inline bool IsUtf8(std::string_view text) {
    while (const std::size_t length = Utf8SequenceLength(text))
        text.remove_prefix(length);
    return text.empty();
}

// The code point of a well-formed sequence of that length.
inline char32_t Utf8Value(std::string_view sequence) {
    const auto lead = static_cast<std::uint8_t>(sequence[0]);
    if (sequence.size() == 1)
        return lead;
    char32_t value = lead & (0x7Fu >> sequence.size());
    for (std::size_t i = 1; i < sequence.size(); ++i)
        value = (value << 6) | (static_cast<std::uint8_t>(sequence[i]) & 0x3Fu);
    return value;
}

// value is a Unicode scalar value.
inline void AppendUtf8(std::string& text, char32_t value) {
    const auto tail = [value](int shift) {
        return static_cast<char>(0x80 | ((value >> shift) & 0x3F));
    };
    if (value < 0x80)
        text += static_cast<char>(value);
    else if (value < 0x800)
        text += { static_cast<char>(0xC0 | (value >> 6)), tail(0) };
    else if (value < 0x10000)
        text += { static_cast<char>(0xE0 | (value >> 12)), tail(6), tail(0) };
    else
        text += { static_cast<char>(0xF0 | (value >> 18)), tail(12), tail(6), tail(0) };
}

} // namespace platform
