// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/Nearest.h"

#include <vector>

#include "host/text/NearestName.h"
#include "platform/Fonts.h"

namespace telop {

std::string Suggestion(std::string_view typed, std::span<const std::string> known) {
    const std::vector<std::string_view> names(known.begin(), known.end());
    const auto nearest = host::NearestName(typed, names);
    return nearest.empty() ? "" : "; did you mean '" + std::string(nearest) + "'?";
}

std::string SuggestedFamily(std::string_view typed) {
    std::vector<std::string> names;
    for (const auto& family : platform::InstalledFontFamilies()) {
        names.push_back(family.name);
        names.insert(names.end(), family.aliases.begin(), family.aliases.end());
    }
    return Suggestion(typed, names);
}

} // namespace telop
