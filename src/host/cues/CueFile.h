// SPDX-License-Identifier: BSD-3-Clause
// Files of dialogue and subtitles as other programs make them, read into frames.
//
// SubRip, WebVTT and ASS: the words, and for WebVTT and ASS who speaks them. Styles, tags and drawings
// are left out, and braces are only braces.
//
// Tables, of spreadsheets or hand-made: a first row that names columns, in any order and case, and a row
// for each cue. There is "start"; "end" or "duration", of which a row fills in one; "text"; and
// "character" where there are any. Other columns are passed over. CueTiming.h tells what times are.
// Tokens work in texts and characters.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/cues/CueTiming.h"
#include "host/cues/TimedCue.h"
#include "host/text/TokenText.h"
#include "platform/TextEncoding.h"

namespace host {

enum class CueKind { kSubRip, kWebVtt, kAss, kTable };

struct CueOptions {
    CueTiming timing {};
    // The file's. Nothing: what its byte order mark says, or else UTF-8.
    std::optional<platform::TextEncoding> encoding {};
    // That of the document, in which texts have to fit in the effect's fields.
    platform::TextEncoding documentEncoding = platform::TextEncoding::Utf8();
    bool trackPerCharacter = false; // cues of two characters may overlap
    Defines defines {};
};

struct CueFile {
    static constexpr std::size_t kMaxBytes = std::size_t { 16 } << 20;
    static constexpr std::size_t kMaxCues = 100'000;
    static constexpr std::size_t kMaxProblems = 1000;

    std::vector<TimedCue> cues;       // by their first frames
    std::vector<CueProblem> problems; // by their lines
    std::size_t moreProblems = 0;     // that are not among them
};

// By the extension or, where that says nothing, by the text; nothing when neither tells.
std::optional<CueKind> CueKindOf(std::string_view fileName, std::string_view utf8);

// Nothing, with the reason in why, when the bytes are no text or are of no kind. All else that is wrong
// is told in problems: what cannot be read and is left out, and what is read but will not do:
// overlaps, texts too long for the effect's fields, unknown tokens. Time and memory are linear in the
// bytes, but for sorting the cues.
std::optional<CueFile> ReadCues(std::string_view bytes, std::string_view fileName,
                                const CueOptions& options, std::string& why);

} // namespace host
