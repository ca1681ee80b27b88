// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/CueEditor.h"

#include <algorithm>
#include <utility>

#include "apps/studio/CueDialog.h"
#include "apps/studio/MessageBar.h"
#include "apps/studio/Project.h"
#include "apps/studio/Texts.h"
#include "apps/studio/Timeline.h"
#include "apps/studio/TrackEdits.h"

namespace studio {

namespace {

constexpr std::int64_t kNewFrames = 24; // of a cue that is inserted

} // namespace

const host::Track& CueEditor::Track() const {
    return m_project.Committed().Selected();
}

bool CueEditor::HasCues() const {
    return !Track().cues.empty();
}

bool CueEditor::IsLocked() const {
    return Track().isLocked;
}

std::int64_t CueEditor::Here() const {
    return m_project.TheShot()->Numbers()[m_project.Current()];
}

FrameSpan CueEditor::Shot() const {
    const auto numbers = m_project.TheShot()->Numbers();
    return { numbers.front(), numbers.back() };
}

void CueEditor::Say(const QString& why) {
    m_messages.Show(MessageBar::Kind::kInformation, why);
}

bool CueEditor::MayChange() {
    if (IsLocked())
        Say(T("The track “%1” is locked.").arg(ShownName(Track())));
    return !IsLocked();
}

void CueEditor::Change(const QString& step, const host::Track& track) {
    if (!MayChange())
        return;
    const auto selected = m_project.Committed().selected;
    auto tracks = m_project.Committed().tracks;
    tracks[selected] = track;
    m_project.ChangeTracks(step, std::move(tracks), selected);
}

bool CueEditor::AskForWords(host::Cue& cue, host::TextKind kind) {
    const auto& shot = *m_project.TheShot();
    CueDialog dialog(cue, kind, m_project.Values(shot.IndexOf(cue.first)), &m_parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    cue = dialog.Cue();
    return true;
}

bool CueEditor::MakeCuesOf(host::Track& track) {
    return MakeCuesOfText(track, m_project.Spans(), m_project.TheShot()->Numbers());
}

void CueEditor::Insert() {
    if (!MayChange())
        return;
    // What the track says by now is said in cues from then on.
    auto track = Track();
    if (!HasCues())
        MakeCuesOf(track);
    const auto room = FreeAround(track.cues, Here(), Shot());
    if (!room)
        return Say(
            T("There is a text on this frame already. Split it, or go where there is room."));
    InsertInto(std::move(track), { Here(), std::min(Here() + kNewFrames - 1, room->last) });
}

void CueEditor::InsertInto(host::Track track, FrameSpan frames) {
    if (!MayChange())
        return;
    if (track.cues.empty())
        track.on = host::FrameRanges::All();
    // A score line has no words of its own.
    auto& flags = track.settings.dwFlags;
    if (!HasWords(track))
        flags = (flags & ~std::uint32_t { TEXT_SCORE }) | TEXT_DIALOGUE;
    host::Cue cue { frames.first, frames.last, {}, {} };
    if (!AskForWords(cue, host::KindOf(track.settings)))
        return;
    track.cues.push_back(cue);
    track.SortCues();
    const auto at = std::ranges::find(track.cues, cue) - track.cues.begin();
    Change(T("Insert Cue"), track);
    m_timeline.SelectCue(static_cast<std::size_t>(at));
}

void CueEditor::EditWords() {
    const auto at = m_timeline.TheCue();
    if (!MayChange())
        return;
    if (!at)
        return Say(T("There is no cue here."));
    auto track = Track();
    if (AskForWords(track.cues[*at], host::KindOf(track.settings)))
        Change(T("Change Words of Cue"), track);
}

void CueEditor::Split() {
    auto track = Track();
    if (!MayChange())
        return;
    if (!HasCues())
        MakeCuesOf(track);
    if (!SplitCueAt(track, Here()))
        return Say(T("There is no cue to split here. Go to a frame inside of one."));
    m_timeline.SelectCue(std::nullopt);
    Change(T("Split Cue"), track);
}

void CueEditor::MakeCues() {
    auto track = Track();
    if (!MayChange() || HasCues())
        return;
    if (!MakeCuesOf(track))
        return Say(T("This track has no words of its own that cues could have."));
    Change(T("Cues from the Text"), track);
}

void CueEditor::MakeText() {
    auto track = Track();
    if (!MayChange() || !HasCues())
        return;
    std::string why;
    if (!MakeTextOfCues(track, why))
        return Say(why.empty() ? T("These cues have different words, and a text has only one.")
                               : QString::fromStdString(why));
    Change(T("Text from the Cues"), track);
}

bool CueEditor::SetEdgeHere(bool end) {
    auto track = Track();
    if (!HasCues())
        return false;
    const auto here = Here();
    // By hand only neighbours count: of those that overlap, the nearest.
    std::optional<std::size_t> cue;
    for (std::size_t i = 0; i < track.cues.size(); ++i)
        if (end ? track.cues[i].first <= here : track.cues[i].last >= here && !cue)
            cue = i;
    if (!cue)
        return true;
    auto& changed = track.cues[*cue];
    const auto frames =
        Dragged({ changed.first, changed.last }, end ? CuePart::kEnd : CuePart::kStart, here, here,
                RoomOf(track.cues, *cue, Shot()));
    changed.first = frames.first;
    changed.last = frames.last;
    Change(T("Trim Cue"), track);
    return true;
}

} // namespace studio
