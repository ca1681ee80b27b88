// SPDX-License-Identifier: BSD-3-Clause
#include "host/cues/CueCollector.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

#include <epi/epi.h>

#include "host/frames/FrameRanges.h"
#include "host/text/Trimmed.h"

namespace host {

namespace {

// The fields end with a zero byte.
constexpr std::size_t kMaxCharacter = sizeof(_TEXTPARAM::szCharacter) - 1;
constexpr std::size_t kMaxDialogue = sizeof(_TEXTPARAM::szDialogue) - 1;

constexpr std::string_view kBlanks = " \t\n";

} // namespace

void CueCollector::Lose(std::size_t line, std::string why) {
    Tell(line, std::move(why), true);
}

void CueCollector::Note(std::size_t line, std::string why) {
    Tell(line, std::move(why), false);
}

void CueCollector::Tell(std::size_t line, std::string why, bool lost) {
    if (m_file.problems.size() < CueFile::kMaxProblems)
        m_file.problems.push_back({ line, std::move(why), lost });
    else
        ++m_file.moreProblems;
}

void CueCollector::AddPlain(std::size_t line, std::int64_t first, std::int64_t end,
                            std::string_view text, std::string_view character) {
    Add(line, first, end, TokenText::Literal(text), TokenText::Literal(character));
}

void CueCollector::Add(std::size_t line, std::int64_t first, std::int64_t end,
                       std::string_view text, std::string_view character) {
    text = Trimmed(text, kBlanks);
    character = Trimmed(character, kBlanks);
    if (end < first)
        return Lose(line, "the cue ends before it starts");
    if (end == first)
        return Lose(line, "the cue is shorter than a frame");
    if (first < -kFrameMax || end - 1 > kFrameMax)
        return Lose(line, "the cue lies beyond the frames -" + std::to_string(kFrameMax) + " to " +
                              std::to_string(kFrameMax));
    if (text.empty() && character.empty())
        return Lose(line, "the cue has no text");
    if (m_file.cues.size() == CueFile::kMaxCues) {
        if (!std::exchange(m_full, true))
            Lose(line, "this and all further cues are left out: there are more than " +
                           std::to_string(CueFile::kMaxCues));
        return;
    }
    TimedCue cue { first, end - 1, std::string(text), std::string(character), line };
    std::replace(cue.character.begin(), cue.character.end(), '\n', ' ');
    CheckText(line, "text", cue.text, kMaxDialogue);
    CheckText(line, "character", cue.character, kMaxCharacter);
    m_file.cues.push_back(std::move(cue));
}

void CueCollector::CheckText(std::size_t line, std::string_view name, std::string_view text,
                             std::size_t limit) {
    std::string why;
    const auto parsed = TokenText::Parse(text, why, m_options.defines);
    if (!parsed)
        return Note(line, std::string(name) + ": " + why);
    const auto [bytes, complete] = platform::EncodeText(parsed->Shortest());
    const auto& encoding = m_options.documentEncoding.Name();
    if (bytes.find('\0') != std::string::npos)
        Note(line, std::string(name) + ": a zero byte cannot be part of a text");
    else if (bytes.size() > limit)
        Note(line, std::string(name) + ": " + std::to_string(bytes.size()) + " bytes in " +
                       encoding + ", and the limit is " + std::to_string(limit));
    else if (!complete)
        Note(line, std::string(name) + ": " + encoding + " lacks characters of it");
}

CueFile CueCollector::Finish() {
    if (m_file.cues.empty() && m_file.problems.empty())
        Lose(0, "there are no cues");
    std::stable_sort(m_file.cues.begin(), m_file.cues.end(),
                     [](const TimedCue& a, const TimedCue& b) { return a.first < b.first; });
    FindOverlaps();
    std::stable_sort(m_file.problems.begin(), m_file.problems.end(),
                     [](const CueProblem& a, const CueProblem& b) { return a.line < b.line; });
    return std::move(m_file);
}

void CueCollector::FindOverlaps() {
    std::map<std::string_view, const TimedCue*> latest; // the cue of a track that ends last so far
    for (const auto& cue : m_file.cues) {
        const auto track = m_options.trackPerCharacter ? cue.character : std::string_view();
        const auto [place, isNew] = latest.try_emplace(track, &cue);
        if (isNew)
            continue;
        const auto*& before = place->second;
        if (cue.first <= before->last)
            Note(cue.line, "the cue starts with frame " + std::to_string(cue.first) +
                               ", and that of line " + std::to_string(before->line) +
                               " ends with frame " + std::to_string(before->last));
        if (cue.last > before->last)
            before = &cue;
    }
}

} // namespace host
