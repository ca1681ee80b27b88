// SPDX-License-Identifier: BSD-3-Clause
// A line of dialogue with its frames, as it comes from a file of such and goes into one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace host {

struct TimedCue {
    std::int64_t first = 0; // frames, both included, first <= last
    std::int64_t last = 0;
    std::string text {};      // UTF-8 with tokens; LF between lines
    std::string character {}; // UTF-8 with tokens, one line; empty: none
    std::size_t line = 0;     // of the file, from 1

    bool operator==(const TimedCue&) const = default;
};

// What is wrong at a line of a file of cues.
struct CueProblem {
    std::size_t line = 0; // from 1; 0: the file as a whole
    std::string text;     // one clause, without file and line
    bool lost = true;     // what stands there is not among the cues; false: it is, as it stands
};

} // namespace host
