// SPDX-License-Identifier: BSD-3-Clause
#include "host/Message.h"

#include <algorithm>
#include <system_error>

#include "platform/Utf8.h"

namespace host {

namespace {

bool IsControl(char32_t value) {
    return value < 0x20 || (value >= 0x7F && value < 0xA0);
}

} // namespace

void AppendEscaped(std::string& text, std::string_view bytes) {
    static constexpr const char* kDigits = "0123456789ABCDEF";
    for (const unsigned char byte : bytes)
        text.append("\\x").append({ kDigits[byte >> 4], kDigits[byte & 15] });
}

std::string Printable(std::string_view text) {
    std::string printable;
    while (!text.empty()) {
        const std::size_t length = platform::Utf8SequenceLength(text);
        const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
        if (length == 0 || IsControl(platform::Utf8Value(character)))
            AppendEscaped(printable, character);
        else
            printable += character;
        text.remove_prefix(character.size());
    }
    return printable;
}

std::string PrintableLines(std::string_view message) {
    std::string lines;
    for (auto end = message.find('\n'); end != std::string_view::npos; end = message.find('\n')) {
        lines += Printable(message.substr(0, end)) + '\n';
        message.remove_prefix(end + 1);
    }
    return lines + Printable(message);
}

std::string ErrorText(int error) {
    return std::generic_category().message(error);
}

} // namespace host
