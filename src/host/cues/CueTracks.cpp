// SPDX-License-Identifier: BSD-3-Clause
#include "host/cues/CueTracks.h"

#include <algorithm>
#include <utility>

namespace host {

Track TrackForCues(TextKind kind, std::string name, const Track& other) {
    const bool isNames = kind == TextKind::kCharacter;
    Track track;
    track.name = std::move(name);
    track.settings = other.settings;
    track.settings.dwFlags =
        (other.settings.dwFlags & TEXT_BOX) | (isNames ? TEXT_CHARACTER : TEXT_DIALOGUE);
    track.anchor.place = isNames ? AnchorPlace::kTopLeft : AnchorPlace::kBottom;
    track.anchor.area = AnchorArea::kTitle90;
    track.referenceHeight = other.referenceHeight;
    return track;
}

std::vector<Cue> CuesForTrack(TextKind kind, std::span<const TimedCue> cues) {
    const bool isNames = kind == TextKind::kCharacter;
    std::vector<Cue> taken;
    for (const auto& cue : cues)
        if (!isNames || !cue.character.empty())
            taken.push_back({ cue.first, cue.last, isNames ? "" : cue.text, cue.character });
    return taken;
}

std::vector<TimedCue> CuesOfTrack(const Track& track, bool asDrawn) {
    std::vector<TimedCue> cues;
    for (const auto& cue : track.cues)
        cues.push_back({ cue.first, cue.last,
                         asDrawn ? CueText(cue, KindOf(track.settings)) : cue.text, cue.character,
                         cues.size() + 1 });
    return cues;
}

std::size_t CuesBeside(std::span<const TimedCue> cues, std::span<const std::int64_t> numbers) {
    return static_cast<std::size_t>(std::ranges::count_if(cues, [&](const TimedCue& cue) {
        const auto next = std::ranges::lower_bound(numbers, cue.first);
        return next == numbers.end() || *next > cue.last;
    }));
}

} // namespace host
