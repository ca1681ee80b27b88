// SPDX-License-Identifier: BSD-3-Clause
// What a person works on: frames and the texts in them. Kept as one readable file.
//
//   { "format": "telop-document",
//     "version": 2,
//     "frames": "shot.####.png",      picture, pattern or folder: relative to the document's folder
//                                     when it lies in it, else absolute; null when there are none
//     "currentFrame": 1001,
//     "strings": { "present": true, "texts": ["", "", "12", "{frame}"] },
//     "encoding": "UTF-8",            of the texts in settings and dialogs
//     "language": "ja",               of the words that the effect adds; left out: the environment's
//     "fallbacks": ["Noto Sans"],     font families to look in first for what a text's own lacks
//     "rate": "29.97",                frames a second, of {tc} and {seconds}; left out: 24
//     "timecode": "01:00:00;00",      of the first frame; left out: 0. A semicolon: drop-frame
//     "defines": { "shot": "010" },   tokens of its own
//     "tracks": [                     1 to 1,000, drawn from first to last
//       { "name": "Dialogue",
//         "on": "1001-1010,1020-",    or "all", or "none"
//         "shown": true, "locked": false,
//         "anchor": { "place": "bottom", "area": "title", "margin": ["0", "5%"] },     or null
//         "referenceHeight": 1080,    sizes are those in a frame so high; 0: in every frame
//         "settings": { ... },        as host::SettingsToJson makes it, every key
//         "cues": [ { "frames": [1001, 1010], "text": "two\nlines", "character": "Hanako" } ] } ],
//     "dialogs": { "info": { "registered": ["PAN"], "history": [], "locked": false },
//                  "character": { ... }, "option": 0, "viewState": [0, 0] } }
//
// Version 1 had "textOn" and "settings" of one text in the place of "tracks".
//
// The two records come back with every byte: where the readable keys do not say it all, "settings" has
// an "archive" and "dialogs" a "block" besides, the record's bytes in base64, integers big-endian. A
// readable key that a person changed counts more than they do.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <epi/epi.h>

#include "host/Effect.h"
#include "host/document/Track.h"
#include "host/text/TokenText.h"
#include "platform/TextEncoding.h"

namespace host {

struct Document {
    static constexpr std::string_view kExtension = ".telop";
    static constexpr std::int64_t kVersion = 2;

    std::string input; // as Sequence::Open takes it; Load gives an absolute one. Empty: no frames
    std::int64_t currentFrame = 0; // not always one that there is
    bool stringsPresent = true;    // false: the shot has no information strings
    // UTF-8 with tokens, which need not be right.
    std::array<std::string, 4> strings { "", "", "", "{frame}" };
    // Of the texts in the two records. Whoever draws them does it in a text context of this encoding,
    // language and fallbacks.
    platform::TextEncoding encoding = platform::TextEncoding::Utf8();
    std::string language;               // empty: the environment's
    std::vector<std::string> fallbacks; // names of font families, UTF-8
    ShotClock clock;
    Defines defines;                 // each can be defined
    std::vector<Track> tracks { 1 }; // never empty
    _TEXT_DIALOG_PARAM dialogs {};

    // Nothing, with the reason in why, which names the file, the key and what is wrong: the file is
    // no document, a newer program wrote it, a key is missing, unknown, given twice or has a value
    // of the wrong type or range. The frames themselves are not looked for.
    static std::optional<Document> Load(const std::filesystem::path& file, std::string& why);
    // The same from memory; folder is the document's, absolute. Reasons name no file.
    static std::optional<Document> FromJson(std::string_view json,
                                            const std::filesystem::path& folder, std::string& why);

    // Written beside its place and renamed: a file that is there stays whole until the new one is.
    bool Save(const std::filesystem::path& file, std::string& why) const;
    // UTF-8, indented, ended by a line break. folder: where the document will lie, absolute.
    std::string ToJson(const std::filesystem::path& folder) const;

    // The effect's parameters for the settings of a single track, its dialog settings, and the
    // encoding of the thread's text context.
    void TakeFrom(Effect& effect);
    // The reverse, but for the encoding: the first track's. False when the effect's records are others.
    bool GiveTo(Effect& effect, std::string& why) const;

    // Every byte of the records counts.
    bool operator==(const Document& other) const;
};

} // namespace host
