// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/TextOptions.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "apps/telop/Commands.h"
#include "apps/telop/OptionText.h"
#include "host/document/SettingsJson.h"
#include "host/text/TextField.h"
#include "host/text/TokenText.h"

namespace telop {

namespace {

// Declaring --------------------------------------------------------------------------------------

void AddWords(CLI::App& command, TextOptions& text) {
    OptionGroup group(command, "Text (one of the first four; without any, that of the settings)");
    auto* info = group.Add("--info", text.info, "TEXT", "A direction, one line");
    auto* character = group.Add("--character", text.character, "NAME", "A character's name");
    auto* dialogue =
        group.Add("--dialogue", text.dialogue, "TEXT|@FILE",
                  "Lines of dialogue, \\n between them, or @FILE to read them from a file");
    auto* score = group
                      .Add("--score", text.score, "0..3",
                           "The score line: 0 C-3-4, 1 3-4, 2 2-3-4, 3 1-2-3-4 of --strings")
                      ->check(WholeNumber(0, 3));
    auto* off = group.Flag("--off", text.off, "The character speaks from off screen");
    group.Flag("--monologue", text.monologue, "The character speaks to itself")->excludes(off);
    info->excludes(character)->excludes(dialogue)->excludes(score);
    character->excludes(dialogue)->excludes(score);
    dialogue->excludes(score);
    group.Add("--apply", text.apply, "RANGES",
              "Frames that get the text; the others are copied as they are");
}

void AddLook(CLI::App& command, TextOptions& text) {
    OptionGroup group(command, "Look");
    group.Add("--font", text.font, "FAMILY", "Font family; 'telop fonts' lists them");
    group.Add("--size", text.size, "POINTS", "Size in points, which are pixels")
        ->check(WholeNumber(1, 32767));
    group.Add("--color", text.color, "COLOR", "Of the text: #RRGGBB, #RGB, r,g,b or a name");
    group.Add("--box", text.box, "COLOR|none", "Color of the box behind the text, or none");
    group
        .Add("--opacity", text.opacity, "0..100", "Of the text, or of the box with it, in per cent")
        ->check(WholeNumber(0, 100));
}

void AddPlace(CLI::App& command, TextOptions& text) {
    OptionGroup group(command, "Place");
    auto* at = group.Add("--at", text.position, "X,Y", "Top left of the text in frame pixels");
    group
        .Add(
            "--anchor", text.anchor, "PLACE",
            "top-left, top, top-right, left, centre, right, bottom-left, bottom or bottom-right of "
            "the frame, or of an area: bottom@title; areas are action (93 %), title (90 %), "
            "action90 and title80")
        ->excludes(at);
    group.Add("--margin", text.margin, "X,Y",
              "From the anchor inwards: pixels, or per cent of the frame, such as 0,5%");
    group
        .Add("--reference-height", text.referenceHeight, "PIXELS",
             "Sizes, --at and --margin are those of a frame so high, and fit every other")
        ->check(WholeNumber(1, host::Track::kReferenceHeightMax));
}

// The track --------------------------------------------------------------------------------------

void SetFlags(_TEXTPARAM& params, std::uint32_t mask, std::uint32_t flags) {
    params.dwFlags = (params.dwFlags & ~mask) | flags;
}

host::TokenText ParseTokens(const std::string& option, const std::string& utf8,
                            const host::Defines& defines) {
    CheckUtf8(option, utf8);
    std::string why;
    auto parsed = host::TokenText::Parse(utf8, why, defines);
    if (!parsed)
        FailUsage(option + ": " + why);
    return *std::move(parsed);
}

void CheckIsLine(const std::string& option, const std::string& utf8) {
    if (utf8.find_first_of("\r\n") != std::string::npos)
        FailUsage(option + ": the text has a line break; only --dialogue has several lines");
}

// The track's one text, with its tokens. One that has too many letters for the settings' field only
// while its tokens stand in it is a cue of all frames.
void SetText(host::Track& track, std::span<char> field, const std::string& option,
             const std::string& utf8, const host::Defines& defines) {
    const auto parsed = ParseTokens(option, utf8, defines);
    track.cues.clear();
    std::string why;
    if (host::SetField(field, option, utf8, why))
        return;
    if (!host::SetField(field, option, parsed.Shortest(), why))
        FailUsage(why);
    track.cues = { { -host::kFrameMax, host::kFrameMax, utf8, utf8 } };
}

void SetLine(host::Track& track, std::span<char> field, const std::string& option,
             const std::string& utf8, const host::Defines& defines) {
    CheckIsLine(option, utf8);
    SetText(track, field, option, utf8, defines);
}

void SetKind(host::Track& track, const TextOptions& options, const host::Defines& defines) {
    auto& params = track.settings;
    if (options.score) {
        SetFlags(params, host::kTextKinds, TEXT_SCORE);
        params.nScoreFormat = *options.score;
        track.cues.clear();
    } else if (options.info) {
        SetFlags(params, host::kTextKinds, TEXT_INFO);
        SetLine(track, params.szInfoText, "--info", *options.info, defines);
    } else if (options.character) {
        SetFlags(params, host::kTextKinds | TEXT_OFFCHARACTER | TEXT_MONOLOGUE, TEXT_CHARACTER);
        SetLine(track, params.szCharacter, "--character", *options.character, defines);
    } else if (options.dialogue) {
        SetFlags(params, host::kTextKinds, TEXT_DIALOGUE);
        SetText(track, params.szDialogue, "--dialogue",
                DialogueText("--dialogue", *options.dialogue), defines);
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

void SetMargins(host::Anchor& anchor, const std::string& text) {
    const auto comma = text.find(',');
    if (comma == std::string::npos || !host::MarginFrom(text.substr(0, comma), anchor.x) ||
        !host::MarginFrom(text.substr(comma + 1), anchor.y))
        FailUsage("--margin: '" + text + "' is not X,Y, such as 20,20 or 0,5%");
}

void SetPlace(host::Track& track, const TextOptions& options) {
    auto& anchor = track.anchor;
    if (options.position) {
        track.settings.ptPos = ParsePoint("--at", *options.position);
        anchor = {};
    }
    if (options.anchor) {
        anchor = {};
        const auto at = options.anchor->find('@');
        const bool hasArea = at != std::string::npos;
        if (!host::PlaceNamed(options.anchor->substr(0, at), anchor.place) ||
            (hasArea && !host::AreaNamed(options.anchor->substr(at + 1), anchor.area)))
            FailUsage("--anchor: '" + *options.anchor +
                      "' is no place, such as bottom, top-left or bottom@title");
    }
    if (options.margin) {
        if (anchor.place == host::AnchorPlace::kNone)
            FailUsage("--margin is the distance from an anchor; give --anchor with it");
        SetMargins(anchor, *options.margin);
    }
    if (options.referenceHeight)
        track.referenceHeight = *options.referenceHeight;
}

// For people, when a document keeps it.
const char* NameOf(const _TEXTPARAM& settings) {
    constexpr std::array kNames { "Score", "Direction", "Character", "Dialogue", "Text" };
    return kNames[static_cast<std::size_t>(host::KindOf(settings))];
}

} // namespace

void AddTextOptions(CLI::App& command, TextOptions& text) {
    AddWords(command, text);
    AddLook(command, text);
    AddPlace(command, text);
}

std::vector<TextOptions> TakeEarlierTexts(std::vector<std::string>& arguments) {
    std::vector<TextOptions> texts;
    std::vector<std::string> others;
    auto begin = arguments.begin();
    for (auto end = begin; (end = std::find(begin, arguments.end(), "--then")) != arguments.end();
         begin = end + 1) {
        CLI::App text;
        text.set_help_flag();
        text.allow_extras();
        AddTextOptions(text, texts.emplace_back());
        text.parse(
            std::vector<std::string>(std::reverse_iterator(end), std::reverse_iterator(begin)));
        std::ranges::copy(text.remaining(), std::back_inserter(others));
    }
    others.insert(others.end(), begin, arguments.end());
    arguments = std::move(others);
    return texts;
}

host::Track MakeTrack(const TextOptions& options, host::Track track, const host::Defines& defines) {
    SetKind(track, options, defines);
    SetLook(track.settings, options);
    SetSuffix(track.settings, options);
    SetPlace(track, options);
    if (options.apply)
        track.on = ParseRanges("--apply", *options.apply);
    if (track.name.empty())
        track.name = NameOf(track.settings);
    return track;
}

void SetStrings(host::Document& document, const std::string& strings) {
    const auto isScore = [](const host::Track& track) {
        return host::KindOf(track.settings) == host::TextKind::kScore;
    };
    if (std::ranges::none_of(document.tracks, isScore))
        FailUsage("--strings are the parts of a score line; give --score 0 to 3 with them");
    document.stringsPresent = true;
    document.strings = SplitStrings("--strings", strings);
    for (std::size_t i = 0; i < document.strings.size(); ++i) {
        const auto option = "--strings, part " + std::to_string(i + 1);
        CheckIsLine(option, document.strings[i]);
        std::array<char, sizeof(_EPIRECORD::szInfo1)> room {};
        std::string why;
        if (!host::SetField(room, option,
                            ParseTokens(option, document.strings[i], document.defines).Shortest(),
                            why))
            FailUsage(why);
    }
}

} // namespace telop
