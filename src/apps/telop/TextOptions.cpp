// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/TextOptions.h"

#include "apps/telop/CommandError.h"
#include "apps/telop/OptionText.h"
#include "host/document/SettingsJson.h"
#include "host/text/TextField.h"

namespace telop {

namespace {

using Field = host::FrameText::Field;

// Without --strings the score line says which frame it is, so that it is of use by itself.
constexpr const char* kDefaultStrings = ",,,{frame}";

void SetFlags(_TEXTPARAM& params, std::uint32_t mask, std::uint32_t flags) {
    params.dwFlags = (params.dwFlags & ~mask) | flags;
}

void AddText(host::FrameText& text, const std::string& option, Field field, std::string_view utf8) {
    CheckUtf8(option, utf8);
    std::string why;
    if (!text.SetText(field, option, utf8, why))
        FailUsage(why);
}

void AddLine(host::FrameText& text, const std::string& option, Field field, std::string_view utf8) {
    if (utf8.find_first_of("\r\n") != std::string_view::npos)
        FailUsage(option + ": the text has a line break; only --dialogue has several lines");
    AddText(text, option, field, utf8);
}

void SetKind(host::FrameText& text, const TextOptions& options) {
    auto& params = text.Params();
    if (options.score) {
        SetFlags(params, host::kTextKinds, TEXT_SCORE);
        params.nScoreFormat = *options.score;
    } else if (options.info) {
        SetFlags(params, host::kTextKinds, TEXT_INFO);
        AddLine(text, "--info", Field::kInfo, *options.info);
    } else if (options.character) {
        SetFlags(params, host::kTextKinds | TEXT_OFFCHARACTER | TEXT_MONOLOGUE, TEXT_CHARACTER);
        AddLine(text, "--character", Field::kCharacter, *options.character);
    } else if (options.dialogue) {
        SetFlags(params, host::kTextKinds, TEXT_DIALOGUE);
        AddText(text, "--dialogue", Field::kDialogue,
                DialogueText("--dialogue", *options.dialogue));
    }
}

void SetLook(_TEXTPARAM& params, const TextOptions& options) {
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

void SetSuffix(_TEXTPARAM& params, const TextOptions& options) {
    if (!options.off && !options.monologue)
        return;
    if ((params.dwFlags & host::kTextKinds) != TEXT_CHARACTER)
        FailUsage(std::string(options.off ? "--off" : "--monologue") +
                  " says how a character speaks; give the name with --character");
    SetFlags(params, TEXT_OFFCHARACTER | TEXT_MONOLOGUE,
             options.off ? TEXT_OFFCHARACTER : TEXT_MONOLOGUE);
}

void SetStrings(host::FrameText& text, const TextOptions& options, const host::Document* document) {
    if (!(text.Params().dwFlags & TEXT_SCORE)) {
        if (options.strings)
            FailUsage("--strings are the parts of a score line; give --score 0 to 3 with them");
        return;
    }
    if (!options.strings && document) {
        std::string why;
        if (!text.SetStrings(*document, why))
            throw CommandError(ExitCode::kBadInput, "--document: " + why);
        return;
    }
    const auto strings = SplitStrings("--strings", options.strings.value_or(kDefaultStrings));
    for (std::size_t i = 0; i < strings.size(); ++i)
        AddLine(text, "--strings, part " + std::to_string(i + 1),
                static_cast<Field>(static_cast<std::size_t>(Field::kString1) + i), strings[i]);
}

} // namespace

host::FrameText MakeFrameText(const TextOptions& options, const _TEXTPARAM& settings,
                              const host::Document* document) {
    host::FrameText text(settings);
    SetKind(text, options);
    SetLook(text.Params(), options);
    SetSuffix(text.Params(), options);
    SetStrings(text, options, document);
    return text;
}

} // namespace telop
