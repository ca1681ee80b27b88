// SPDX-License-Identifier: BSD-3-Clause
#include "host/cues/CueTiming.h"

#include <algorithm>
#include <charconv>

#include "host/frames/FrameRanges.h"
#include "host/text/Trimmed.h"

namespace host {

namespace {

constexpr std::size_t kMaxHourDigits = 6;
constexpr std::size_t kMaxDecimals = 9;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view TakeDigits(std::string_view& text) {
    const auto end = std::find_if_not(text.begin(), text.end(), IsDigit);
    const auto digits = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(digits.size());
    return digits;
}

std::int64_t Number(std::string_view digits) {
    std::int64_t value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

// Of a second's decimals, to the nearest.
std::int64_t Milliseconds(std::string_view decimals) {
    const auto digit = [&](std::size_t i) { return i < decimals.size() ? decimals[i] - '0' : 0; };
    return digit(0) * 100 + digit(1) * 10 + digit(2) + (digit(3) >= 5 ? 1 : 0);
}

std::string Quoted(std::string_view text) {
    constexpr std::size_t kShown = 40;
    return "'" + std::string(text.substr(0, kShown)) + (text.size() > kShown ? "...'" : "'");
}

} // namespace

std::optional<CueTime> CueTiming::Parse(std::string_view text, std::string& why) const {
    text = Trimmed(text, " \t\n");
    const auto separators =
        std::count_if(text.begin(), text.end(), [](char c) { return c == ':' || c == ';'; });
    if (separators == 3) {
        const bool dropFrame = timeCode.IsDropFrame() || text.find(';') != std::string_view::npos;
        const auto counting = TimeCode::Make(timeCode.Rate(), dropFrame, why);
        const auto frame =
            counting && text.size() <= 11 ? counting->Parse(text, why) : std::nullopt;
        if (frame)
            return CueTime { CueTime::Kind::kCode, *frame };
        if (text.size() <= 11)
            return std::nullopt;
    } else if (separators > 0) {
        if (const auto milliseconds = ParseClock(text))
            return CueTime { CueTime::Kind::kClock, *milliseconds };
    } else {
        std::int64_t frame = 0;
        const auto end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, frame);
        if (error == std::errc() && stop == end && frame >= -kFrameMax && frame <= kFrameMax)
            return CueTime { CueTime::Kind::kFrame, frame };
    }
    why = Quoted(text) + " is no frame number, time code hh:mm:ss:ff or time hh:mm:ss.mmm";
    return std::nullopt;
}

std::int64_t CueTiming::FrameAtClock(std::int64_t milliseconds) const {
    return startFrame + timeCode.Rate().FrameAt(milliseconds);
}

std::int64_t CueTiming::FirstFrame(CueTime start) const {
    return start.kind == CueTime::Kind::kFrame  ? start.value
           : start.kind == CueTime::Kind::kCode ? startFrame + start.value - startCode
                                                : FrameAtClock(start.value);
}

std::int64_t CueTiming::EndFrame(CueTime end, std::int64_t first) const {
    const auto frame = FirstFrame(end);
    return end.kind == CueTime::Kind::kFrame && frame >= first ? frame + 1 : frame;
}

std::int64_t CueTiming::EndAfter(CueTime start, CueTime length) const {
    if (length.kind != CueTime::Kind::kClock)
        return FirstFrame(start) + length.value;
    return start.kind == CueTime::Kind::kClock
               ? FrameAtClock(start.value + length.value)
               : FirstFrame(start) + timeCode.Rate().FrameAt(length.value);
}

std::optional<std::int64_t> ParseClock(std::string_view text) {
    auto hours = TakeDigits(text);
    if (!text.starts_with(':'))
        return std::nullopt;
    text.remove_prefix(1);
    auto minutes = TakeDigits(text);
    std::string_view seconds;
    if (text.starts_with(':')) {
        text.remove_prefix(1);
        seconds = TakeDigits(text);
        if (hours.empty() || hours.size() > kMaxHourDigits)
            return std::nullopt;
    } else {
        seconds = minutes;
        minutes = hours;
        hours = {};
    }
    const auto isField = [](std::string_view field) {
        return (field.size() == 1 || field.size() == 2) && Number(field) < 60;
    };
    if (!isField(minutes) || !isField(seconds))
        return std::nullopt;
    std::string_view decimals;
    if (text.starts_with('.') || text.starts_with(',')) {
        text.remove_prefix(1);
        decimals = TakeDigits(text);
        if (decimals.empty() || decimals.size() > kMaxDecimals)
            return std::nullopt;
    }
    if (!text.empty())
        return std::nullopt;
    return ((Number(hours) * 60 + Number(minutes)) * 60 + Number(seconds)) * 1000 +
           Milliseconds(decimals);
}

} // namespace host
