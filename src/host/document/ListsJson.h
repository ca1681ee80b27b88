// SPDX-License-Identifier: BSD-3-Clause
// Lists of reusable texts as JSON: one list as an array of its entries, or the two pairs of lists that
// the dialogs use.
//
//   { "info": { "registered": ["PAN"], "history": [], "locked": false },
//     "character": { "registered": [], "history": [], "locked": false } }
//
// Texts are escaped as EscapeBytes says.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <epi/epi.h>

namespace host {

enum class ListOf { kInfo, kCharacter };

inline _POPUPSTRING& PairOf(_TEXT_DIALOG_PARAM& lists, ListOf which) {
    return which == ListOf::kInfo ? lists.infoPopup : lists.characterPopup;
}

// Bytes of entries are in the application's encoding, JSON is UTF-8 and ends with a line break.
std::string EntriesToJson(const std::vector<std::string>& entries);
// An array, or the registered list of that name in an object of both. Nothing, with the reason in why,
// which names the entry.
std::optional<std::vector<std::string>> EntriesFromJson(std::string_view json, ListOf which,
                                                        std::string& why);

std::string ListsToJson(const _TEXT_DIALOG_PARAM& lists);
// Changes the lists that the JSON names. False, with the reason in why, which names the list; lists is
// left alone then.
bool ListsFromJson(std::string_view json, _TEXT_DIALOG_PARAM& lists, std::string& why);

} // namespace host
