// SPDX-License-Identifier: BSD-3-Clause
// What a person does to the cues of the selected track. Each makes one undo step, or says why nothing
// can be done here.
#pragma once

#include <cstdint>

#include <QString>

#include "apps/studio/CueEdits.h"

class QWidget;

namespace studio {

class MessageBar;
class Project;
class Timeline;

class CueEditor {
public:
    // parent: of dialogs. All outlive this.
    CueEditor(Project& project, Timeline& timeline, MessageBar& messages, QWidget& parent)
        : m_project(project), m_timeline(timeline), m_messages(messages), m_parent(parent) {}

    // The selected track changed by hand.
    void Change(const QString& step, const host::Track& track);
    void Insert();                                                   // from the current frame on
    void InsertOn(FrameSpan frames) { InsertInto(Track(), frames); } // which are free
    void EditWords();                                                // of the timeline's cue
    void Split();                                                    // before the current frame
    void MakeCues();                                                 // of the single text
    void MakeText();                                                 // of the cues
    // The cue around the current frame, else the next one on that side, begins or ends here. False: the
    // track has no cues.
    bool SetEdgeHere(bool end);

    bool HasCues() const;
    bool IsLocked() const;

private:
    const host::Track& Track() const;
    std::int64_t Here() const; // number of the current frame
    FrameSpan Shot() const;
    bool MayChange(); // else says that the track is locked
    void Say(const QString& why);
    void InsertInto(host::Track track, FrameSpan frames);
    bool MakeCuesOf(host::Track& track); // of its single text; false: it has none
    bool AskForWords(host::Cue& cue, host::TextKind kind);

    Project& m_project;
    Timeline& m_timeline;
    MessageBar& m_messages;
    QWidget& m_parent;
};

} // namespace studio
