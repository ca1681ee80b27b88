// SPDX-License-Identifier: BSD-3-Clause
#include "host/text/ColorText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <utility>

#include "host/text/Trimmed.h"

namespace host {

namespace {

constexpr COLORREF MakeColor(std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    return red | green << 8 | blue << 16;
}

// The sixteen names of the first web standards, and the few that film people use beside them.
constexpr std::array<std::pair<std::string_view, COLORREF>, 20> kNames { {
    { "aqua", MakeColor(0, 255, 255) },     { "black", MakeColor(0, 0, 0) },
    { "blue", MakeColor(0, 0, 255) },       { "cyan", MakeColor(0, 255, 255) },
    { "fuchsia", MakeColor(255, 0, 255) },  { "gray", MakeColor(128, 128, 128) },
    { "green", MakeColor(0, 128, 0) },      { "grey", MakeColor(128, 128, 128) },
    { "lime", MakeColor(0, 255, 0) },       { "magenta", MakeColor(255, 0, 255) },
    { "maroon", MakeColor(128, 0, 0) },     { "navy", MakeColor(0, 0, 128) },
    { "olive", MakeColor(128, 128, 0) },    { "orange", MakeColor(255, 165, 0) },
    { "purple", MakeColor(128, 0, 128) },   { "red", MakeColor(255, 0, 0) },
    { "silver", MakeColor(192, 192, 192) }, { "teal", MakeColor(0, 128, 128) },
    { "white", MakeColor(255, 255, 255) },  { "yellow", MakeColor(255, 255, 0) },
} };

std::optional<std::uint32_t> ParseNumber(std::string_view digits, int base) {
    std::uint32_t value = 0;
    const auto end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value, base);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return value;
}

std::optional<COLORREF> ParseHex(std::string_view digits) {
    if (digits.size() != 3 && digits.size() != 6)
        return std::nullopt;
    const auto value = ParseNumber(digits, 16);
    if (!value)
        return std::nullopt;
    if (digits.size() == 6)
        return MakeColor(*value >> 16, *value >> 8 & 0xFF, *value & 0xFF);
    // One digit stands for two of it: 0xF becomes 0xFF.
    return MakeColor((*value >> 8) * 17, (*value >> 4 & 0xF) * 17, (*value & 0xF) * 17);
}

std::optional<COLORREF> ParseTriple(std::string_view text) {
    std::array<std::uint32_t, 3> channels {};
    for (std::size_t i = 0; i < channels.size(); ++i) {
        const auto comma = text.find(',');
        if ((comma == std::string_view::npos) != (i == 2))
            return std::nullopt;
        const auto value = ParseNumber(Trimmed(text.substr(0, comma)), 10);
        if (!value || *value > 255)
            return std::nullopt;
        channels[i] = *value;
        text.remove_prefix(i == 2 ? text.size() : comma + 1);
    }
    return MakeColor(channels[0], channels[1], channels[2]);
}

std::optional<COLORREF> FindName(std::string_view text) {
    std::string name(text);
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    const auto found = std::find_if(kNames.begin(), kNames.end(),
                                    [&](const auto& entry) { return entry.first == name; });
    return found == kNames.end() ? std::nullopt : std::optional(found->second);
}

std::string ColorHelp(std::string_view text) {
    std::string help = "'" + std::string(text) +
                       "' is no color; write #RRGGBB, #RGB, r,g,b with 0 "
                       "to 255 each, or one of";
    for (const auto& [name, color] : kNames)
        help += (name == kNames.front().first ? " " : ", ") + std::string(name);
    return help;
}

} // namespace

std::optional<COLORREF> ParseColor(std::string_view text, std::string& why) {
    const auto trimmed = Trimmed(text);
    const auto color = trimmed.starts_with('#')                      ? ParseHex(trimmed.substr(1))
                       : trimmed.find(',') != std::string_view::npos ? ParseTriple(trimmed)
                                                                     : FindName(trimmed);
    if (!color)
        why = ColorHelp(text);
    return color;
}

std::string FormatColor(COLORREF color) {
    std::array<char, 8> text {};
    std::snprintf(text.data(), text.size(), "#%02X%02X%02X", color & 0xFF, color >> 8 & 0xFF,
                  color >> 16 & 0xFF);
    return text.data();
}

} // namespace host
