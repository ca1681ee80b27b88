// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Project.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <utility>

#include <QUndoCommand>

#include "apps/studio/Texts.h"
#include "platform/TextContext.h"

namespace studio {

namespace {

// Letters that are typed within such a time make one step.
constexpr std::chrono::seconds kTypingPause { 2 };

bool SameBytes(const _TEXTPARAM& a, const _TEXTPARAM& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

bool SameContent(const Content& a, const Content& b) {
    return a.tracks == b.tracks && a.strings == b.strings;
}

// What a step on the parameters is called: by the one thing that it changes, if it is one.
QString NameOfChange(const _TEXTPARAM& before, const _TEXTPARAM& after) {
    auto rest = after;
    rest.ptPos = before.ptPos;
    const bool moves = !SameBytes(rest, after);
    if (SameBytes(rest, before))
        return T("Move Text");
    constexpr std::uint32_t kWords = ~std::uint32_t { TEXT_BOX };
    std::ranges::copy(before.szInfoText, rest.szInfoText);
    std::ranges::copy(before.szCharacter, rest.szCharacter);
    std::ranges::copy(before.szDialogue, rest.szDialogue);
    rest.nScoreFormat = before.nScoreFormat;
    rest.dwFlags = (before.dwFlags & kWords) | (after.dwFlags & ~kWords);
    if (SameBytes(rest, before))
        return moves ? T("Change Text Settings") : T("Change Text");
    auto look = after;
    std::ranges::copy(before.szFontName, look.szFontName);
    look.nFontSize = before.nFontSize;
    look.crText = before.crText;
    look.crBack = before.crBack;
    look.nOpacity = before.nOpacity;
    look.dwFlags = (after.dwFlags & kWords) | (before.dwFlags & ~kWords);
    return SameBytes(look, before) ? T("Change Look of Text") : T("Change Text Settings");
}

} // namespace

// A step from one content to another.
class Project::Step : public QUndoCommand {
public:
    // typing: steps of one number (0 or more) become one while they follow each other quickly.
    Step(Project& project, const QString& text, Content after, int typing)
        : QUndoCommand(text), m_project(project), m_before(project.m_content),
          m_after(std::move(after)), m_typing(typing) {}

    void undo() override { m_project.Apply(m_before); }
    void redo() override { m_project.Apply(m_after); }
    int id() const override { return m_typing; }
    bool mergeWith(const QUndoCommand* other) override {
        const auto& next = *static_cast<const Step*>(other);
        if (next.m_when - m_when > kTypingPause || next.text() != text())
            return false;
        m_after = next.m_after;
        m_when = next.m_when;
        return true;
    }

private:
    Project& m_project;
    Content m_before;
    Content m_after;
    int m_typing;
    std::chrono::steady_clock::time_point m_when = std::chrono::steady_clock::now();
};

Project::Project(host::Effect* effect) : m_effect(effect), m_shot(Shot::TestCard()) {
    if (m_effect)
        m_content.Selected().settings = m_effect->CopyParams();
    m_document.language = platform::TextContext::Current().Language();
    m_initial = m_content;
    m_initialBlock = m_savedBlock = Block();
    QObject::connect(&m_undo, &QUndoStack::cleanChanged, &m_undo, [this] { onModified(); });
}

void Project::SetShot(std::shared_ptr<const Shot> shot) {
    m_shot = std::move(shot);
    m_current = 0;
    m_lostInput.clear();
    SetModified();
}

void Project::SetModified() {
    m_isOther = true;
    onModified();
}

bool Project::SetCurrent(std::size_t index) {
    m_current = std::min(index, m_shot->Count() - 1);
    const auto here = SettingsHere();
    if (!m_effect || m_content.Selected().cues.empty() || SameBytes(here, LiveParams()))
        return false;
    m_effect->SetParams(here);
    return true;
}

_TEXTPARAM Project::LiveParams() const {
    return m_effect ? m_effect->CopyParams() : m_content.Selected().settings;
}

std::array<std::string, 4> Project::StringsHere() const {
    return Resolve(m_content.strings, Values(m_current));
}

void Project::CommitParams() {
    auto content = m_content;
    const auto live = LiveParams();
    TakeSettings(content.Selected(), Here(), live);
    const auto name = NameOfChange(SettingsHere(), live);
    Push(name, std::move(content), -1);
}

void Project::ChangeStrings(const ShotStrings& strings, int which) {
    auto content = m_content;
    content.strings = strings;
    Push(which < 0 ? (strings.present ? T("Turn Information Strings On")
                                      : T("Turn Information Strings Off"))
                   : T("Change Information String %1").arg(which + 1),
         std::move(content), which);
}

void Project::ChangeSpans(const OnSpans& spans) {
    auto content = m_content;
    content.Selected().on = RangesOf(spans, m_shot->Numbers());
    Push(T("Change Ranges"), std::move(content), -1);
}

void Project::TurnTextOnHere() {
    ChangeSpans(TurnOn(Spans(), { m_current, m_current }));
}

void Project::ChangeTracks(const QString& name, std::vector<host::Track> tracks,
                           std::size_t selected, int series) {
    auto content = m_content;
    content.tracks = std::move(tracks);
    content.selected = std::min(selected, content.tracks.size() - 1);
    Push(name, std::move(content), series);
}

void Project::Select(std::size_t track) {
    auto content = m_content;
    content.selected = std::min(track, content.tracks.size() - 1);
    Apply(content);
}

void Project::DropLiveChanges() {
    if (m_effect && !SameBytes(LiveParams(), SettingsHere()))
        Apply(Content(m_content));
}

void Project::Push(const QString& text, Content content, int typing) {
    if (!SameContent(content, m_content))
        m_undo.push(new Step(*this, text, std::move(content), typing));
}

void Project::Apply(const Content& content) {
    m_preview.reset();
    m_content = content;
    if (m_effect)
        m_effect->SetParams(SettingsHere());
    onChanged();
}

std::vector<std::uint8_t> Project::Block() const {
    if (!m_effect)
        return {};
    const auto block = m_effect->Settings();
    return { block.begin(), block.end() };
}

bool Project::IsModified() const {
    return !m_undo.isClean() || m_isOther || Block() != m_savedBlock;
}

void Project::SetUnmodified() {
    m_isOther = false;
    m_savedBlock = Block();
    m_undo.setClean();
    onModified();
}

host::Document Project::ToDocument() {
    auto document = m_document;
    document.input = m_shot->IsTestCard() ? m_lostInput : m_shot->Input();
    document.currentFrame = Here();
    document.stringsPresent = m_content.strings.present;
    document.strings = m_content.strings.texts;
    if (m_effect)
        document.TakeFrom(*m_effect);
    document.tracks = m_content.tracks;
    return document;
}

host::Document Project::LiveDocument() {
    auto document = ToDocument();
    auto& selected = document.tracks[m_content.selected];
    if (m_preview)
        selected = *m_preview;
    else
        TakeSettings(selected, Here(), LiveParams());
    return document;
}

bool Project::Take(const host::Document& document, std::shared_ptr<const Shot> shot,
                   std::string& why) {
    if (m_effect && !document.GiveTo(*m_effect, why))
        return false;
    m_shot = std::move(shot);
    m_lostInput = m_shot->IsTestCard() ? document.input : std::string();
    m_current = m_shot->IndexOf(document.currentFrame);
    m_undo.clear();
    m_document = document;
    Apply({ document.tracks, 0, { document.stringsPresent, document.strings } });
    SetUnmodified();
    return true;
}

void Project::Reset() {
    if (m_effect)
        std::ranges::copy(m_initialBlock, m_effect->Settings().begin());
    m_shot = Shot::TestCard();
    m_lostInput.clear();
    m_current = 0;
    m_document = {};
    m_document.language = platform::TextContext::Current().Language();
    m_undo.clear();
    Apply(Content(m_initial));
    SetUnmodified();
}

} // namespace studio
