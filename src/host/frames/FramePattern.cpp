// SPDX-License-Identifier: BSD-3-Clause
// Both ways of writing a pattern are one thing inside: what stands before the number, its least count
// of digits, and what stands after it.

#include "host/frames/FramePattern.h"

#include <algorithm>
#include <charconv>

#include "host/Message.h"
#include "host/frames/FrameRanges.h"

namespace host {
namespace {

constexpr std::size_t kDigitsMax = 18;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view FileName(std::string_view path) {
    return path.substr(path.rfind('/') + 1); // npos + 1 is 0
}

// The length of "%d", "%4d" or "%04d" at the beginning of the text; 0 when none stands there.
std::size_t PercentPlace(std::string_view text) {
    if (text.empty() || text[0] != '%')
        return 0;
    std::size_t end = 1;
    while (end < text.size() && IsDigit(text[end]))
        ++end;
    return end < text.size() && text[end] == 'd' ? end + 1 : 0;
}

std::size_t FindPercentPlace(std::string_view name) {
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (PercentPlace(name.substr(i)) != 0)
            return i;
        if (name.substr(i, 2) == "%%")
            ++i;
    }
    return std::string_view::npos;
}

// Turns "%%" into a percent sign. False: there is a percent sign that is none of that.
bool Unescape(std::string_view text, std::string& plain) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && text.substr(i, 2) != "%%")
            return false;
        i += text[i] == '%';
        plain += text[i];
    }
    return true;
}

std::optional<std::int64_t> ReadNumber(std::string_view text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number > kFrameMax || number < kFrameMin)
        return {};
    return number;
}

bool IsSign(std::string_view stem, std::size_t at) {
    return stem[at] == '-' && (at == 0 || stem[at - 1] == '.' || stem[at - 1] == '_');
}

} // namespace

std::vector<NumberPlace> NumbersIn(std::string_view stem) {
    std::vector<NumberPlace> places;
    for (std::size_t end = stem.size(); end > 0;) {
        std::size_t at = end;
        while (at > 0 && IsDigit(stem[at - 1]))
            --at;
        const bool hasDigits = at < end;
        if (hasDigits && at > 0 && IsSign(stem, at - 1))
            --at;
        const auto number = hasDigits ? ReadNumber(stem.substr(at, end - at)) : std::nullopt;
        if (number)
            places.push_back({ at, end - at, *number });
        end = hasDigits ? at : end - 1;
    }
    return places;
}

bool FramePattern::LooksLikeOne(std::string_view path) {
    const std::string_view name = FileName(path);
    return name.find('#') != std::string_view::npos ||
           FindPercentPlace(name) != std::string_view::npos;
}

std::optional<FramePattern> FramePattern::Parse(std::string_view path, std::string& why) {
    const auto fail = [&](std::string_view reason) {
        why = Printable(path) + ": " + std::string(reason);
        return std::nullopt;
    };
    const std::string_view name = FileName(path);
    const std::size_t hash = name.find('#');
    const std::size_t percent = FindPercentPlace(name);
    if (hash == std::string_view::npos && percent == std::string_view::npos)
        return fail(
            "has no place for the frame's number, such as %04d or ####, in the file's name");
    if (hash != std::string_view::npos && percent != std::string_view::npos)
        return fail("has a %d and a #; one of them is the place for the frame's number");

    FramePattern pattern;
    pattern.m_folder = path.substr(0, path.size() - name.size());
    if (hash != std::string_view::npos) {
        const std::size_t end = std::min(name.find_first_not_of('#', hash), name.size());
        if (name.find('#', end) != std::string_view::npos)
            return fail("has more than one place for the frame's number");
        pattern.m_before = name.substr(0, hash);
        pattern.m_after = name.substr(end);
        pattern.m_digits = end - hash;
    } else {
        const std::size_t length = PercentPlace(name.substr(percent));
        const std::string_view width = name.substr(percent + 1, length - 2);
        const std::string_view rest = name.substr(percent + length);
        if (FindPercentPlace(rest) != std::string_view::npos)
            return fail("has more than one place for the frame's number");
        if (!Unescape(name.substr(0, percent), pattern.m_before) ||
            !Unescape(rest, pattern.m_after))
            return fail("has a % that is neither %d, with a width if wished, nor %%");
        const auto [end, error] =
            std::from_chars(width.data(), width.data() + width.size(), pattern.m_digits);
        if (error == std::errc::result_out_of_range)
            pattern.m_digits = kDigitsMax + 1;
        pattern.m_digits = std::max<std::size_t>(pattern.m_digits, 1);
    }
    if (pattern.m_digits > kDigitsMax)
        return fail("asks for more than " + std::to_string(kDigitsMax) + " digits");
    return pattern;
}

std::optional<std::string> FramePattern::Of(std::string_view path) {
    const std::string_view name = FileName(path);
    const auto stem = name.substr(0, std::min(name.rfind('.'), name.size()));
    const auto places = NumbersIn(stem);
    if (places.empty())
        return {};
    const auto& [at, length, number] = places.front();
    const bool hasSign = stem[at] == '-';
    std::string pattern(path);
    pattern.replace(path.size() - name.size() + at, length,
                    std::string(length - (hasSign ? 1 : 0), '#'));
    std::string why;
    const auto parsed = Parse(pattern, why);
    return parsed && parsed->NumberIn(name) == number ? std::optional(pattern) : std::nullopt;
}

std::string FramePattern::PathOf(std::int64_t frame) const {
    std::string number = std::to_string(frame);
    const std::size_t sign = frame < 0 ? 1 : 0;
    if (number.size() < m_digits + sign)
        number.insert(sign, m_digits + sign - number.size(), '0');
    return m_folder + m_before + number + m_after;
}

std::optional<std::int64_t> FramePattern::NumberIn(std::string_view fileName) const {
    if (fileName.size() <= m_before.size() + m_after.size() || !fileName.starts_with(m_before) ||
        !fileName.ends_with(m_after))
        return {};
    fileName.remove_prefix(m_before.size());
    fileName.remove_suffix(m_after.size());
    const bool isNegative = fileName[0] == '-';
    const auto digits = fileName.substr(isNegative ? 1 : 0);
    // Wider than its place, a number has no zeros in front.
    if (fileName.size() < m_digits || (digits.size() > m_digits && digits[0] == '0') ||
        digits.empty() || !std::all_of(digits.begin(), digits.end(), IsDigit))
        return {};
    const auto number = ReadNumber(fileName);
    return number == 0 && isNegative ? std::nullopt : number;
}

} // namespace host
