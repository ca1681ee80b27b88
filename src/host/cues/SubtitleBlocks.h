// SPDX-License-Identifier: BSD-3-Clause
// The frame that SubRip and WebVTT have in common: a cue is a line with two times and an arrow between
// them, then its text up to an empty line. A line above the times may give it a number or a name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

#include "host/cues/CueCollector.h"

namespace host {

// Takes a line without its LF from the front of text.
std::string_view TakeLine(std::string_view& text);

struct SubtitleBlock {
    std::size_t line = 0;   // of the times
    std::int64_t start = 0; // milliseconds
    std::int64_t end = 0;
    std::string_view text; // lines with LF between them
};

// Calls cue for each block in turn. isComment says of the first line of another block whether it is one
// to be passed over; the others are told to out. A cue may follow the text of another without an empty
// line.
void ReadBlocks(std::string_view utf8, const std::function<bool(std::string_view)>& isComment,
                const std::function<void(const SubtitleBlock&)>& cue, CueCollector& out);

} // namespace host
