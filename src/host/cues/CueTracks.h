// SPDX-License-Identifier: BSD-3-Clause
// Between the cues of files and the tracks of documents.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "host/cues/TimedCue.h"
#include "host/document/Track.h"

namespace host {

// A track without cues that looks like another: of dialogue at the bottom of the title area, or of
// characters at its top left, where no number of lines reaches them.
Track TrackForCues(TextKind kind, std::string name, const Track& other);

// What a track of that kind has of a file's cues: of characters those that name one, without texts.
std::vector<Cue> CuesForTrack(TextKind kind, std::span<const TimedCue> cues);

// A track's cues for a file, their places counted from 1 as lines. asDrawn: the text is what the track
// draws, as subtitles have it; else both texts are kept, as in a table.
std::vector<TimedCue> CuesOfTrack(const Track& track, bool asDrawn);

// How many cues are on none of the frames with these numbers, which are ascending.
std::size_t CuesBeside(std::span<const TimedCue> cues, std::span<const std::int64_t> numbers);

} // namespace host
