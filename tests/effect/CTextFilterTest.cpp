// SPDX-License-Identifier: BSD-3-Clause
#include <cmath>
#include <cstring>
#include <limits>
#include <span>

#include <gmock/gmock.h>

#include "support/CountingHost.h"

namespace {

void SetText(CountingHost& host, const char* text) {
    _TEXTPARAM& param = host.Param();
    param.ptPos = { 10, 6 };
    param.nFontSize = 16;
    param.crText = 0x000000FF;
    param.crBack = 0x00FF0000;
    param.nOpacity = 100;
    param.dwFlags = TEXT_INFO | TEXT_BOX;
    std::strcpy(param.szInfoText, text);
}

using Pixels = std::vector<std::uint8_t>;

TEST(CTextFilter, DrawsWhenTheSwitchHasAnIntegerPart) {
    using Limits = std::numeric_limits<double>;
    const auto draws = [](double apply) {
        CountingHost host(120, 40, 32);
        SetText(host, "Text");
        const Pixels empty = host.image.memory;
        host.apply = apply;
        EXPECT_EQ(host.Call(epiDoFilter), 0);
        EXPECT_EQ(host.LocksOutstanding(), 0) << apply;
        return host.image.memory != empty;
    };
    for (const double apply : { 0.0, 0.999, -0.999, Limits::denorm_min(), Limits::quiet_NaN() })
        EXPECT_FALSE(draws(apply)) << apply;
    for (const double apply :
         { 1.0, -1.0, 1e300, -4294967296.0, Limits::infinity(), -Limits::infinity() })
        EXPECT_TRUE(draws(apply)) << apply;
}

TEST(CTextFilter, SurvivesWildNumbersAndKeepsWithinItsRows) {
    constexpr std::int32_t kLow = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t kHigh = std::numeric_limits<std::int32_t>::max();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const int depth : { 24, 32, 64 })
        for (const std::int32_t at : { kLow, -7, 31, kHigh })
            for (const double scale : { 1.0, 1e300, kInfinity, std::nan("") })
                for (const std::int32_t size : { 16, 0, -1, 0x7FFF0010 }) {
                    CountingHost host(40, 20, depth);
                    SetText(host, "Text");
                    host.Param().ptPos = { at, at };
                    host.Param().nFontSize = size;
                    host.Param().nOpacity = at;
                    host.Param().dwFlags = TEXT_INFO | 0xFFF00000u | (at & 1 ? TEXT_BOX : 0);
                    host.record.ptOrigin = { -at - 1, -at - 1 };
                    host.record.dScale = scale;
                    EXPECT_EQ(host.Call(epiDoFilter), 0);
                    EXPECT_TRUE(host.image.MarksAreWhole()) << depth << " " << at << " " << scale;
                    EXPECT_EQ(host.LocksOutstanding(), 0);
                }
}

// Fields that are full are read to their ends: what lies behind them is not drawn, nor are they changed.
TEST(CTextFilter, ReadsTextsWithinTheirFields) {
    for (const std::uint32_t flag : { TEXT_INFO, TEXT_CHARACTER, TEXT_DIALOGUE, TEXT_SCORE }) {
        const auto draw = [&](char last) {
            CountingHost host(4400, 40, 24);
            SetText(host, "");
            _TEXTPARAM& param = host.Param();
            param.dwFlags = flag | TEXT_BOX;
            param.nScoreFormat = 3;
            for (const std::span<char> field :
                 { std::span<char>(param.szInfoText), std::span<char>(param.szCharacter),
                   std::span<char>(param.szDialogue) }) {
                std::memset(field.data(), 'M', field.size());
                field.back() = last;
            }
            std::memset(host.record.szInfo4, 'M', sizeof host.record.szInfo4);
            std::memset(host.record.reserved6, last, sizeof host.record.reserved6);
            const _TEXTPARAM before = param;
            const Pixels empty = host.image.memory;
            host.Call(epiDoFilter);
            EXPECT_EQ(std::memcmp(&before, &host.Param(), sizeof before), 0);
            EXPECT_NE(host.image.memory, empty);
            return host.image.memory;
        };
        EXPECT_EQ(draw('W'), draw(0)) << flag;
    }
}

} // namespace
