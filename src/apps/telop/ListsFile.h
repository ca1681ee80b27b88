// SPDX-License-Identifier: BSD-3-Clause
// Files of reusable texts: their lines and their entries. Knows what the list editor reads of a file,
// and what it would lose.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace telop {

inline constexpr std::size_t kListEntries = 20;
inline constexpr std::size_t kEntryBytes = 63;

enum class LineEnds { kCr, kCrLf, kLf }; // the list editor's is kCr

// The lines of a text in the application's encoding.
struct ListLines {
    struct Line {
        std::size_t number; // from 1, empty lines counted
        std::string_view bytes;
    };
    std::vector<Line> first;  // the first twenty that are not empty; parts of the text
    std::size_t withText = 0; // lines that are not empty
    std::size_t withoutText = 0;
};
// As the list editor splits a file: at CR alone; an LF is a character like any other.
ListLines SplitAtReturns(std::string_view text);
// As people mean a text: at CR, CR LF and LF.
ListLines SplitAtAnyEnd(std::string_view text);

enum class Reading {
    kAsEditor, // what the list editor has after loading the file
    kAsMeant,  // with any line ends, and without a byte-order mark
};
// At most twenty entries of at most 63 bytes. What is lost or taken amiss goes to warnings, each a
// sentence.
std::vector<std::string> ReadEntries(std::string_view text, std::vector<std::string>& warnings,
                                     Reading reading = Reading::kAsEditor);

// The file's bytes. Throws when an entry would not come back from them as it is; bytes of entries
// are in the application's encoding.
std::string WriteEntries(const std::vector<std::string>& entries, LineEnds ends);

} // namespace telop
