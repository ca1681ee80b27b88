// SPDX-License-Identifier: BSD-3-Clause
// Sets of frame numbers as people write them: "1001-1100:2,1200", "-5-10".
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace host {

// Frame numbers run from kFrameMin to kFrameMax.
inline constexpr std::int64_t kFrameMax = std::numeric_limits<std::int32_t>::max();
inline constexpr std::int64_t kFrameMin = -kFrameMax;

class FrameRanges {
public:
    struct Range {
        std::int64_t first = kFrameMin; // kFrameMin: from the start
        std::int64_t last = kFrameMax;  // kFrameMax: without an end
        std::int64_t step = 1;          // 2 takes the first, the third and so on

        bool Contains(std::int64_t frame) const;
        bool operator==(const Range&) const = default;
    };

    // Separated by commas: single numbers, "first-last", "first-", and with two dots too, where
    // either end may be left out: "first..last", "..last". A minus before a number is its sign, so
    // "-5--1" is five frames and "-5" one. What has a first frame may have a ":step". Spaces may
    // stand between the parts. Nothing, and `why` says what is wrong, for anything else, the empty
    // text included.
    static std::optional<FrameRanges> Parse(std::string_view text, std::string& why);
    // Every frame.
    static FrameRanges All();

    bool Contains(std::int64_t frame) const;
    // Those of `existing` that are in the set, in the same order.
    std::vector<std::int64_t> Among(std::span<const std::int64_t> existing) const;
    // The first `limit` numbers that ranges with both ends ask for and `existing`, which is
    // ascending, does not have. Costs no more than existing numbers and limit together.
    std::vector<std::int64_t> Missing(std::span<const std::int64_t> existing,
                                      std::size_t limit) const;
    // Parses to an equal set.
    std::string ToString() const;
    std::span<const Range> Ranges() const { return m_ranges; }

private:
    std::vector<Range> m_ranges;
};

} // namespace host
