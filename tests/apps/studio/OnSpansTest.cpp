// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/OnSpans.h"

#include <numeric>
#include <random>

#include <gmock/gmock.h>

namespace studio {

namespace {

using Numbers = std::vector<std::int64_t>;

Numbers FirstNumbers(std::size_t count) {
    Numbers numbers(count);
    std::iota(numbers.begin(), numbers.end(), 1001);
    return numbers;
}

std::vector<bool> FlagsOf(const OnSpans& spans, std::size_t count) {
    std::vector<bool> flags(count);
    for (std::size_t i = 0; i < count; ++i)
        flags[i] = IsOn(spans, i);
    return flags;
}

TEST(OnSpans, ComeFromRangesOverTheFramesThatThereAre) {
    struct Row {
        const char* ranges;
        Numbers numbers;
        OnSpans spans;
        const char* back;
    };
    for (auto const& row : {
             Row { "1002-1003", { 1001, 1002, 1003, 1004 }, { { 1, 2 } }, "1002-1003" },
             Row { "1-", { 1001, 1002 }, { { 0, 1 } }, "0-" },
             Row { "1-9:2", { 1, 2, 3, 4 }, { { 0, 0 }, { 2, 2 } }, "1,3" },
             Row { "10-50", { 10, 20, 40, 60 }, { { 0, 2 } }, "10-40" },
             Row { "7", { 1, 2 }, {}, "" },
         }) {
        std::string why;
        auto const spans = SpansOf(*host::FrameRanges::Parse(row.ranges, why), row.numbers);
        EXPECT_EQ(spans, row.spans) << row.ranges;
        auto const back = RangesOf(spans, row.numbers);
        EXPECT_EQ(SpansOf(back, row.numbers), row.spans) << row.ranges;
        if (spans.size() == 1 && spans[0].last + 1 - spans[0].first == row.numbers.size())
            EXPECT_EQ(back.ToString(), host::FrameRanges::All().ToString()) << row.ranges;
        else
            EXPECT_EQ(back.ToString(), row.back) << row.ranges;
    }
}

TEST(OnSpans, TurnOnAndOffLikeOneFlagForEachFrame) {
    constexpr std::size_t kCount = 24;
    auto const numbers = FirstNumbers(kCount);
    std::mt19937 random(5);
    std::vector<bool> flags(kCount);
    OnSpans spans;
    for (int i = 0; i < 500; ++i) {
        OnSpan change { random() % kCount, random() % kCount };
        if (change.first > change.last)
            std::swap(change.first, change.last);
        bool const on = random() % 2;
        std::fill(flags.begin() + static_cast<std::ptrdiff_t>(change.first),
                  flags.begin() + static_cast<std::ptrdiff_t>(change.last) + 1, on);
        spans = on ? TurnOn(spans, change) : TurnOff(spans, change);
        ASSERT_EQ(FlagsOf(spans, kCount), flags) << "step " << i;
        // Neighbours that touch would be one range that shows as two.
        ASSERT_EQ(SpansOf(RangesOf(spans, numbers), numbers), spans) << "step " << i;
    }
}

} // namespace

} // namespace studio
