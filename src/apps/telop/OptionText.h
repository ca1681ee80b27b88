// SPDX-License-Identifier: BSD-3-Clause
// The small languages of option values.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include <epi/epi.h>

#include "host/frames/FrameRanges.h"

namespace CLI {
class Validator;
} // namespace CLI

namespace telop {

// Checks of numbers; what does not fit is told with what would. The factor is finite and above zero.
CLI::Validator WholeNumber(std::int64_t least, std::int64_t most);
CLI::Validator PositiveFactor();

// The others throw a usage error that names the option.

host::FrameRanges ParseRanges(std::string_view option, const std::string& text);
// "X,Y", whole numbers.
tagPOINT ParsePoint(std::string_view option, std::string_view text);
COLORREF ParseColorOption(std::string_view option, std::string_view text);
// Four texts with commas between them, "\," for a comma in one; texts may be empty.
std::array<std::string, 4> SplitStrings(std::string_view option, std::string_view text);

// A dialogue with CR as its line break. "@FILE" is the contents of a UTF-8 file, whose last line
// break does not count; "@@" stands for "@" at the start. Otherwise "\n" breaks a line and "\\" is a
// backslash.
std::string DialogueText(std::string_view option, const std::string& text);

// Throws unless the text is UTF-8, which everything that people type here is.
void CheckUtf8(std::string_view option, std::string_view text);

} // namespace telop
