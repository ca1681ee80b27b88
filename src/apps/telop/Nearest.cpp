// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/Nearest.h"

#include <algorithm>
#include <array>
#include <vector>

#include "platform/Fonts.h"

namespace telop {

namespace {

constexpr std::size_t kMaxTyped = 100; // bytes; nobody means a longer name

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

std::size_t Distance(std::string_view a, std::string_view b) {
    // Of the starts of a, as far as the row tells, and of all starts of b.
    std::array<std::vector<std::size_t>, 3> rows;
    rows.fill(std::vector<std::size_t>(b.size() + 1));
    auto& [before, above, row] = rows;
    for (std::size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::swap(before, above);
        std::swap(above, row);
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const bool same = Lower(a[i - 1]) == Lower(b[j - 1]);
            row[j] = std::min({ above[j] + 1, row[j - 1] + 1, above[j - 1] + (same ? 0 : 1) });
            const bool swapped = i > 1 && j > 1 && Lower(a[i - 1]) == Lower(b[j - 2]) &&
                                 Lower(a[i - 2]) == Lower(b[j - 1]);
            if (swapped)
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
    }
    return row[b.size()];
}

} // namespace

std::string Suggestion(std::string_view typed, std::span<const std::string> known) {
    if (typed.empty() || typed.size() > kMaxTyped)
        return {};
    const std::string* nearest = nullptr;
    // A third of a name may be wrong, and is still that name. An option's hyphens are not counted.
    const auto letters = typed.size() - static_cast<std::size_t>(std::ranges::count(typed, '-'));
    auto least = std::max<std::size_t>((letters + 1) / 3, 1) + 1;
    for (const auto& name : known) {
        const auto distance = Distance(typed, name);
        if (distance >= least)
            continue;
        least = distance;
        nearest = &name;
    }
    return nearest ? "; did you mean '" + *nearest + "'?" : std::string();
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
