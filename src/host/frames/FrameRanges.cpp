// SPDX-License-Identifier: BSD-3-Clause
// Reads and prints frame ranges. Nothing here is ever as long as a range, only as the text or as the
// frames that exist.

#include "host/frames/FrameRanges.h"

#include <algorithm>
#include <charconv>

namespace host {
namespace {

std::string_view Trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string Quoted(std::string_view text) {
    return std::string("'").append(text).append("'");
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Digits, with a minus before them if need be: no plus, no space within.
bool ParseNumber(std::string_view text, std::int64_t& number, std::string& reason) {
    const auto digits = text.substr(text.starts_with('-') ? 1 : 0);
    if (digits.empty() || !std::all_of(digits.begin(), digits.end(), IsDigit)) {
        reason = Quoted(text) + " is not a frame number";
        return false;
    }
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isNegative = digits.size() < text.size();
    if (error == std::errc() && number <= kFrameMax && number >= kFrameMin)
        return true;
    reason = Quoted(text) + (isNegative ? " is below the least" : " is above the greatest") +
             " frame number, " + std::to_string(isNegative ? kFrameMin : kFrameMax);
    return false;
}

bool ParseStep(std::string_view text, FrameRanges::Range& range, std::string& reason) {
    if (!ParseNumber(text, range.step, reason)) {
        reason = "the step " + reason;
        return false;
    }
    if (range.step < 1)
        reason = "the step is " + std::to_string(range.step);
    else if (range.first == kFrameMin && range.step > 1)
        reason = "without a first frame there is none to count the steps from";
    return reason.empty();
}

// What stands between the two ends of a range: two dots, or a hyphen that is no sign, as it follows a
// digit. A text that has none is one number, and its size is given.
struct Between {
    std::size_t at, length;
};
Between FindBetween(std::string_view text) {
    const auto dots = text.find("..");
    if (dots != std::string_view::npos)
        return { dots, 2 };
    const auto digit = text.find_first_of("0123456789");
    return { std::min(text.find('-', std::min(digit, text.size())), text.size()), 1 };
}

bool ParseEnds(std::string_view text, FrameRanges::Range& range, std::string& reason) {
    const auto [at, length] = FindBetween(text);
    const std::string_view first = Trim(text.substr(0, at));
    if (at == text.size()) {
        if (!ParseNumber(first, range.first, reason))
            return false;
        range.last = range.first;
        return true;
    }
    const std::string_view last = Trim(text.substr(at + length));
    if (!first.empty() && !ParseNumber(first, range.first, reason))
        return false;
    if (!last.empty() && !ParseNumber(last, range.last, reason))
        return false;
    if (range.last < range.first)
        reason = "ends before it starts";
    return range.last >= range.first;
}

bool ParseRange(std::string_view text, FrameRanges::Range& range, std::string& reason) {
    const std::size_t colon = text.find(':');
    if (!ParseEnds(text.substr(0, colon), range, reason))
        return false;
    return colon == std::string_view::npos ||
           ParseStep(Trim(text.substr(colon + 1)), range, reason);
}

std::string Print(const FrameRanges::Range& range) {
    if (range.last == range.first)
        return std::to_string(range.first);
    std::string text = range.first == kFrameMin ? ".." : std::to_string(range.first) + '-';
    if (range.last != kFrameMax)
        text += std::to_string(range.last);
    if (range.step != 1)
        text += ':' + std::to_string(range.step);
    return text;
}

} // namespace

bool FrameRanges::Range::Contains(std::int64_t frame) const {
    return frame >= first && frame <= last && (frame - first) % step == 0;
}

std::optional<FrameRanges> FrameRanges::Parse(std::string_view text, std::string& why) {
    FrameRanges ranges;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t comma = std::min(text.find(',', begin), text.size());
        const std::string_view part = Trim(text.substr(begin, comma - begin));
        begin = comma + 1;
        Range range;
        std::string reason;
        if (part.empty()) {
            why = Trim(text).empty() ? "no frames are given"
                                     : "in " + Quoted(text) +
                                           " nothing stands between two commas "
                                           "or at an end";
            return {};
        }
        if (!ParseRange(part, range, reason)) {
            why = Quoted(part) + ": " + reason;
            return {};
        }
        ranges.m_ranges.push_back(range);
    }
    return ranges;
}

FrameRanges FrameRanges::All() {
    FrameRanges ranges;
    ranges.m_ranges.emplace_back();
    return ranges;
}

bool FrameRanges::Contains(std::int64_t frame) const {
    return std::any_of(m_ranges.begin(), m_ranges.end(),
                       [&](const Range& range) { return range.Contains(frame); });
}

std::vector<std::int64_t> FrameRanges::Among(std::span<const std::int64_t> existing) const {
    std::vector<std::int64_t> chosen;
    std::copy_if(existing.begin(), existing.end(), std::back_inserter(chosen),
                 [&](std::int64_t frame) { return Contains(frame); });
    return chosen;
}

std::vector<std::int64_t> FrameRanges::Missing(std::span<const std::int64_t> existing,
                                               std::size_t limit) const {
    std::vector<std::int64_t> missing;
    for (const Range& range : m_ranges) {
        const bool isOpen = range.first == kFrameMin || range.last == kFrameMax;
        if (isOpen && range.first != range.last)
            continue;
        for (std::int64_t frame = range.first; frame <= range.last; frame += range.step) {
            if (missing.size() >= limit)
                return missing;
            if (!std::binary_search(existing.begin(), existing.end(), frame) &&
                std::find(missing.begin(), missing.end(), frame) == missing.end())
                missing.push_back(frame);
        }
    }
    return missing;
}

std::string FrameRanges::ToString() const {
    std::string text;
    for (const Range& range : m_ranges)
        text.append(text.empty() ? "" : ",").append(Print(range));
    return text;
}

} // namespace host
