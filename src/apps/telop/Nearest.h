// SPDX-License-Identifier: BSD-3-Clause
// What somebody meant who mistyped a name.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace telop {

// "; did you mean '--info'?" for the known name with the fewest letters to put in, take away, replace
// or swap with their neighbour, in any case of letters; empty when none is close.
std::string Suggestion(std::string_view typed, std::span<const std::string> known);

// The same among the font families of this machine, whatever names they have. Any thread.
std::string SuggestedFamily(std::string_view typed);

} // namespace telop
