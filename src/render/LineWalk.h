// SPDX-License-Identifier: BSD-3-Clause
// Goes through a text line by line. Knows where characters of several bytes end, so that none of
// their bytes is taken for a break.
#pragma once

#include <cstddef>
#include <string_view>

// Bytes of the character at the start of text, which is not empty. Walks step over the whole of it,
// however many they are: two bytes into a character of three, the next step would swallow the break
// that follows it.
std::size_t CharacterStep(std::string_view text);

// A line ends at CR or CR LF; a lone LF is a character like any other. A text has at least one line,
// and one that ends with a break has an empty line after it.
class LineWalk {
public:
    explicit LineWalk(std::string_view text) : m_rest(text) {}

    // The next line without its break, a part of the text; false after the last.
    bool Next(std::string_view* line);

private:
    std::string_view m_rest;
    bool m_done = false;
};
