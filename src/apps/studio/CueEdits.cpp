// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/CueEdits.h"

#include <algorithm>

#include "host/text/TextField.h"
#include "platform/TextEncoding.h"

namespace studio {

namespace {

// Of the text that the settings draw; empty where it has no words.
std::span<char> FieldOf(_TEXTPARAM& settings) {
    switch (host::KindOf(settings)) {
    case host::TextKind::kInfo:
        return settings.szInfoText;
    case host::TextKind::kCharacter:
        return settings.szCharacter;
    case host::TextKind::kDialogue:
        return settings.szDialogue;
    default:
        return {};
    }
}

// The record's lines end with CR or CR LF.
std::string WithLineFeeds(const std::string& text) {
    std::string lines;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != '\n' || i == 0 || text[i - 1] != '\r')
            lines += text[i] == '\r' ? '\n' : text[i];
    return lines;
}

} // namespace

FrameSpan RoomOf(const Cues& cues, std::size_t cue, FrameSpan shot) {
    const auto& own = cues[cue];
    FrameSpan room { std::min(shot.first, own.first), std::max(shot.last, own.last) };
    for (std::size_t i = 0; i < cues.size(); ++i)
        if (i < cue)
            room.first = std::max(room.first, std::min(cues[i].last + 1, own.first));
        else if (i > cue)
            room.last = std::min(room.last, std::max(cues[i].first - 1, own.last));
    return room;
}

std::optional<FrameSpan> FreeAround(const Cues& cues, std::int64_t frame, FrameSpan shot) {
    auto room = shot;
    for (const auto& cue : cues) {
        if (cue.Contains(frame))
            return std::nullopt;
        if (cue.last < frame)
            room.first = std::max(room.first, cue.last + 1);
        else
            room.last = std::min(room.last, cue.first - 1);
    }
    return room;
}

FrameSpan Dragged(FrameSpan cue, CuePart part, std::int64_t from, std::int64_t to, FrameSpan room) {
    if (part == CuePart::kStart)
        return { std::clamp(to, room.first, cue.last), cue.last };
    if (part == CuePart::kEnd)
        return { cue.first, std::clamp(to, cue.first, room.last) };
    const auto by = std::clamp(to - from, room.first - cue.first, room.last - cue.last);
    return { cue.first + by, cue.last + by };
}

bool SplitCueAt(host::Track& track, std::int64_t frame) {
    const auto* const found = track.CueAt(frame);
    if (!found || found->first == frame)
        return false;
    const auto cue = track.cues.begin() + (found - track.cues.data());
    auto second = *cue;
    cue->last = frame - 1;
    second.first = frame;
    track.cues.insert(cue + 1, std::move(second));
    track.SortCues();
    return true;
}

bool HasWords(const host::Track& track) {
    const auto kind = host::KindOf(track.settings);
    return kind != host::TextKind::kScore && kind != host::TextKind::kNone;
}

_TEXTPARAM SettingsAt(const host::Track& track, std::int64_t frame) {
    auto settings = track.settings;
    const auto* const cue = track.CueAt(frame);
    const auto field = FieldOf(settings);
    std::string why;
    if (cue && !field.empty())
        host::SetField(field, {},
                       host::WithCarriageReturns(host::CueText(*cue, host::KindOf(settings))), why);
    return settings;
}

void TakeSettings(host::Track& track, std::int64_t frame, const _TEXTPARAM& settings) {
    auto before = SettingsAt(track, frame);
    auto own = track.settings;
    track.settings = settings;
    const auto* const found = track.CueAt(frame);
    if (!found || host::KindOf(settings) != host::KindOf(own) || !HasWords(track))
        return;
    const auto words = host::FieldBytes(FieldOf(track.settings));
    if (words != host::FieldBytes(FieldOf(before))) {
        auto& cue = track.cues[static_cast<std::size_t>(found - track.cues.data())];
        const bool isName = host::KindOf(own) == host::TextKind::kCharacter;
        (isName ? cue.character : cue.text) = WithLineFeeds(platform::DecodeText(words));
    }
    std::ranges::copy(FieldOf(own), FieldOf(track.settings).begin());
}

bool MakeCuesOfText(host::Track& track, const OnSpans& spans,
                    std::span<const std::int64_t> numbers) {
    const auto words =
        WithLineFeeds(platform::DecodeText(host::FieldBytes(FieldOf(track.settings))));
    if (words.empty())
        return false;
    const bool isName = host::KindOf(track.settings) == host::TextKind::kCharacter;
    host::Cue cue;
    (isName ? cue.character : cue.text) = words;
    for (const auto& span : spans) {
        cue.first = numbers[span.first];
        cue.last = numbers[span.last];
        track.cues.push_back(cue);
    }
    track.on = host::FrameRanges::All();
    return true;
}

bool MakeTextOfCues(host::Track& track, std::string& why) {
    const auto kind = host::KindOf(track.settings);
    const auto& words = host::CueText(track.cues.front(), kind);
    if (std::ranges::any_of(track.cues,
                            [&](auto& cue) { return host::CueText(cue, kind) != words; }))
        return false;
    const auto field = FieldOf(track.settings);
    if (!field.empty() && !host::SetField(field, track.name, host::WithCarriageReturns(words), why))
        return false;
    std::string ranges;
    for (const auto& cue : track.cues)
        ranges += (ranges.empty() ? "" : ",") + std::to_string(cue.first) + "-" +
                  std::to_string(cue.last);
    track.on = host::FrameRanges::Parse(ranges, why).value_or(track.on);
    track.cues.clear();
    return true;
}

} // namespace studio
