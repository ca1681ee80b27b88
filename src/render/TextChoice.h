// SPDX-License-Identifier: BSD-3-Clause
// Which of the texts of a parameter record is shown, and what it says.
#pragma once

#include <string_view>

#include <epi/epi.h>

enum class TextKind { kNone, kScore, kInfo, kCharacter, kDialogue };

// The first text in the order of TextKind whose flag is set.
TextKind FlaggedText(const _TEXTPARAM& param);
// The same among those that are not empty; the score always counts as filled.
TextKind FilledText(const _TEXTPARAM& param);

// The host's information strings, as they stand in its record; null is empty.
struct InfoStrings {
    const char* info1;
    const char* info2;
    const char* info3;
    const char* info4;
};

inline constexpr std::size_t kTextBufferSize = 256;

// The text of a kind: a part of param, or of buffer, in which it is composed.
std::string_view ComposeText(TextKind kind, const _TEXTPARAM& param, const InfoStrings& infos,
                             char (&buffer)[kTextBufferSize]);
