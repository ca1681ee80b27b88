// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/TrackEdits.h"

#include <algorithm>
#include <utility>

#include "apps/studio/Texts.h"
#include "host/document/CopiedTracks.h"
#include "host/text/TextField.h"
#include "platform/TextEncoding.h"

namespace studio {

namespace {

constexpr std::int32_t kStagger = 24; // pixels between new texts, so that none hides another

std::string WordsOf(const host::Track& track) {
    const auto kind = host::KindOf(track.settings);
    if (!track.cues.empty() && kind != host::TextKind::kScore)
        return CueText(track.cues.front(), kind);
    const auto& settings = track.settings;
    switch (kind) {
    case host::TextKind::kInfo:
        return platform::DecodeText(host::FieldBytes(settings.szInfoText));
    case host::TextKind::kCharacter:
        return platform::DecodeText(host::FieldBytes(settings.szCharacter));
    case host::TextKind::kDialogue:
        return platform::DecodeText(host::FieldBytes(settings.szDialogue));
    default:
        return {};
    }
}

// "Name 2", "Name 3": the first that no track has.
std::string NameOfCopy(const std::string& name, const std::vector<host::Track>& tracks) {
    if (name.empty())
        return name;
    const auto space = name.find_last_of(' ');
    const bool isCopy = space != std::string::npos && space + 1 < name.size() &&
                        name.find_first_not_of("0123456789", space + 1) == std::string::npos;
    const auto stem = isCopy ? name.substr(0, space) : name;
    for (std::size_t number = 2;; ++number) {
        auto copy = stem + ' ' + std::to_string(number);
        if (std::ranges::find(tracks, copy, &host::Track::name) == tracks.end())
            return copy;
    }
}

} // namespace

QString ShownName(const host::Track& track) {
    if (!track.name.empty())
        return QString::fromStdString(track.name);
    if (host::KindOf(track.settings) == host::TextKind::kScore)
        return T("Score line");
    const auto words = QString::fromStdString(WordsOf(track)).simplified();
    return words.isEmpty() ? T("No text") : words.left(40);
}

host::Track TrackEdits::WithoutText() const {
    host::Track track;
    track.settings = m_project.Defaults();
    track.settings.dwFlags = (track.settings.dwFlags & TEXT_BOX) | TEXT_INFO;
    return track;
}

bool TrackEdits::Insert(const QString& step, std::size_t above, std::vector<host::Track> added) {
    auto tracks = Tracks();
    if (tracks.size() + added.size() > host::kMaxTracks)
        return false;
    tracks.insert(tracks.begin() + static_cast<std::ptrdiff_t>(above) + 1,
                  std::make_move_iterator(added.begin()), std::make_move_iterator(added.end()));
    m_project.ChangeTracks(step, std::move(tracks), above + added.size());
    return true;
}

bool TrackEdits::Add(host::Extent frame) {
    auto track = WithoutText();
    std::string why;
    // An encoding may lack the words of the user's language.
    if (!host::SetField(track.settings.szInfoText, {}, T("New text").toStdString(), why))
        host::SetField(track.settings.szInfoText, {}, "New text", why);
    auto& corner = track.settings.ptPos;
    host::Extent text;
    auto* const effect = m_project.Effect();
    if (effect && frame.width > 0 &&
        host::TextMeter(*effect).Measure({ track.settings, {} }, text, why))
        corner = host::CornerAt(
            { .place = host::AnchorPlace::kCentre, .area = {}, .x = {}, .y = {} }, text, frame, 1);
    while (std::ranges::any_of(Tracks(), [&](const host::Track& other) {
        return other.settings.ptPos.x == corner.x && other.settings.ptPos.y == corner.y;
    }))
        corner = { corner.x + kStagger, corner.y + kStagger };
    return Insert(T("Add Track"), m_project.Committed().selected, { std::move(track) });
}

bool TrackEdits::Duplicate(const Indices& chosen) {
    auto tracks = Tracks();
    if (tracks.size() + chosen.size() > host::kMaxTracks)
        return false;
    // From the last on, so that the indices before it stay right.
    for (auto index = chosen.rbegin(); index != chosen.rend(); ++index) {
        auto copy = tracks[*index];
        copy.name = NameOfCopy(copy.name, tracks);
        copy.isLocked = false;
        tracks.insert(tracks.begin() + static_cast<std::ptrdiff_t>(*index) + 1, std::move(copy));
    }
    if (!chosen.empty())
        m_project.ChangeTracks(T("Duplicate Track"), std::move(tracks),
                               chosen.back() + chosen.size());
    return true;
}

void TrackEdits::Delete(const Indices& chosen, const QString& step) {
    std::vector<host::Track> left;
    std::size_t selected = 0; // the one below what goes
    for (std::size_t i = 0; i < Tracks().size(); ++i)
        if (Tracks()[i].isLocked || !std::ranges::binary_search(chosen, i)) {
            left.push_back(Tracks()[i]);
            if (i <= m_project.Committed().selected)
                selected = left.size() - 1;
        }
    if (left.size() == Tracks().size())
        return;
    if (left.empty())
        left.push_back(WithoutText());
    m_project.ChangeTracks(step, std::move(left), selected);
}

void TrackEdits::Reorder(std::size_t from, std::size_t to) {
    auto tracks = Tracks();
    if (from == to || from >= tracks.size() || to >= tracks.size())
        return;
    const auto at = [&](std::size_t i) { return tracks.begin() + static_cast<std::ptrdiff_t>(i); };
    from < to ? std::rotate(at(from), at(from + 1), at(to + 1))
              : std::rotate(at(to), at(from), at(from + 1));
    m_project.ChangeTracks(T("Reorder Tracks"), std::move(tracks), to);
}

void TrackEdits::Set(const QString& step, std::size_t index, host::Track track, Pieces pieces) {
    auto tracks = Tracks();
    tracks[index] = std::move(track);
    // The first numbers are those of the information strings.
    constexpr std::size_t kFirst = 4;
    m_project.ChangeTracks(step, std::move(tracks), m_project.Committed().selected,
                           pieces == Pieces::kMany ? static_cast<int>(kFirst + index) : -1);
}

void TrackEdits::Change(const QString& step, host::Track track, Pieces pieces) {
    Set(step, m_project.Committed().selected, std::move(track), pieces);
}

void TrackEdits::Rename(std::size_t index, const QString& name) {
    auto track = Tracks()[index];
    track.name = name.simplified().toStdString();
    Set(T("Rename Track"), index, std::move(track));
}

void TrackEdits::ToggleShown(std::size_t index) {
    auto track = Tracks()[index];
    track.isShown = !track.isShown;
    Set(track.isShown ? T("Show Track") : T("Hide Track"), index, std::move(track));
}

void TrackEdits::ToggleLocked(std::size_t index) {
    auto track = Tracks()[index];
    track.isLocked = !track.isLocked;
    Set(track.isLocked ? T("Lock Track") : T("Unlock Track"), index, std::move(track));
}

host::Track TrackEdits::Moved(tagPOINT by, host::Extent frame) const {
    auto track = m_project.Committed().Selected();
    host::MoveBy(track, by, frame);
    return track;
}

std::string TrackEdits::Copy(const Indices& chosen) const {
    std::vector<host::Track> tracks;
    for (const auto index : chosen)
        tracks.push_back(Tracks()[index]);
    return host::CopyTracks(tracks);
}

bool TrackEdits::Paste(std::string_view text, std::string& why) {
    auto tracks = host::PasteTracks(text, why);
    if (!tracks)
        return false;
    const auto count = tracks->size();
    if (Insert(count == 1 ? T("Paste Track") : T("Paste Tracks"), m_project.Committed().selected,
               *std::move(tracks)))
        return true;
    why = "a document holds " + std::to_string(host::kMaxTracks) + " tracks at most";
    return false;
}

} // namespace studio
