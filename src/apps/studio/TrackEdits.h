// SPDX-License-Identifier: BSD-3-Clause
// What a user does to the tracks of a project: each is one undo step with a name. Knows no widget.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <QString>

#include "apps/studio/Project.h"
#include "host/jobs/TextPlace.h"

namespace studio {

// The track's name; where it has none, the first words of its text.
QString ShownName(const host::Track& track);

class TrackEdits {
public:
    using Indices = std::vector<std::size_t>; // of tracks, ascending

    // The project must outlive it.
    explicit TrackEdits(Project& project) : m_project(project) {}

    // A text of its own in the middle of such a frame, over the selected track. False, here and below:
    // a document cannot hold so many.
    bool Add(host::Extent frame);
    // Each copy lies over its original, and is not locked.
    bool Duplicate(const Indices& chosen);
    // Locked ones stay. What remains of a document without any is one without a text.
    void Delete(const Indices& chosen, const QString& step);
    // To the place of another one.
    void Reorder(std::size_t from, std::size_t to);
    void Rename(std::size_t track, const QString& name);
    void ToggleShown(std::size_t track);
    void ToggleLocked(std::size_t track);

    // Changes that come in many pieces, as by a key that is held, are one step while they come quickly.
    enum class Pieces { kOne, kMany };
    // The selected track becomes this one.
    void Change(const QString& step, host::Track track, Pieces pieces);
    // The selected track, moved by so many pixels of such a frame.
    host::Track Moved(tagPOINT by, host::Extent frame) const;

    std::string Copy(const Indices& chosen) const;
    // Over the selected track. False, with the reason in why, when the text holds no tracks.
    bool Paste(std::string_view text, std::string& why);

private:
    // Above the place, the last of them selected.
    bool Insert(const QString& step, std::size_t above, std::vector<host::Track> tracks);
    void Set(const QString& step, std::size_t index, host::Track track,
             Pieces pieces = Pieces::kOne);
    const std::vector<host::Track>& Tracks() const { return m_project.Committed().tracks; }
    host::Track WithoutText() const;

    Project& m_project;
};

} // namespace studio
