// SPDX-License-Identifier: BSD-3-Clause
#include "host/text/TimeCode.h"

#include <array>
#include <charconv>
#include <limits>

namespace host {

namespace {

constexpr std::string_view kRates = "24, 25, 30, 48, 50, 60, 23.976, 29.97 and 59.94";

struct NamedRate {
    std::string_view name, fraction;
    int base;
    bool slow;
};
// The first name of a rate is the one that is shown.
constexpr std::array<NamedRate, 10> kNamedRates { {
    { "24", "24/1", 24, false },
    { "25", "25/1", 25, false },
    { "30", "30/1", 30, false },
    { "48", "48/1", 48, false },
    { "50", "50/1", 50, false },
    { "60", "60/1", 60, false },
    { "23.976", "24000/1001", 24, true },
    { "23.98", "24000/1001", 24, true },
    { "29.97", "30000/1001", 30, true },
    { "59.94", "60000/1001", 60, true },
} };

struct Division {
    std::int64_t quotient, remainder; // the remainder is never negative
};
Division Divide(std::int64_t value, std::int64_t by) {
    const std::int64_t remainder = value % by;
    return remainder < 0 ? Division { value / by - 1, remainder + by }
                         : Division { value / by, remainder };
}

// value * by / over, rounded down or to the nearest. by * over is far below the greatest number.
std::int64_t Scale(std::int64_t value, std::int64_t by, std::int64_t over, bool nearest) {
    using Limits = std::numeric_limits<std::int64_t>;
    const auto [whole, rest] = Divide(value, over);
    const std::int64_t part = (rest * by + (nearest ? over / 2 : 0)) / over;
    std::int64_t scaled = 0;
    if (__builtin_mul_overflow(whole, by, &scaled) || __builtin_add_overflow(scaled, part, &scaled))
        return value < 0 ? Limits::min() : Limits::max();
    return scaled;
}

// Takes one or two digits from the front of text.
std::optional<std::int64_t> TakeField(std::string_view& text) {
    std::int64_t value = 0;
    std::size_t digits = 0;
    for (; digits < text.size() && text[digits] >= '0' && text[digits] <= '9'; ++digits)
        if (digits < 2)
            value = value * 10 + (text[digits] - '0');
    text.remove_prefix(digits);
    return digits == 1 || digits == 2 ? std::optional(value) : std::nullopt;
}

} // namespace

std::optional<FrameRate> FrameRate::Parse(std::string_view text, std::string& why) {
    for (const auto& rate : kNamedRates)
        if (text == rate.name || text == rate.fraction)
            return FrameRate(rate.base, rate.slow);
    why = "'" + std::string(text) + "' is no frame rate; there are " + std::string(kRates);
    return std::nullopt;
}

std::string FrameRate::Name() const {
    for (const auto& rate : kNamedRates)
        if (rate.base == m_base && rate.slow == m_slow)
            return std::string(rate.name);
    return {};
}

std::int64_t FrameRate::FrameAt(std::int64_t milliseconds) const {
    return Scale(milliseconds, Numerator(), Denominator() * 1000, true);
}

std::int64_t FrameRate::MillisecondsAt(std::int64_t frame) const {
    return Scale(frame, Denominator() * 1000, Numerator(), true);
}

std::string FrameRate::SecondsAt(std::int64_t frame, int decimals) const {
    std::int64_t unit = 1;
    for (int i = 0; i < decimals; ++i)
        unit *= 10;
    // Whole seconds always fit, and so do the units of the second that has begun.
    auto [periods, rest] = Divide(frame, Numerator());
    const std::int64_t units = Scale(rest, Denominator() * unit, Numerator(), false);
    std::int64_t seconds = periods * Denominator() + units / unit;
    std::int64_t fraction = units % unit;
    const bool negative = seconds < 0;
    if (negative && fraction > 0) {
        ++seconds;
        fraction = unit - fraction;
    }
    auto text = (negative && seconds == 0 ? "-" : "") + std::to_string(seconds);
    if (decimals == 0)
        return text;
    const auto digits = std::to_string(fraction);
    return text + "." + std::string(static_cast<std::size_t>(decimals) - digits.size(), '0') +
           digits;
}

std::optional<TimeCode> TimeCode::Make(FrameRate rate, bool dropFrame, std::string& why) {
    TimeCode code(rate);
    if (!dropFrame)
        return code;
    if (rate.Denominator() == 1 || rate.Base() % 30 != 0) {
        why = "drop-frame time code is for 29.97 and 59.94 frames a second, and not for " +
              rate.Name();
        return std::nullopt;
    }
    code.m_dropped = rate.Base() / 15;
    return code;
}

std::int64_t TimeCode::FramesPerDay() const {
    return FramesPerTenMinutes() * 6 * 24;
}

std::string TimeCode::Format(std::int64_t frame) const {
    // The first minute of ten has all its numbers, each of the others lacks its first ones.
    const auto [tens, inTen] =
        Divide(Divide(frame, FramesPerDay()).remainder, FramesPerTenMinutes());
    const std::int64_t late = inTen < m_dropped ? 0 : (inTen - m_dropped) / FramesPerMinute();
    std::int64_t number = tens * m_rate.Base() * 600 + inTen + late * m_dropped;

    std::string text = IsDropFrame() ? "00:00:00;00" : "00:00:00:00";
    std::size_t at = 9;
    for (const int size : { m_rate.Base(), 60, 60, 24 }) {
        const auto [rest, field] = Divide(number, size);
        text[at] = static_cast<char>('0' + field / 10);
        text[at + 1] = static_cast<char>('0' + field % 10);
        number = rest;
        at -= at > 0 ? 3 : 0;
    }
    return text;
}

std::optional<std::int64_t> TimeCode::Parse(std::string_view text, std::string& why) const {
    std::array<std::int64_t, 4> fields {}; // hours, minutes, seconds, frames
    const std::array<std::int64_t, 4> sizes { 24, 60, 60, m_rate.Base() };
    const auto refuse = [&, whole = std::string(text)](const std::string& reason) {
        why = "'" + whole + "' " + reason;
        return std::nullopt;
    };
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i == 3 && text.starts_with(';') && !IsDropFrame())
            return refuse("has the semicolon of drop-frame, which is not counted here");
        const bool separated = i == 0 || text.starts_with(':') || (i == 3 && text.starts_with(';'));
        text.remove_prefix(i > 0 && separated ? 1 : 0);
        const auto field = separated ? TakeField(text) : std::nullopt;
        if (!field)
            return refuse("is no time code hh:mm:ss:ff");
        if (*field >= sizes[i])
            return refuse("is no time code at " + m_rate.Name() + " frames a second: " +
                          std::to_string(*field) + " is above " + std::to_string(sizes[i] - 1));
        fields[i] = *field;
    }
    if (!text.empty())
        return refuse("is no time code hh:mm:ss:ff");
    const auto [hours, minutes, seconds, frames] = fields;
    if (minutes % 10 != 0 && seconds == 0 && frames < m_dropped)
        return refuse("is a number that drop-frame time code leaves out");
    const std::int64_t minute = hours * 60 + minutes;
    return (minute * 60 + seconds) * m_rate.Base() + frames - (minute - minute / 10) * m_dropped;
}

std::optional<ShotClock> ShotClock::Make(FrameRate rate, bool dropFrame, std::string_view start,
                                         std::string& why) {
    const bool drops = dropFrame || start.find(';') != std::string_view::npos;
    const auto code = TimeCode::Make(rate, drops, why);
    const auto frames = code ? code->Parse(start, why) : std::nullopt;
    return frames ? std::optional(ShotClock { *code, *frames }) : std::nullopt;
}

} // namespace host
