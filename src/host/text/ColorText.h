// SPDX-License-Identifier: BSD-3-Clause
// Colours as people write them, and the effect's colour word.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <epi/epi.h>

namespace host {

// "#RRGGBB", "#RGB", "r,g,b" with 0 to 255 each, or a name such as "white"; letters in any case,
// spaces around it ignored. Nothing, with the reason in why, for anything else.
std::optional<COLORREF> ParseColor(std::string_view text, std::string& why);

// "#RRGGBB"; bits 24-31 of the word are not shown.
std::string FormatColor(COLORREF color);

} // namespace host
