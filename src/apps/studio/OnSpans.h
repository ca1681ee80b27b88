// SPDX-License-Identifier: BSD-3-Clause
// The frames on which the text is on, as stretches of the shot's frames that a hand can move.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "host/frames/FrameRanges.h"

namespace studio {

// Indices of frames; both ends belong to it.
struct OnSpan {
    std::size_t first = 0;
    std::size_t last = 0;
    bool operator==(const OnSpan&) const = default;
};

// Ascending; two neighbours have a frame between them that is off.
using OnSpans = std::vector<OnSpan>;

// numbers: those of the shot, ascending.
OnSpans SpansOf(const host::FrameRanges& ranges, std::span<const std::int64_t> numbers);
// Every frame whatever its number when all are on, so that a longer shot stays covered.
host::FrameRanges RangesOf(const OnSpans& spans, std::span<const std::int64_t> numbers);

OnSpans TurnOn(const OnSpans& spans, OnSpan on);
OnSpans TurnOff(const OnSpans& spans, OnSpan off);
// One past the last index when no span has the frame.
std::size_t SpanAt(const OnSpans& spans, std::size_t index);
inline bool IsOn(const OnSpans& spans, std::size_t index) {
    return SpanAt(spans, index) < spans.size();
}

} // namespace studio
