// SPDX-License-Identifier: BSD-3-Clause
#include <cmath>
#include <cstring>
#include <limits>
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
    struct Row {
        double apply;
        bool draws;
    };
    for (const Row& row :
         { Row { 0.0, false }, Row { 0.999, false }, Row { -0.999, false },
           Row { Limits::denorm_min(), false }, Row { Limits::quiet_NaN(), false },
           Row { 1.0, true }, Row { -1.0, true }, Row { 1e300, true }, Row { -4294967296.0, true },
           Row { Limits::infinity(), true }, Row { -Limits::infinity(), true } }) {
        CountingHost host(120, 40, 32);
        SetText(host, "Text");
        host.apply = row.apply;
        EXPECT_EQ(host.Call(epiDoFilter), 0);
        EXPECT_EQ(host.pixels != Empty(host), row.draws) << row.apply;
        EXPECT_EQ(host.LocksOutstanding(), 0) << row.apply;
    }
}

TEST(CTextFilter, PlacesTheTextByTheRecordsScaleAndOrigin) {
    Pixels drawn[2];
    for (const bool scaled : { false, true }) {
        CountingHost host(120, 60, 32);
        SetText(host, "Text");
        host.Param().ptPos = scaled ? tagPOINT { 100, 60 } : tagPOINT { 40, 10 };
        host.record.dScale = scaled ? 0.5 : 0.0;
        host.record.ptOrigin = { 10, 20 };
        host.Call(epiDoFilter);
        EXPECT_NE(host.pixels, Empty(host));
        drawn[scaled] = host.pixels;
    }
    EXPECT_EQ(drawn[0], drawn[1]);
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
    struct Row {
        std::uint32_t flag;
        std::size_t offset, size;
    };
    for (const Row& row : { Row { TEXT_INFO, offsetof(_TEXTPARAM, szInfoText), 64 },
                            Row { TEXT_CHARACTER, offsetof(_TEXTPARAM, szCharacter), 64 },
                            Row { TEXT_DIALOGUE, offsetof(_TEXTPARAM, szDialogue), 256 },
                            Row { TEXT_SCORE, 0, 0 } }) {
        const auto draw = [&](bool terminated) {
            CountingHost host(4400, 40, 24);
            SetText(host, "");
            host.Param().dwFlags = row.flag | TEXT_BOX;
            host.Param().nScoreFormat = 3;
            std::memset(host.Param().szCharacter, 'W', sizeof host.Param().szCharacter);
            std::memset(host.Param().szDialogue, 'W', sizeof host.Param().szDialogue);
            std::memset(host.record.szInfo4, 'M', sizeof host.record.szInfo4);
            std::memset(host.record.reserved6, terminated ? 0 : 'W', sizeof host.record.reserved6);
            auto* bytes = reinterpret_cast<std::uint8_t*>(&host.Param());
            std::memset(bytes + row.offset, 'M', row.size);
            if (terminated && row.size > 0)
                bytes[row.offset + row.size - 1] = 0;
            const _TEXTPARAM before = host.Param();
            host.Call(epiDoFilter);
            EXPECT_EQ(std::memcmp(&before, &host.Param(), sizeof before), 0);
            EXPECT_NE(host.pixels, Empty(host));
            return host.pixels;
        };
        EXPECT_EQ(draw(false), draw(true)) << row.offset;
    }
}

Pixels DrawNumber(int number) {
    CountingHost host(160, 40, number % 2 ? 32 : 64);
    SetText(host, "");
    host.Param().dwFlags = TEXT_SCORE | (number % 3 ? TEXT_BOX : 0);
    host.Param().nFontSize = 14 + number % 5;
    std::strcpy(host.record.szInfo3, std::to_string(number).c_str());
    std::strcpy(host.record.szInfo4, std::to_string(number * 7).c_str());
    host.Call(epiDoFilter);
    return host.pixels;
}

TEST(CTextFilter, ThreadsDrawTheSamePixelsAsOneAfterTheOther) {
    constexpr int kFrames = 60;
    constexpr int kThreads = 4;
    std::vector<Pixels> together(kFrames);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&together, t] {
            for (int i = t; i < kFrames; i += kThreads)
                together[static_cast<std::size_t>(i)] = DrawNumber(i);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (int i = 0; i < kFrames; ++i)
        EXPECT_EQ(together[static_cast<std::size_t>(i)], DrawNumber(i)) << i;
}

} // namespace
