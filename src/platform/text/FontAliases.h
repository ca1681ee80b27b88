// SPDX-License-Identifier: BSD-3-Clause
// Which families stand in for families of other systems: names only, whatever is installed.
#pragma once

#include <span>
#include <string_view>

namespace platform::text {

struct AliasEntry {
    std::span<const char* const> names; // under which documents ask for it, the first for lists
    std::span<const char* const> candidates; // of the same design and script, best first
};
std::span<const AliasEntry> AliasTable();

} // namespace platform::text
