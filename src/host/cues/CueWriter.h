// SPDX-License-Identifier: BSD-3-Clause
// Cues as files that other programs read. ReadCues brings the cues back.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "host/cues/CueTiming.h"
#include "host/cues/TimedCue.h"

namespace host {

// UTF-8 without a byte order mark, lines with LF. Characters have no place in the format. A cue that
// begins before the frame at time 0 begins with that, one that ends before it is left out; a text with
// tokens stays as it is typed: each is told in problems, by the line of the cue.
std::string WriteSubRip(std::span<const TimedCue> cues, const CueTiming& timing,
                        std::vector<CueProblem>& problems);

// The columns start, end, character and text with the first row for their names; frames' numbers, the
// last included, and tokens as they are typed. Comma, UTF-8 without a byte order mark, lines with LF.
std::string WriteCueTable(std::span<const TimedCue> cues);

} // namespace host
