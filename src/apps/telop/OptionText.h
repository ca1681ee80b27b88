// SPDX-License-Identifier: BSD-3-Clause
// The small languages of option values.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <epi/epi.h>

#include "host/frames/FrameRanges.h"

namespace CLI {
class Validator;
} // namespace CLI

namespace telop {

// Checks of numbers; what does not fit is told with what would. The factor is finite and above zero.
CLI::Validator WholeNumber(std::int64_t least, std::int64_t most);
CLI::Validator PositiveFactor();
// One of the words, in any case of letters, which the value becomes; or its place among them, which
// is the value of an enumeration.
CLI::Validator OneOf(std::vector<std::string> words);
CLI::Validator PlaceAmong(std::vector<std::string> words);
// A number of bytes above zero, with a unit if wished.
CLI::Validator ByteSize();

// The others throw a usage error that names the option.

host::FrameRanges ParseRanges(std::string_view option, const std::string& text);
// "X,Y", whole numbers.
tagPOINT ParsePoint(std::string_view option, std::string_view text);
COLORREF ParseColorOption(std::string_view option, std::string_view text);
// Four texts with commas between them, "\," for a comma in one; texts may be empty.
std::array<std::string, 4> SplitStrings(std::string_view option, std::string_view text);

// One name or more with commas between them, without the spaces around each.
std::vector<std::string> SplitNames(std::string_view option, std::string_view text);

// A dialogue with CR as its line break. "@FILE" is the contents of a file in the encoding of texts, or
// in UTF-8 with its mark, whose last line break does not count; "@@" stands for "@" at the start.
// Otherwise "\n" breaks a line and "\\" is a backslash.
std::string DialogueText(std::string_view option, const std::string& text);

// Throws unless the text is UTF-8, which everything that people type here is.
void CheckUtf8(std::string_view option, std::string_view text);

} // namespace telop
