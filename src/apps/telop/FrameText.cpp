// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/FrameText.h"

#include <algorithm>

#include "apps/telop/CommandError.h"
#include "apps/telop/OptionText.h"
#include "host/text/TextField.h"
#include "host/text/TextSettings.h"

namespace telop {

namespace {

// Without --strings the score line says which frame it is, so that it is of use by itself.
constexpr const char* kDefaultStrings = ",,,{frame}";

void SetFlags(_TEXTPARAM& params, std::uint32_t mask, std::uint32_t flags) {
    params.dwFlags = (params.dwFlags & ~mask) | flags;
}

} // namespace

FrameText::FrameText(const TextOptions& options, const _TEXTPARAM& settings) {
    m_text.params = settings;
    SetKind(options);
    SetLook(options);
    SetSuffix(options);
    SetStrings(options);
}

void FrameText::SetKind(const TextOptions& options) {
    auto& params = m_text.params;
    if (options.score) {
        SetFlags(params, host::kTextKinds, TEXT_SCORE);
        params.nScoreFormat = *options.score;
    } else if (options.info) {
        SetFlags(params, host::kTextKinds, TEXT_INFO);
        AddLine("--info", Field::kInfo, *options.info);
    } else if (options.character) {
        SetFlags(params, host::kTextKinds | TEXT_OFFCHARACTER | TEXT_MONOLOGUE, TEXT_CHARACTER);
        AddLine("--character", Field::kCharacter, *options.character);
    } else if (options.dialogue) {
        SetFlags(params, host::kTextKinds, TEXT_DIALOGUE);
        AddText("--dialogue", Field::kDialogue, DialogueText("--dialogue", *options.dialogue));
    }
}

void FrameText::SetLook(const TextOptions& options) {
    auto& params = m_text.params;
    if (options.font) {
        CheckUtf8("--font", *options.font);
        std::string why;
        if (!host::SetField(params.szFontName, "--font", *options.font, why))
            FailUsage(why);
    }
    if (options.size)
        params.nFontSize = *options.size;
    if (options.opacity)
        params.nOpacity = *options.opacity;
    if (options.color)
        params.crText = ParseColorOption("--color", *options.color);
    if (options.position)
        params.ptPos = ParsePoint("--at", *options.position);
    if (options.box && *options.box == "none") {
        SetFlags(params, TEXT_BOX, 0);
    } else if (options.box) {
        params.crBack = ParseColorOption("--box", *options.box);
        SetFlags(params, TEXT_BOX, TEXT_BOX);
    }
}

void FrameText::SetSuffix(const TextOptions& options) {
    if (!options.off && !options.monologue)
        return;
    auto const kinds = m_text.params.dwFlags & host::kTextKinds;
    if (kinds != TEXT_CHARACTER)
        FailUsage(std::string(options.off ? "--off" : "--monologue") +
                  " says how a character speaks; give the name with --character");
    SetFlags(m_text.params, TEXT_OFFCHARACTER | TEXT_MONOLOGUE,
             options.off ? TEXT_OFFCHARACTER : TEXT_MONOLOGUE);
}

void FrameText::SetStrings(const TextOptions& options) {
    if (!(m_text.params.dwFlags & TEXT_SCORE)) {
        if (options.strings)
            FailUsage("--strings are the parts of a score line; give --score 0 to 3 with them");
        return;
    }
    auto const strings = SplitStrings("--strings", options.strings.value_or(kDefaultStrings));
    for (std::size_t i = 0; i < strings.size(); ++i)
        AddLine("--strings, part " + std::to_string(i + 1),
                static_cast<Field>(static_cast<std::size_t>(Field::kString1) + i), strings[i]);
}

void FrameText::AddLine(const std::string& option, Field field, std::string_view utf8) {
    if (utf8.find_first_of("\r\n") != std::string_view::npos)
        FailUsage(option + ": the text has a line break; only --dialogue has several lines");
    AddText(option, field, utf8);
}

void FrameText::AddText(const std::string& option, Field field, std::string_view utf8) {
    CheckUtf8(option, utf8);
    std::string why;
    auto parsed = host::TokenText::Parse(utf8, why);
    if (!parsed)
        FailUsage(option + ": " + why);
    // What is too long whatever the frame is found now and not a thousand times later.
    if (!host::SetField(FieldOf(m_text, field), option, parsed->Shortest(), why))
        FailUsage(why);
    if (parsed->HasTokens())
        m_parts.push_back({ option, field, *std::move(parsed) });
}

std::span<char> FrameText::FieldOf(ResolvedText& text, Field field) {
    switch (field) {
    case Field::kInfo:
        return text.params.szInfoText;
    case Field::kCharacter:
        return text.params.szCharacter;
    case Field::kDialogue:
        return text.params.szDialogue;
    default:
        return text
            .strings[static_cast<std::size_t>(field) - static_cast<std::size_t>(Field::kString1)];
    }
}

std::string FrameText::OptionWithTokens() const {
    for (auto const& part : m_parts) {
        if (part.field < Field::kString1)
            return part.option;
    }
    return {};
}

bool FrameText::NeedsFile() const {
    return std::any_of(m_parts.begin(), m_parts.end(),
                       [](const Part& part) { return part.text.NeedsFile(); });
}

bool FrameText::Resolve(const host::TokenValues& values, ResolvedText& text,
                        std::string& why) const {
    text = m_text;
    return std::all_of(m_parts.begin(), m_parts.end(), [&](const Part& part) {
        return host::SetField(FieldOf(text, part.field), part.option, part.text.Resolve(values),
                              why);
    });
}

} // namespace telop
