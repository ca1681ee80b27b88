// SPDX-License-Identifier: BSD-3-Clause
// Frame rates and time codes. Integers only, and right for every frame number that there is.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace host {

// One of 24, 25, 30, 48, 50 and 60 frames a second, or 1000/1001 of 24, 30 and 60, which people call
// 23.976, 29.97 and 59.94. A small value.
class FrameRate {
public:
    constexpr FrameRate() = default; // 24

    // "24", "23.976" (also "23.98"), "24000/1001". Nothing, with the rates that there are in why, for
    // anything else.
    static std::optional<FrameRate> Parse(std::string_view text, std::string& why);
    // As people write it; Parse reads it.
    std::string Name() const;

    // Frames in a second of the time code: 24 of 23.976.
    constexpr int Base() const { return m_base; }
    // Frames a second are Numerator() / Denominator().
    constexpr std::int64_t Numerator() const { return std::int64_t { m_base } * Thousands(); }
    constexpr std::int64_t Denominator() const { return m_slow ? 1001 : 1; }

    // The frame whose start is the nearest to a time, the later one of two as near. Frame 0 starts at
    // 0. Brings back each frame from the milliseconds of its start.
    std::int64_t FrameAt(std::int64_t milliseconds) const;
    // The start of a frame, to the nearest; the greatest or least number where it would be beyond.
    std::int64_t MillisecondsAt(std::int64_t frame) const;
    // "41.666": the start of a frame in seconds, as many decimals of it as asked for, 0 to 9, towards
    // the past as a clock shows it.
    std::string SecondsAt(std::int64_t frame, int decimals) const;

    bool operator==(const FrameRate&) const = default;

private:
    constexpr FrameRate(int base, bool slow) : m_base(base), m_slow(slow) {}
    constexpr std::int64_t Thousands() const { return m_slow ? 1000 : 1; }

    int m_base = 24;
    bool m_slow = false; // 1000/1001 of the base
};

// How frames are counted in hours, minutes, seconds and frames. A small value.
//
// Drop-frame leaves numbers out, never frames, so that the code keeps to the clock: in each minute but
// every tenth the first two numbers at 29.97, the first four at 59.94.
class TimeCode {
public:
    constexpr TimeCode() = default;
    // Without drop-frame.
    constexpr explicit TimeCode(FrameRate rate) : m_rate(rate) {}
    // Nothing, with the reason in why, where drop-frame is asked for another rate than those two.
    static std::optional<TimeCode> Make(FrameRate rate, bool dropFrame, std::string& why);

    FrameRate Rate() const { return m_rate; }
    bool IsDropFrame() const { return m_dropped > 0; }
    std::int64_t FramesPerDay() const;

    // "hh:mm:ss:ff", of drop-frame "hh:mm:ss;ff", of the frame that many frames after 00:00:00:00. A
    // day's last is followed by its first, and its first comes after its last.
    std::string Format(std::int64_t frame) const;
    // The frame, 0 to FramesPerDay() - 1; one or two digits each. Drop-frame reads a colon in the
    // place of its semicolon too. Nothing, with the reason in why, for what is no time code, has
    // fields out of range, or is a number that drop-frame leaves out.
    std::optional<std::int64_t> Parse(std::string_view text, std::string& why) const;

    bool operator==(const TimeCode&) const = default;

private:
    std::int64_t FramesPerMinute() const { return m_rate.Base() * std::int64_t { 60 } - m_dropped; }
    std::int64_t FramesPerTenMinutes() const { return FramesPerMinute() * 10 + m_dropped; }

    FrameRate m_rate;
    int m_dropped = 0; // numbers in a minute
};

// How the frames of a shot are counted in time. A small value.
struct ShotClock {
    TimeCode timeCode {};
    std::int64_t startCode = 0; // of the shot's first frame, as TimeCode::Parse gives it

    // start as people type it; with the semicolon of drop-frame it is counted so too. Nothing, with the
    // reason in why.
    static std::optional<ShotClock> Make(FrameRate rate, bool dropFrame, std::string_view start,
                                         std::string& why);
    std::string Start() const { return timeCode.Format(startCode); }

    bool operator==(const ShotClock&) const = default;
};

} // namespace host
