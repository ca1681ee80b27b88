// SPDX-License-Identifier: BSD-3-Clause
#include "host/jobs/FrameText.h"

#include <algorithm>
#include <utility>

#include "host/text/TextField.h"
#include "platform/TextEncoding.h"

namespace host {

namespace {

constexpr const char* NameOf(TextKind kind) {
    return kind == TextKind::kInfo        ? "direction"
           : kind == TextKind::kCharacter ? "character"
                                          : "dialogue";
}

} // namespace

FrameInfo FrameInfoOf(const ResolvedText& text) {
    FrameInfo info;
    for (std::size_t i = 0; i < info.strings.size(); ++i)
        info.strings[i] = FieldBytes(text.strings[i]);
    return info;
}

std::optional<FrameText> FrameText::Of(const _TEXTPARAM& settings, const Cue* cue,
                                       std::span<const std::string> strings, const Defines& defines,
                                       std::string& why) {
    FrameText text;
    text.m_text.params = settings;
    const bool isSet = KindOf(settings) == TextKind::kScore ? text.SetStrings(strings, defines, why)
                                                            : text.SetOwnText(cue, defines, why);
    return isSet ? std::optional(std::move(text)) : std::nullopt;
}

bool FrameText::SetStrings(std::span<const std::string> strings, const Defines& defines,
                           std::string& why) {
    for (std::size_t i = 0; i < strings.size(); ++i)
        if (!SetText("information string " + std::to_string(i + 1), TextKind::kScore, i, strings[i],
                     defines, why))
            return false;
    return true;
}

bool FrameText::SetOwnText(const Cue* cue, const Defines& defines, std::string& why) {
    const auto kind = KindOf(m_text.params);
    if (kind == TextKind::kNone)
        return true;
    if (cue)
        return SetText(NameOf(kind), kind, 0, WithCarriageReturns(CueText(*cue, kind)), defines,
                       why);
    const auto text = platform::DecodeText(FieldBytes(FieldOf(m_text, kind, 0)));
    // Bytes without a token stay as they are, also those that are no text.
    return text.find_first_of("{}") == std::string::npos ||
           SetText(NameOf(kind), kind, 0, text, defines, why);
}

bool FrameText::SetText(std::string name, TextKind kind, std::size_t string, std::string_view utf8,
                        const Defines& defines, std::string& why) {
    auto parsed = TokenText::Parse(utf8, why, defines);
    if (!parsed) {
        why = name + ": " + why;
        return false;
    }
    // What is too long whatever the frame is found now and not a thousand times later.
    if (!SetField(FieldOf(m_text, kind, string), name, parsed->Shortest(), why))
        return false;
    if (parsed->HasTokens())
        m_parts.push_back({ std::move(name), kind, string, *std::move(parsed) });
    return true;
}

std::span<char> FrameText::FieldOf(ResolvedText& text, TextKind kind, std::size_t string) {
    switch (kind) {
    case TextKind::kInfo:
        return text.params.szInfoText;
    case TextKind::kCharacter:
        return text.params.szCharacter;
    case TextKind::kDialogue:
        return text.params.szDialogue;
    default:
        return text.strings[string];
    }
}

bool FrameText::Uses(Token token) const {
    return std::any_of(m_parts.begin(), m_parts.end(),
                       [token](const Part& part) { return part.text.Uses(token); });
}

bool FrameText::Resolve(const TokenValues& values, ResolvedText& text, std::string& why) const {
    text = m_text;
    text.counts = !m_parts.empty() || KindOf(m_text.params) == TextKind::kScore ? 1 : 0;
    return std::all_of(m_parts.begin(), m_parts.end(), [&](const Part& part) {
        return SetField(FieldOf(text, part.kind, part.string), part.name, part.text.Resolve(values),
                        why);
    });
}

} // namespace host
