// SPDX-License-Identifier: BSD-3-Clause
// Which of the texts of a parameter record is shown, and what it says. A choice is the flag of one
// text; of several the first in the order score, info, character, dialogue is chosen. 0 is none.
#pragma once

#include <cstdint>
#include <string_view>

#include <epi/epi.h>

// The first text whose flag is set.
std::uint32_t FlaggedText(const _TEXTPARAM& param);
// The same among those that are not empty; the score always counts as filled.
std::uint32_t FilledText(const _TEXTPARAM& param);

inline constexpr std::size_t kTextBufferSize = 256;

// The chosen text: a part of param, or of buffer, in which it is composed. infos are the host's four
// information strings; null is empty.
std::string_view ComposeText(std::uint32_t choice, const _TEXTPARAM& param,
                             const char* const (&infos)[4], char (&buffer)[kTextBufferSize]);
