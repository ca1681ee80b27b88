// SPDX-License-Identifier: BSD-3-Clause
#include "host/text/TextFile.h"

#include <algorithm>
#include <cstdint>

#include "platform/TextContext.h"
#include "platform/Utf8.h"

namespace host {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

std::string Utf8OfUtf16(std::string_view bytes, bool bigEndian) {
    const auto unit = [&](std::size_t i) -> char32_t {
        const auto byte = [&](std::size_t at) { return static_cast<std::uint8_t>(bytes[at]); };
        return bigEndian ? byte(2 * i) * 256U + byte(2 * i + 1)
                         : byte(2 * i + 1) * 256U + byte(2 * i);
    };
    std::string text;
    const std::size_t units = bytes.size() / 2;
    for (std::size_t i = 0; i < units; ++i) {
        const auto value = unit(i);
        const bool high = value >= 0xD800 && value < 0xDC00;
        const auto low = high && i + 1 < units ? unit(i + 1) : 0;
        const bool pair = low >= 0xDC00 && low < 0xE000;
        if (pair)
            ++i;
        platform::AppendUtf8(text, pair ? 0x10000 + ((value - 0xD800) << 10) + (low - 0xDC00)
                                   : value >= 0xD800 && value < 0xE000
                                       ? platform::kReplacementCharacter
                                       : value);
    }
    return bytes.size() % 2 == 0 ? text : text.append(kReplacement);
}

// The LF shows half a character at the line's end for what it is.
std::string DecodeLine(std::string_view bytes) {
    auto text = platform::DecodeText(std::string(bytes) + '\n');
    if (text.ends_with('\n'))
        text.pop_back();
    return text;
}

// Takes a line and its end from the front. CR and LF are no second bytes of characters in any encoding
// in which ASCII is itself.
std::string_view TakeLine(std::string_view& bytes) {
    const auto end = std::min(bytes.find_first_of("\r\n"), bytes.size());
    const auto line = bytes.substr(0, end);
    bytes.remove_prefix(end);
    bytes.remove_prefix(bytes.starts_with("\r\n") ? 2 : bytes.empty() ? 0 : 1);
    return line;
}

} // namespace

std::optional<TextFile> TextFile::Decode(std::string_view bytes,
                                         std::optional<platform::TextEncoding> encoding,
                                         std::string& why) {
    std::string converted;
    const bool big = bytes.starts_with("\xFE\xFF");
    const bool marked = big || bytes.starts_with("\xFF\xFE") || bytes.starts_with(kUtf8Mark);
    if (bytes.starts_with(kUtf8Mark)) {
        bytes.remove_prefix(kUtf8Mark.size());
    } else if (marked) {
        converted = Utf8OfUtf16(bytes.substr(2), big);
        bytes = converted;
    }
    const auto utf8 = platform::TextEncoding::Utf8();
    platform::TextContext context(marked ? utf8 : encoding.value_or(utf8));
    const platform::TextScope scope(context);

    TextFile file;
    for (std::size_t number = 1; !bytes.empty(); ++number) {
        const bool last = bytes.find_first_of("\r\n") == std::string_view::npos;
        const auto line = TakeLine(bytes);
        if (line.find('\0') != std::string_view::npos) {
            why = "line " + std::to_string(number) + " has a zero byte, so this is no text file";
            return std::nullopt;
        }
        if (!marked && !encoding && !platform::IsUtf8(line)) {
            why = "line " + std::to_string(number) +
                  " is not UTF-8, and no other encoding, such as CP932, is named";
            return std::nullopt;
        }
        const auto text = DecodeLine(line);
        if (text.find(kReplacement) != std::string::npos && file.badLines.size() < kMaxBadLines)
            file.badLines.push_back(number);
        file.utf8 += text;
        file.utf8 += last ? "" : "\n";
    }
    return file;
}

} // namespace host
