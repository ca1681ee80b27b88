// SPDX-License-Identifier: BSD-3-Clause
#include <cmath>
#include <cstring>
#include <limits>
#include <span>
#include <thread>

#include <gmock/gmock.h>

#include "support/CountingHost.h"

namespace {

using Pixels = std::vector<std::uint8_t>;

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

Pixels Empty(const CountingHost& host) {
    return Pixels(host.pixels.size(), CountingHost::kFill);
}

TEST(CTextFilter, DrawsWhenTheSwitchHasAnIntegerPart) {
    using Limits = std::numeric_limits<double>;
    const auto draws = [](double apply) {
        CountingHost host(120, 40, 32);
        SetText(host, "Text");
        host.apply = apply;
        EXPECT_EQ(host.Call(epiDoFilter), 0);
        EXPECT_EQ(host.LocksOutstanding(), 0) << apply;
        return host.pixels != Empty(host);
    };
    for (const double apply : { 0.0, 0.999, -0.999, Limits::denorm_min(), Limits::quiet_NaN() })
        EXPECT_FALSE(draws(apply)) << apply;
    for (const double apply :
         { 1.0, -1.0, 1e300, -4294967296.0, Limits::infinity(), -Limits::infinity() })
        EXPECT_TRUE(draws(apply)) << apply;
}

TEST(CTextFilter, PlacesTheTextByTheRecordsScaleAndOrigin) {
    CountingHost plain(120, 60, 32), scaled(120, 60, 32);
    for (CountingHost* host : { &plain, &scaled })
        SetText(*host, "Text");
    plain.Param().ptPos = { 40, 10 };
    scaled.Param().ptPos = { 100, 60 };
    scaled.record.dScale = 0.5;
    scaled.record.ptOrigin = { 10, 20 };
    plain.Call(epiDoFilter);
    scaled.Call(epiDoFilter);
    EXPECT_NE(plain.pixels, Empty(plain));
    EXPECT_EQ(scaled.pixels, plain.pixels);
}

TEST(CTextFilter, SurvivesWildNumbersAndKeepsWithinItsRows) {
    constexpr std::int32_t kLow = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t kHigh = std::numeric_limits<std::int32_t>::max();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const int depth : { 24, 32, 64 }) {
        for (const std::int32_t at : { kLow, -7, 31, kHigh }) {
            for (const double scale : { 1.0, 1e300, kInfinity, std::nan("") }) {
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
                    EXPECT_TRUE(host.PaddingIsUntouched()) << depth << " " << at << " " << scale;
                    EXPECT_EQ(host.LocksOutstanding(), 0);
                }
            }
        }
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
            host.Call(epiDoFilter);
            EXPECT_EQ(std::memcmp(&before, &host.Param(), sizeof before), 0);
            EXPECT_NE(host.pixels, Empty(host));
            return host.pixels;
        };
        EXPECT_EQ(draw('W'), draw(0)) << flag;
    }
}

TEST(CTextFilter, ThreadsDrawTheSamePixelsAsOneAfterTheOther) {
    const auto draw = [](int number) {
        CountingHost host(160, 40, number % 2 ? 32 : 64);
        SetText(host, "");
        host.Param().dwFlags = TEXT_SCORE | (number % 3 ? TEXT_BOX : 0);
        host.Param().nFontSize = 14 + number % 5;
        std::strcpy(host.record.szInfo3, std::to_string(number).c_str());
        std::strcpy(host.record.szInfo4, std::to_string(number * 7).c_str());
        host.Call(epiDoFilter);
        return host.pixels;
    };
    constexpr std::size_t kFrames = 60, kThreads = 4;
    std::vector<Pixels> together(kFrames);
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            for (std::size_t i = t; i < kFrames; i += kThreads)
                together[i] = draw(static_cast<int>(i));
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (std::size_t i = 0; i < kFrames; ++i)
        EXPECT_EQ(together[i], draw(static_cast<int>(i))) << i;
}

} // namespace
