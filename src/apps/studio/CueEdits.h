// SPDX-License-Identifier: BSD-3-Clause
// What a hand does to the cues of a track: they are moved, trimmed and split, and stop where the next
// one stands.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "apps/studio/OnSpans.h"
#include "host/document/Track.h"

namespace studio {

// Numbers of frames; both ends belong to it.
struct FrameSpan {
    std::int64_t first = 0;
    std::int64_t last = 0;
    bool operator==(const FrameSpan&) const = default;
};

using Cues = std::vector<host::Cue>; // in the order of their first frames

// What the cue may take: up to its neighbours and the ends of the shot, and what it has already.
FrameSpan RoomOf(const Cues& cues, std::size_t cue, FrameSpan shot);
// What is free around a frame. Nothing where there is a cue.
std::optional<FrameSpan> FreeAround(const Cues& cues, std::int64_t frame, FrameSpan shot);

enum class CuePart { kStart, kEnd, kWhole };
// That part of the cue, taken at one frame and brought to another.
FrameSpan Dragged(FrameSpan cue, CuePart part, std::int64_t from, std::int64_t to, FrameSpan room);

// The frame becomes the first one of another cue with the same words. False: it is inside of none.
bool SplitCueAt(host::Track& track, std::int64_t frame);

// Whether the track's kind of text has words, which cues can bring.
bool HasWords(const host::Track& track);
// The settings with the words of the frame's cue, if there is one and they fit, in the place of the
// single text: what the effect's dialogs show. And the way back: words that differ are the cue's.
_TEXTPARAM SettingsAt(const host::Track& track, std::int64_t frame);
void TakeSettings(host::Track& track, std::int64_t frame, const _TEXTPARAM& settings);
// The single text becomes a cue on each stretch of frames on which it is on. False: it is empty.
bool MakeCuesOfText(host::Track& track, const OnSpans& spans,
                    std::span<const std::int64_t> numbers);
// The cues' one text becomes the single text, on where they are. False, with the reason in why, which
// is empty where their words differ.
bool MakeTextOfCues(host::Track& track, std::string& why);

} // namespace studio
