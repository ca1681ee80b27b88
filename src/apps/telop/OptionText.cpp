// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/OptionText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

#include <CLI/CLI.hpp>

#include "apps/telop/CommandError.h"
#include "apps/telop/LoadEffect.h"
#include "host/text/ColorText.h"
#include "host/text/TextField.h"
#include "platform/TextContext.h"
#include "platform/Utf8.h"

namespace telop {

namespace {

constexpr std::size_t kMaxDialogueFile = std::size_t { 1 } << 20;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool ReadInt(std::string_view text, std::int32_t& value) {
    const auto end = text.data() + text.size();
    if (text.starts_with('+') && !text.starts_with("+-"))
        text.remove_prefix(1);
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end;
}

// A file is in the encoding of texts, unless its mark says that it is in UTF-8.
std::string Utf8Of(const std::string& name, std::string_view bytes) {
    const auto encoding = platform::TextContext::Current().Encoding();
    const bool isMarked = bytes.starts_with(kByteOrderMark);
    if (isMarked || encoding == platform::TextEncoding::Utf8()) {
        bytes.remove_prefix(isMarked ? kByteOrderMark.size() : 0);
        CheckUtf8(name, bytes);
        return std::string(bytes);
    }
    platform::TextContext met(encoding);
    const platform::TextScope scope(met);
    // What a character at the end lacks shows only when another follows.
    auto text = platform::DecodeText(std::string(bytes) + '\n');
    if (!met.Reports().empty())
        throw CommandError(ExitCode::kBadInput, name + ": the text is not " + encoding.Name() +
                                                    ": " +
                                                    platform::Describe(met.Reports().front()) +
                                                    "; --encoding names its encoding");
    text.pop_back();
    return text;
}

std::string ReadDialogueFile(std::string_view option, const std::string& file) {
    if (file.empty())
        FailUsage(std::string(option) +
                  ": @ is followed by a file's name; a text that starts with @ is written with @@");
    const auto bytes = ReadText(file == "-" ? "./-" : file, kMaxDialogueFile);
    auto lines = host::WithCarriageReturns(Utf8Of(std::string(option) + ": " + file, bytes));
    // Editors end the last line too, which would draw an empty line below it.
    if (lines.ends_with('\r'))
        lines.pop_back();
    return lines;
}

// The index of the word; nothing, with a sentence in why, when it is none of them.
std::optional<std::size_t> FindWord(const std::vector<std::string>& words, const std::string& text,
                                    std::string& why) {
    const auto found = std::ranges::find(words, CLI::detail::to_lower(text));
    if (found != words.end())
        return static_cast<std::size_t>(found - words.begin());
    why = "'" + text + "' is none of ";
    for (std::size_t i = 0; i < words.size(); ++i)
        why += (i == 0 ? "" : i + 1 == words.size() ? " and " : ", ") + words[i];
    return std::nullopt;
}

std::string Unescaped(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char next = i + 1 < text.size() ? text[i + 1] : '\0';
        const bool escape = text[i] == '\\' && (next == 'n' || next == '\\');
        result += !escape ? text[i] : next == 'n' ? '\r' : '\\';
        i += escape ? 1 : 0;
    }
    return host::WithCarriageReturns(result);
}

} // namespace

host::FrameRanges ParseRanges(std::string_view option, const std::string& text) {
    std::string why;
    auto ranges = host::FrameRanges::Parse(text, why);
    if (!ranges)
        FailUsage(std::string(option) + ": " + why);
    return *std::move(ranges);
}

tagPOINT ParsePoint(std::string_view option, std::string_view text) {
    const auto comma = text.find(',');
    tagPOINT point {};
    if (comma == std::string_view::npos || !ReadInt(text.substr(0, comma), point.x) ||
        !ReadInt(text.substr(comma + 1), point.y))
        FailUsage(std::string(option) + ": '" + std::string(text) +
                  "' is not X,Y, two whole numbers such as 54,41");
    return point;
}

COLORREF ParseColorOption(std::string_view option, std::string_view text) {
    std::string why;
    const auto color = host::ParseColor(text, why);
    if (!color)
        FailUsage(std::string(option) + ": " + why);
    return *color;
}

std::array<std::string, 4> SplitStrings(std::string_view option, std::string_view text) {
    std::array<std::string, 4> strings;
    std::size_t index = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == ',') {
            ++index;
            continue;
        }
        if (text[i] == '\\' && i + 1 < text.size() && text[i + 1] == ',')
            ++i;
        if (index < strings.size())
            strings[index] += text[i];
    }
    if (index + 1 != strings.size())
        FailUsage(
            std::string(option) + ": '" + std::string(text) + "' has " + std::to_string(index + 1) +
            " of the four strings; write A,B,C,D, where each may be empty and \\, is a comma");
    return strings;
}

std::vector<std::string> SplitNames(std::string_view option, std::string_view text) {
    CheckUtf8(option, text);
    std::vector<std::string> names;
    for (bool isLast = false; !isLast;) {
        const auto comma = text.find(',');
        isLast = comma == std::string_view::npos;
        auto name = text.substr(0, comma);
        name.remove_prefix(std::min(name.find_first_not_of(' '), name.size()));
        name = name.substr(0, name.find_last_not_of(' ') + 1);
        if (name.empty())
            FailUsage(std::string(option) + ": a name is empty; write A,B");
        names.emplace_back(name);
        text.remove_prefix(isLast ? text.size() : comma + 1);
    }
    return names;
}

std::string DialogueText(std::string_view option, const std::string& text) {
    if (text.starts_with("@@"))
        return Unescaped(text.substr(1));
    return text.starts_with('@') ? ReadDialogueFile(option, text.substr(1)) : Unescaped(text);
}

void CheckUtf8(std::string_view option, std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const auto length = platform::Utf8SequenceLength(text.substr(i));
        if (length == 0)
            throw CommandError(ExitCode::kBadInput, std::string(option) +
                                                        ": the text is not UTF-8 at byte " +
                                                        std::to_string(i + 1));
        i += length;
    }
}

CLI::Validator WholeNumber(std::int64_t least, std::int64_t most) {
    const auto check = [least, most](const std::string& text) {
        std::int64_t number = 0;
        const bool fits =
            CLI::detail::lexical_cast(text, number) && number >= least && number <= most;
        return fits ? std::string()
                    : "'" + text + "' is not a whole number from " + std::to_string(least) +
                          " to " + std::to_string(most);
    };
    return { check, "" };
}

CLI::Validator PositiveFactor() {
    const auto check = [](const std::string& text) {
        double number = 0;
        const bool fits =
            CLI::detail::lexical_cast(text, number) && std::isfinite(number) && number > 0;
        return fits ? std::string() : "'" + text + "' is not a number above 0, such as 0.5";
    };
    return { check, "" };
}

CLI::Validator OneOf(std::vector<std::string> words) {
    const auto change = [words = std::move(words)](std::string& text) {
        std::string why;
        if (const auto index = FindWord(words, text, why))
            text = words[*index];
        return why;
    };
    return { change, "" };
}

CLI::Validator PlaceAmong(std::vector<std::string> words) {
    const auto change = [words = std::move(words)](std::string& text) {
        std::string why;
        if (const auto index = FindWord(words, text, why))
            text = std::to_string(*index);
        return why;
    };
    return { change, "" };
}

CLI::Validator ByteSize() {
    const auto change = [](std::string& text) {
        const auto typed = text;
        try {
            if (CLI::AsSizeValue(false)(text).empty() && CLI::PositiveNumber(text).empty())
                return std::string();
        } catch (const CLI::ValidationError&) { // told as what follows
        }
        return "'" + typed + "' is no size above 0, such as 800M or 8G";
    };
    return { change, "" };
}

} // namespace telop
