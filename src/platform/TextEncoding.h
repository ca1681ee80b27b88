// SPDX-License-Identifier: BSD-3-Clause
// The encoding of the byte strings in records: which one it is, where its characters begin and end,
// and the ways to and from UTF-8. The functions work in the encoding of the thread's text context.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

struct EncodingDetails;

// One encoding. A small value, good for the life of the process.
class TextEncoding {
public:
    explicit TextEncoding(const EncodingDetails& details) : m_details(&details) {}

    // UTF-8, CP932 (also called Shift_JIS, SJIS, Windows-31J), EUC-JP, EUC-KR, GBK, Big5 or any other
    // that iconv converts, without regard to case, hyphens and underscores; nothing for other names.
    static std::optional<TextEncoding> Find(std::string_view name);
    static TextEncoding Utf8() { return *Find("UTF-8"); }
    // TELOP_TEXT_ENCODING, else the code set of the process's locale when that is a multi-byte one,
    // else UTF-8.
    static TextEncoding OfEnvironment();

    const std::string& Name() const; // canonical
    // A number of its own, for the keys of caches; never 0.
    std::uint32_t Serial() const;
    const EncodingDetails& Details() const { return *m_details; }
    bool operator==(const TextEncoding&) const = default;

private:
    const EncodingDetails* m_details;
};

// Sets the encoding of threads that have no text context of their own; before the first time it is the
// environment's. False, and nothing changed, when there is no such encoding. Any thread; calls that
// run meanwhile finish with the old encoding.
bool SetApplicationTextEncoding(std::string_view name);
// The name of the current context's encoding.
std::string ApplicationTextEncoding();

// Bytes of the character that starts at text[0]: 1 for a byte that starts no whole character, 0 at
// the end of text. Never more than text.size().
std::size_t CharacterLength(std::string_view text);

using ScriptCode = std::int16_t;
inline constexpr ScriptCode kSystemScript = -1;

enum CharacterByte : std::int16_t {
    kSingleByte = 0,
    kFirstByte = -1,
    kLastByte = 1,
    kMiddleByte = 2,
};

// What the byte at offset is within its character. text reaches at least to offset and, in any case
// no further than its NUL. The cost does not grow with offset.
std::int16_t CharacterByteType(const char* text, std::size_t offset, ScriptCode script);

// UTF-8 from the application's encoding. Bytes that are no text become U+FFFD and are told to the
// context; a character cut off by the end of bytes becomes nothing.
std::string DecodeText(std::string_view bytes);

struct EncodedText {
    std::string bytes;
    bool complete; // false: characters that the encoding lacks became '?'
};
// The application's encoding from UTF-8.
EncodedText EncodeText(std::string_view utf8);

// The longest start of bytes that fits in size and ends with a whole character.
std::string_view CutToWholeCharacters(std::string_view bytes, std::size_t size);

} // namespace platform
