// SPDX-License-Identifier: BSD-3-Clause
// What a mistyped name was meant to be.
#pragma once

#include <span>
#include <string_view>

namespace host {

// The known name that differs the least from the one that was typed, where that is little enough to be
// a slip: a letter too many or too few, another one, or two that have changed places, about one in
// three; upper and lower case are alike. The first of several, one of known; empty when none is near.
std::string_view NearestName(std::string_view typed, std::span<const std::string_view> known);

} // namespace host
