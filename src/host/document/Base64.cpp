// SPDX-License-Identifier: BSD-3-Clause
#include "host/document/Base64.h"

#include <algorithm>

namespace host {

namespace {

constexpr std::string_view kLetters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

} // namespace

// Three bytes are four letters of six bits; of the last one or two bytes the missing letters are '='.
std::string ToBase64(std::span<const std::uint8_t> bytes) {
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        auto const count = std::min<std::size_t>(3, bytes.size() - i);
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k)
            group = group << 8 | (k < count ? bytes[i + k] : 0U);
        for (std::size_t k = 0; k < 4; ++k)
            text += k <= count ? kLetters[group >> (18 - 6 * k) & 63] : '=';
    }
    return text;
}

std::optional<std::vector<std::uint8_t>> FromBase64(std::string_view text) {
    std::vector<std::uint8_t> bytes;
    std::uint32_t group = 0;
    int bits = 0;
    for (char const letter : text.substr(0, text.find('='))) {
        auto const value = kLetters.find(letter);
        if (value == std::string_view::npos)
            return std::nullopt;
        group = group << 6 | static_cast<std::uint32_t>(value);
        bits += 6;
        if (bits >= 8) {
            bits -= 8;
            bytes.push_back(static_cast<std::uint8_t>(group >> bits));
        }
    }
    // Bits that are left over, and a wrong number of '=', make another text of the same bytes.
    if (ToBase64(bytes) != text)
        return std::nullopt;
    return bytes;
}

} // namespace host
