// SPDX-License-Identifier: BSD-3-Clause
// Font families: numbers for names, names for numbers, and how a name was understood.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// A family's number is good for the life of the process and means nothing outside it. Number 0 is
// the default sans-serif family.
using FontNumber = std::int16_t;

// name is length-prefixed, in the application's text encoding, found without regard to case under
// any name that a family has, or by the table of aliases. An unknown name gives 0 and is reported
// once; an empty one gives 0 without a report. Any thread.
void GetFNum(const std::uint8_t* name, FontNumber* number);

// The family's English name, length-prefixed in the application's text encoding; empty for a number
// that no name was given for. name has room for 256 bytes.
void GetFontName(FontNumber number, std::uint8_t* name);

enum class FontMatch {
    kInstalled, // a family has this name
    kAlias,     // the table of aliases names an installed family of the same design
    kUnknown,   // neither: the default family is used
};

struct FontResolution {
    FontMatch match;
    std::string family; // English name of the family that is used, UTF-8
    std::string file;   // of its regular face
    std::string reason; // why family is not the name asked for; empty for kInstalled
};
// How GetFNum understands a name (UTF-8), without reporting anything.
FontResolution ResolveFontFamily(std::string_view name);

struct FontFamily {
    std::string name;                 // English
    std::vector<std::string> aliases; // its names in other languages
    std::string file;                 // of the regular face
};
// Every installed family that can be drawn, sorted by name without regard to case.
std::vector<FontFamily> InstalledFontFamilies();

struct FontAlias {
    std::string asked;
    std::string family; // the first installed one of its candidates; empty when there is none
};
// The table of aliases as it works on this machine.
std::vector<FontAlias> FontAliases();

} // namespace platform
