// SPDX-License-Identifier: BSD-3-Clause
// The texts of a shot, prepared once: what each frame gets is only looked up and filled in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/document/Document.h"
#include "host/jobs/FrameText.h"

namespace host {

// A track, ready to be drawn on any frame.
class TrackText {
public:
    // index: that of the track in its document. strings: those of the shot, or none. Nothing, with the
    // reason in why, which names the cue.
    static std::optional<TrackText> Of(const Track& track, std::size_t index,
                                       std::span<const std::string> strings, const Defines& defines,
                                       std::string& why);

    const Track& TheTrack() const { return m_track; }
    std::size_t Index() const { return m_index; }
    // Null where the track has no text on the frame. Any thread.
    const FrameText* At(std::int64_t frame) const;
    bool Uses(Token token) const;

private:
    Track m_track;
    std::size_t m_index = 0;
    std::vector<FrameText> m_texts; // of each cue; a single one where there are none
};

class ShotText {
public:
    // Of the document's tracks, those that are shown, in their order, in the thread's text context.
    // A track that cannot be drawn on any frame is left out, and a problem says which it is and why.
    static ShotText Of(const Document& document, std::vector<std::string>& problems);

    const std::vector<TrackText>& Tracks() const { return m_tracks; }
    bool Uses(Token token) const;
    // Whether any track has a text on the frame.
    bool IsOn(std::int64_t frame) const;

private:
    std::vector<TrackText> m_tracks;
};

} // namespace host
