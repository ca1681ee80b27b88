// SPDX-License-Identifier: BSD-3-Clause
// How times in files of cues become frames.
//
// A time is a moment, and stands for the frame whose start is the nearest to it. A cue begins with the
// frame of its start and ends with the one before the frame of its end, so that where one ends at the
// moment that the next begins, no frame is left between them and none has both. Frames that were
// written as times, rounded to a thousandth or a hundredth of a second, come back.
//
// A time code is a moment too: that at which its frame starts. The number of a frame is the frame
// itself: a cue from 1001 to 1010 has ten.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/text/TimeCode.h"

namespace host {

// As a table has it in a cell.
struct CueTime {
    enum class Kind { kFrame, kCode, kClock };
    Kind kind = Kind::kFrame;
    std::int64_t value = 0; // a frame's number, frames from 00:00:00:00, milliseconds
};

struct CueTiming {
    TimeCode timeCode {};        // its rate is that of all times
    std::int64_t startFrame = 0; // the frame at time 0, -kFrameMax to kFrameMax
    std::int64_t startCode = 0;  // its time code, as TimeCode::Parse gives it

    // "1001" or "-5"; "hh:mm:ss:ff", or with a semicolon drop-frame whatever timeCode is; or what
    // ParseClock reads. Blanks around it do not count. Nothing, with the reason in why, for others.
    std::optional<CueTime> Parse(std::string_view text, std::string& why) const;

    std::int64_t FrameAtClock(std::int64_t milliseconds) const;
    // The first frame of a cue that starts then.
    std::int64_t FirstFrame(CueTime start) const;
    // The frame behind the last of a cue that starts with first and ends then; not above first when
    // there is no such cue.
    std::int64_t EndFrame(CueTime end, std::int64_t first) const;
    // The same for a cue that starts at start and is that long; frames and codes count frames.
    std::int64_t EndAfter(CueTime start, CueTime length) const;
};

// Milliseconds of "[hh:]mm:ss", where a point or comma and up to nine decimals may follow.
std::optional<std::int64_t> ParseClock(std::string_view text);

} // namespace host
