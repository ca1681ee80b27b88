// SPDX-License-Identifier: BSD-3-Clause
#include "host/text/TextField.h"

#include <algorithm>
#include <charconv>

#include "host/Message.h"
#include "platform/TextEncoding.h"

namespace host {

namespace {

bool IsControl(char c) {
    return (c >= 0 && c < 0x20) || c == 0x7F;
}

// One character of the application's encoding as UTF-8; empty when it would not come back.
std::string Decoded(std::string_view character) {
    auto text = platform::DecodeText(character);
    const auto back = platform::EncodeText(text);
    return back.complete && back.bytes == character ? text : std::string();
}

bool IsPrintableAscii(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return c >= 0x20 && c < 0x7F; });
}

// The byte of "\xHH" at the start of text; nothing when it is none.
std::optional<char> EscapedByte(std::string_view text) {
    unsigned value = 0;
    if (text.size() < 4 || text[1] != 'x')
        return std::nullopt;
    const auto [stop, error] = std::from_chars(text.data() + 2, text.data() + 4, value, 16);
    if (error != std::errc() || stop != text.data() + 4)
        return std::nullopt;
    return static_cast<char>(value);
}

} // namespace

std::string LackReason(std::string_view utf8) {
    return "'" + std::string(utf8) + "' has characters that " +
           platform::ApplicationTextEncoding() + " lacks";
}

std::string_view FieldBytes(std::span<const char> field) {
    const auto end = std::find(field.begin(), field.end(), '\0');
    return { field.data(), static_cast<std::size_t>(end - field.begin()) };
}

bool SetFieldBytes(std::span<char> field, std::string_view name, std::string_view bytes,
                   std::string& why) {
    if (bytes.find('\0') != std::string_view::npos) {
        why = std::string(name) + ": a zero byte cannot be part of a text";
        return false;
    }
    if (bytes.size() >= field.size()) {
        why = std::string(name) + ": the text has " + std::to_string(bytes.size()) + " bytes in " +
              platform::ApplicationTextEncoding() + " and the limit is " +
              std::to_string(field.size() - 1);
        return false;
    }
    const auto rest = std::copy(bytes.begin(), bytes.end(), field.begin());
    std::fill(rest, field.end(), '\0');
    return true;
}

bool SetField(std::span<char> field, std::string_view name, std::string_view utf8,
              std::string& why) {
    // ASCII is the same in every encoding that can be set, and needs no converter.
    if (IsPrintableAscii(utf8))
        return SetFieldBytes(field, name, utf8, why);
    const auto encoded = platform::EncodeText(utf8);
    if (!encoded.complete) {
        why = std::string(name) + ": " + LackReason(utf8);
        return false;
    }
    return SetFieldBytes(field, name, encoded.bytes, why);
}

std::string EscapeBytes(std::string_view bytes) {
    std::string text;
    while (!bytes.empty()) {
        const auto character = bytes.substr(0, platform::CharacterLength(bytes));
        bytes.remove_prefix(character.size());
        if (const auto decoded = Decoded(character); decoded == "\\")
            text += "\\\\";
        else if (decoded.empty() || IsControl(decoded.front()))
            AppendEscaped(text, character);
        else
            text += decoded;
    }
    return text;
}

std::optional<std::string> UnescapeBytes(std::string_view utf8, std::string& why) {
    std::string bytes;
    while (!utf8.empty()) {
        const auto plain = utf8.substr(0, utf8.find('\\'));
        const auto encoded = platform::EncodeText(plain);
        if (!encoded.complete) {
            why = LackReason(plain);
            return std::nullopt;
        }
        bytes += encoded.bytes;
        utf8.remove_prefix(plain.size());
        if (utf8.empty())
            break;
        const auto byte = utf8.starts_with("\\\\") ? std::optional('\\') : EscapedByte(utf8);
        if (!byte) {
            why = "'" + std::string(utf8.substr(0, 2)) +
                  "' is no escape; a backslash is written \\\\ and a byte \\xHH";
            return std::nullopt;
        }
        bytes += *byte;
        utf8.remove_prefix(utf8.starts_with("\\\\") ? 2 : 4);
    }
    return bytes;
}

std::string WithCarriageReturns(std::string_view text) {
    std::string lines;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' && i > 0 && text[i - 1] == '\r')
            continue;
        lines += text[i] == '\n' ? '\r' : text[i];
    }
    return lines;
}

} // namespace host
