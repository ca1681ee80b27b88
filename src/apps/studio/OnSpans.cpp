// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/OnSpans.h"

#include <algorithm>
#include <string>

namespace studio {

OnSpans SpansOf(const host::FrameRanges& ranges, std::span<const std::int64_t> numbers) {
    OnSpans spans;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (!ranges.Contains(numbers[i]))
            continue;
        if (!spans.empty() && spans.back().last + 1 == i)
            spans.back().last = i;
        else
            spans.push_back({ i, i });
    }
    return spans;
}

host::FrameRanges RangesOf(const OnSpans& spans, std::span<const std::int64_t> numbers) {
    if (spans.size() == 1 && spans[0] == OnSpan { 0, numbers.size() - 1 })
        return host::FrameRanges::All();
    std::string text;
    for (const auto& span : spans) {
        text += (text.empty() ? "" : ",") + std::to_string(numbers[span.first]);
        if (span.last > span.first)
            text += "-" + std::to_string(numbers[span.last]);
    }
    std::string why;
    return host::FrameRanges::Parse(text, why).value_or(host::FrameRanges());
}

OnSpans TurnOff(const OnSpans& spans, OnSpan off) {
    OnSpans left;
    for (const auto& span : spans) {
        if (span.first < off.first)
            left.push_back({ span.first, std::min(span.last, off.first - 1) });
        if (span.last > off.last)
            left.push_back({ std::max(span.first, off.last + 1), span.last });
    }
    return left;
}

OnSpans TurnOn(const OnSpans& spans, OnSpan on) {
    OnSpans joined;
    for (const auto& span : spans) {
        if (span.last + 1 < on.first || span.first > on.last + 1) {
            joined.push_back(span);
        } else {
            on.first = std::min(on.first, span.first);
            on.last = std::max(on.last, span.last);
        }
    }
    joined.insert(std::ranges::find_if(joined, [&](auto& span) { return span.first > on.last; }),
                  on);
    return joined;
}

std::size_t SpanAt(const OnSpans& spans, std::size_t index) {
    const auto found = std::ranges::find_if(
        spans, [index](auto& span) { return span.first <= index && index <= span.last; });
    return static_cast<std::size_t>(found - spans.begin());
}

} // namespace studio
