// SPDX-License-Identifier: BSD-3-Clause
// What a person works on: frames, the text in them and where it is on. Kept as one readable file.
//
//   { "format": "telop-document",
//     "version": 1,
//     "frames": "shot.####.png",      picture, pattern or folder: relative to the document's folder
//                                     when it lies in it, else absolute; null when there are none
//     "currentFrame": 1001,
//     "textOn": "1001-1010,1020-",    or "all", or "none"
//     "strings": { "present": true, "texts": ["", "", "12", "{frame}"] },
//     "encoding": "UTF-8",            of the texts in settings and dialogs
//     "settings": { ... },            as host::SettingsToJson makes it, every key
//     "dialogs": { "info": { "registered": ["PAN"], "history": [], "locked": false },
//                  "character": { ... }, "option": 0, "viewState": [0, 0] } }
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

#include <epi/epi.h>

#include "host/Effect.h"
#include "host/frames/FrameRanges.h"
#include "platform/TextEncoding.h"

namespace host {

struct Document {
    static constexpr std::string_view kExtension = ".telop";
    static constexpr std::int64_t kVersion = 1;

    std::string input; // as Sequence::Open takes it; Load gives an absolute one. Empty: no frames
    std::int64_t currentFrame = 0;           // 0 to kFrameMax, not always one that there is
    FrameRanges textOn = FrameRanges::All(); // the frames that get the text
    bool stringsPresent = true;              // false: the shot has no information strings
    // UTF-8 with tokens, which need not be right.
    std::array<std::string, 4> strings { "", "", "", "{frame}" };
    // Of the texts in the two records. Whoever draws them does it in a text context of this encoding.
    platform::TextEncoding encoding = platform::TextEncoding::Utf8();
    _TEXTPARAM settings {};
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

    // The effect's parameters and dialog settings, and the encoding of the thread's text context.
    void TakeFrom(Effect& effect);
    // The reverse, but for the encoding. False when the effect's records are others.
    bool GiveTo(Effect& effect, std::string& why) const;

    // Every byte of the records counts.
    bool operator==(const Document& other) const;
};

} // namespace host
