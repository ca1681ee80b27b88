// SPDX-License-Identifier: BSD-3-Clause
// What is being made: the frames, the tracks of text and the information strings, with undo. One track is
// selected: the effect's live parameters are its settings. Knows the effect, but no window.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <QString>
#include <QUndoStack>

#include <epi/epi.h>

#include "apps/studio/CueEdits.h"
#include "apps/studio/OnSpans.h"
#include "apps/studio/Shot.h"
#include "apps/studio/ShotStrings.h"
#include "host/Effect.h"
#include "host/document/Document.h"
#include "host/frames/FrameRanges.h"

namespace studio {

// All that undo brings back.
struct Content {
    std::vector<host::Track> tracks { 1 }; // never empty
    std::size_t selected = 0;
    ShotStrings strings;

    const host::Track& Selected() const { return tracks[selected]; }
    host::Track& Selected() { return tracks[selected]; }
};

class Project {
public:
    // effect is null where there is no plug-in (frames can be looked at then), else outlives this.
    explicit Project(host::Effect* effect);
    // The stack clears itself at its end, and what it tells of is gone by then.
    ~Project() { m_undo.disconnect(); }

    host::Effect* Effect() { return m_effect; }
    const std::shared_ptr<const Shot>& TheShot() const { return m_shot; }
    void SetShot(std::shared_ptr<const Shot> shot);
    std::size_t Current() const { return m_current; }
    // Whether the live parameters changed, as the frame has another cue.
    bool SetCurrent(std::size_t index);

    // As it was committed last: what a dialog is just editing in place is not in it.
    const Content& Committed() const { return m_content; }
    // The effect's live parameters, with what a dialog is editing: those of the selected track, with
    // the words of the current frame's cue where it has one.
    _TEXTPARAM LiveParams() const;
    // Of the selected track.
    bool IsOnAt(std::size_t index) const {
        return m_content.Selected().on.Contains(m_shot->Numbers()[index]);
    }
    // Of the document.
    const host::ShotClock& Clock() const { return m_document.clock; }
    // Of a frame of the shot.
    host::TokenValues Values(std::size_t index) const {
        return m_shot->Values(index, m_document.clock, m_document.defines);
    }
    // What the current frame makes of the information strings.
    std::array<std::string, 4> StringsHere() const;
    OnSpans Spans() const { return SpansOf(m_content.Selected().on, m_shot->Numbers()); }

    // Each makes an undo step when something differs.
    void CommitParams(); // takes the live parameters over
    void ChangeStrings(const ShotStrings& strings, int which);
    void ChangeSpans(const OnSpans& spans);
    void TurnTextOnHere();
    // Any change of the tracks and of which one is selected, under that name. Steps of one series (a
    // number from 4 on) become one while they follow each other quickly.
    void ChangeTracks(const QString& name, std::vector<host::Track> tracks, std::size_t selected,
                      int series = -1);
    // No undo step; what a dialog left unconfirmed is dropped.
    void Select(std::size_t track);
    // What a hand is just doing to the selected track, for LiveDocument alone. Nothing, or any change
    // of the content, ends it.
    void Preview(std::optional<host::Track> track) { m_preview = std::move(track); }
    // Those of a new document.
    const _TEXTPARAM& Defaults() const { return m_initial.Selected().settings; }
    // Puts the committed parameters back in the place of what a dialog left unconfirmed.
    void DropLiveChanges();

    QUndoStack& Undo() { return m_undo; }
    // Also when only the frames or the dialogs' own settings changed.
    bool IsModified() const;
    void SetUnmodified();

    // Without what a dialog has not confirmed.
    host::Document ToDocument();
    // With it.
    host::Document LiveDocument();
    // Takes the content and the dialogs' settings over, without an undo step, and the frames. Where
    // these could not be opened shot is the test card, and the document's input is kept. False, and
    // nothing changed, with the reason.
    bool Take(const host::Document& document, std::shared_ptr<const Shot> shot, std::string& why);
    // A new document, with the test card.
    void Reset();
    // Nothing that is saved holds this state, whatever undo says.
    void SetModified();

    // The content changed, by hand, undo or loading.
    std::function<void()> onChanged = [] {};
    std::function<void()> onModified = [] {}; // whether it is modified may have changed

private:
    class Step;
    void Push(const QString& text, Content content, int typing);
    void Apply(const Content& content);
    std::int64_t Here() const { return m_shot->Numbers()[m_current]; }
    _TEXTPARAM SettingsHere() const { return SettingsAt(m_content.Selected(), Here()); }
    std::vector<std::uint8_t> Block() const;

    host::Effect* m_effect;
    std::shared_ptr<const Shot> m_shot;
    std::size_t m_current = 0;
    Content m_content;
    std::optional<host::Track> m_preview;
    host::Document m_document; // what undo does not know of: encoding, language and the like
    Content m_initial;         // of a new document
    std::vector<std::uint8_t> m_initialBlock; // the dialogs' settings of a new document
    std::vector<std::uint8_t> m_savedBlock;   // those when it was saved last
    std::string m_lostInput;                  // frames of the document that could not be opened
    bool m_isOther = false;                   // than what was saved, beside what undo knows of
    QUndoStack m_undo;
};

} // namespace studio
