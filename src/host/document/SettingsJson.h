// SPDX-License-Identifier: BSD-3-Clause
// The parameters of one text as JSON, for people to read and edit. Every field is kept; bytes after
// the end of a text are not.
//
//   { "kind": "score",            score, info, character, dialogue; a list when not exactly one
//     "position": [54, 41],       frame pixels, x and y
//     "font": "DejaVu Sans",
//     "size": 36,                 points
//     "color": "#FFFFFF",         a number, as the record has it, when bits 24-31 are used
//     "box": true,                whether the text stands on a box
//     "boxColor": "#000000",
//     "opacity": 50,              per cent
//     "scoreFormat": 0,           0 to 3
//     "info": "", "character": "", "dialogue": "two\nlines",
//     "off": false, "monologue": false,
//     "otherFlags": 0 }           only when there are some
//
// Texts are escaped as EscapeBytes says, but for the CR in them, which is "\n".
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <epi/epi.h>

namespace host {

// The bits of dwFlags that choose the text.
inline constexpr std::uint32_t kTextKinds = TEXT_INFO | TEXT_CHARACTER | TEXT_DIALOGUE | TEXT_SCORE;

// Indented, ended by a line break.
std::string SettingsToJson(const _TEXTPARAM& param);

// base with the fields that json names in their place. Nothing, with a reason that names the key in
// why, when json is none, a key is unknown or given twice, or a value has the wrong type, is out of
// its range or does not fit.
std::optional<_TEXTPARAM> SettingsFromJson(std::string_view json, const _TEXTPARAM& base,
                                           std::string& why);

} // namespace host
