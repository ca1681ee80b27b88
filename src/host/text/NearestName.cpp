// SPDX-License-Identifier: BSD-3-Clause
#include "host/text/NearestName.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace host {

namespace {

// Nobody means a short name by a longer text.
constexpr std::size_t kMaxLength = 64;

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

// How many slips make one of the other; both have at most kMaxLength bytes.
std::size_t Slips(std::string_view a, std::string_view b) {
    using Row = std::array<std::size_t, kMaxLength + 1>;
    Row before {}, last {}, row {}; // row[j]: from the letters of a so far to the first j of b
    for (std::size_t j = 0; j <= b.size(); ++j)
        last[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const char x = Lower(a[i - 1]), y = Lower(b[j - 1]);
            row[j] = std::min({ last[j] + 1, row[j - 1] + 1, last[j - 1] + (x == y ? 0 : 1) });
            if (i > 1 && j > 1 && x == Lower(b[j - 2]) && y == Lower(a[i - 2]))
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        before = std::exchange(last, row);
    }
    return last[b.size()];
}

} // namespace

std::string_view NearestName(std::string_view typed, std::span<const std::string_view> known) {
    std::string_view nearest;
    if (typed.empty() || typed.size() > kMaxLength)
        return nearest;
    std::size_t fewest = 1 + std::max<std::size_t>(1, typed.size() / 3);
    for (const auto name : known) {
        if (name.size() > kMaxLength)
            continue;
        const auto slips = Slips(typed, name);
        // With all of its letters changed a short name is another one.
        if (slips < fewest && slips < name.size()) {
            fewest = slips;
            nearest = name;
        }
    }
    return nearest;
}

} // namespace host
