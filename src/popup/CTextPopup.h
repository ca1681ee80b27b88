// SPDX-License-Identifier: BSD-3-Clause
// What the effect does with lists of reusable texts: a list goes to a file and comes back, and a text
// that was used enters a history. All static; no state.
//
// A list has 20 entries and ends at its first empty one. Its file is plain text without a header or a
// byte-order mark, in the application's text encoding, each entry followed by a CR.
#pragma once

#include <cstddef>
#include <cstdint>

#include <epi/epi.h>

inline constexpr std::size_t kPopupEntries = 20; // in each list

class CTextPopup {
public:
    // Fills the list from the file: lines end with CR, empty ones are skipped, a line is cut to 63
    // bytes and the lines after the twentieth are left alone. An LF is a character like any other. 1,
    // or 0 with an empty list when the file cannot be opened or read as a whole. Throws the number 0
    // (std::int32_t) for an empty file and for one that memory has no room for.
    static std::int32_t OpenPopupString(_EPIRECORD* record, const FSSpec* file, char (*list)[64]);
    // Writes the list to the file. 1, or 0 when the file cannot be created, or a write or the flush
    // fails: a list that is not whole in its file was not saved, and a user who is told otherwise
    // loses it. It is the host that keeps what the file held before.
    static std::int32_t SavePopupString(_EPIRECORD* record, const FSSpec* file, char (*list)[64]);
    // How many entries stand before the list's end.
    static std::int32_t CountEntries(const char (&list)[kPopupEntries][64]);
    // Puts the text at the history's end, where the oldest text makes room for it, unless the
    // history or the registered list (may be null) has it already. A text that is longer than an
    // entry is cut at its last whole character.
    static void InsertPopupString(const char* text, char (*history)[64], char (*registered)[64]);
};
