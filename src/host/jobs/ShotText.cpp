// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/ShotText.h"

#include <algorithm>
#include <utility>

namespace host {

std::optional<TrackText> TrackText::Of(const Track& track, std::size_t index,
                                       std::span<const std::string> strings, const Defines& defines,
                                       std::string& why) {
    TrackText text;
    text.m_track = track;
    text.m_index = index;
    const auto add = [&](const Cue* cue) {
        auto one = FrameText::Of(track.settings, cue, strings, defines, why);
        if (!one)
            return false;
        text.m_texts.push_back(*std::move(one));
        return true;
    };
    for (const auto& cue : track.cues)
        if (!add(&cue)) {
            why.insert(0, "the cue of frames " + std::to_string(cue.first) + " to " +
                              std::to_string(cue.last) + ": ");
            return std::nullopt;
        }
    if (track.cues.empty() && !add(nullptr))
        return std::nullopt;
    return text;
}

const FrameText* TrackText::At(std::int64_t frame) const {
    if (!m_track.on.Contains(frame))
        return nullptr;
    if (m_track.cues.empty())
        return &m_texts.front();
    const auto* cue = m_track.CueAt(frame);
    return cue ? &m_texts[static_cast<std::size_t>(cue - m_track.cues.data())] : nullptr;
}

bool TrackText::Uses(Token token) const {
    return std::ranges::any_of(m_texts, [&](const FrameText& text) { return text.Uses(token); });
}

ShotText ShotText::Of(const Document& document, std::vector<std::string>& problems) {
    ShotText shot;
    const std::span<const std::string> none;
    for (std::size_t i = 0; i < document.tracks.size(); ++i) {
        const auto& track = document.tracks[i];
        if (!track.isShown)
            continue;
        std::string why;
        auto text = TrackText::Of(track, i, document.stringsPresent ? document.strings : none,
                                  document.defines, why);
        if (text)
            shot.m_tracks.push_back(*std::move(text));
        else
            problems.push_back(document.tracks.size() > 1 ? "track '" + track.name + "': " + why
                                                          : why);
    }
    return shot;
}

bool ShotText::Uses(Token token) const {
    return std::ranges::any_of(m_tracks, [&](const TrackText& track) { return track.Uses(token); });
}

bool ShotText::IsOn(std::int64_t frame) const {
    return std::ranges::any_of(m_tracks,
                               [&](const TrackText& track) { return track.At(frame) != nullptr; });
}

} // namespace host
