// SPDX-License-Identifier: BSD-3-Clause
// The effect through its entry point: what it writes into the host's blocks, its archives, its frames, and
// what is left locked when the host fails or throws.
#include <climits>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <span>

#include <gmock/gmock.h>

#include "support/CountingHost.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

// Memory that the effect is not meant to write keeps its pattern. The test program lies in no bundle, so
// each text is its key. of: the host's block that the selector writes, change: what it writes there.
template <class Of, class Change>
void ExpectWritten(Of of, long selector, Change change, std::int32_t index = 0) {
    CountingHost host(8, 8, 32);
    host.record.nParamIndex = index;
    auto& block = std::invoke(of, host);
    std::memset(&block, 0xA7, sizeof block);
    auto expected = block;
    change(expected);
    EXPECT_EQ(host.Call(selector), 0);
    const auto& written = std::invoke(of, host); // perhaps elsewhere
    EXPECT_EQ(std::memcmp(&written, &expected, sizeof expected), 0)
        << testing::PrintToString(written) << " instead of " << testing::PrintToString(expected);
}

TEST(CTextParam, DescribesTheEffectAndItsOnlyParameter) {
    ExpectWritten(&CountingHost::pluginInfo, epiInit, [](EPIPluginInfo& info) {
        info.nSignature = 0x54455854;
        info.nInfo1 = 2;
        info.nInfo2 = 1;
        std::strcpy(info.szCategory, "IDS_CATEGORY");
        std::strcpy(info.szName, "IDS_FILTER");
        info.nFixedParamSize = 480;
        info.nSettingsSize = 5140;
    });
    ExpectWritten(&CountingHost::paramDesc, epiParamInfo, [](EPIParamDesc& param) {
        param.nKind = 4;
        std::strcpy(param.szName, "IDS_PARAM_APPLY");
        param.dMinimum = 0.0;
        param.dMaximum = 1.0;
        param.dDefault = 0.0;
    });
    for (const std::int32_t index : { 1, -1, 0x10000 })
        ExpectWritten(
            &CountingHost::paramDesc, epiParamInfo, [](EPIParamDesc&) {}, index);
}

TEST(CTextParam, WritesItsDefaults) {
    ExpectWritten(&CountingHost::Param, epiInitFixedParam, [](_TEXTPARAM& param) {
        param.ptPos = { 54, 41 };
        std::strcpy(param.szFontName, "IDS_DEFAULTFONT");
        param.nFontSize = 36;
        param.crText = 0x00FFFFFF;
        param.crBack = 0;
        param.nOpacity = 50;
        param.nScoreFormat = 0;
        param.szInfoText[0] = 0;
        param.szCharacter[0] = 0;
        param.dwFlags = 0x00010008;
    });
    ExpectWritten(&CountingHost::settings, epiInitSettings, [](_TEXT_DIALOG_PARAM& settings) {
        settings = {};
        char* entry = settings.infoPopup.szPreset[0];
        for (const char* direction : { "F.I.", "F.O.", "T.U.", "T.B.", "WIPE", "PAN", "FOLLOW" }) {
            std::strcpy(entry, direction);
            entry += 64;
        }
    });
}

// Every byte counts, also those behind the NUL of a string.
_TEXTPARAM Sample() {
    _TEXTPARAM param;
    std::uint8_t next = 1;
    for (std::size_t i = 0; i < sizeof param; ++i, next = static_cast<std::uint8_t>(next * 5 + 3))
        reinterpret_cast<std::uint8_t*>(&param)[i] = next;
    return param;
}

// The archive's format, written down from where its integers lie.
Bytes ArchiveOf(const _TEXTPARAM& param) {
    const auto* raw = reinterpret_cast<const std::uint8_t*>(&param);
    Bytes bytes(raw, raw + sizeof param);
    for (const std::size_t at : { 0, 4, 72, 76, 80, 84, 88, 476 }) {
        std::uint32_t value;
        std::memcpy(&value, raw + at, sizeof value);
        for (std::size_t i = 0; i < 4; ++i)
            bytes[at + i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
    }
    return bytes;
}

bool SameBytes(const _TEXTPARAM& a, const _TEXTPARAM& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

TEST(CTextSerialize, WritesBigEndianAndKeepsTheLiveParameters) {
    for (const bool scribbles : { false, true }) {
        CountingHost host(8, 8, 32);
        host.Param() = Sample();
        host.scribbles = scribbles;
        EXPECT_EQ(host.Call(epiSerialize), 0);
        EXPECT_EQ(host.archive, ArchiveOf(Sample()));
        EXPECT_TRUE(SameBytes(host.Param(), Sample())) << "scribbles " << scribbles;
    }
}

TEST(CTextSerialize, LoadsWhatItSavedAsFarAsTheArchiveReaches) {
    const _TEXTPARAM sample = Sample();
    for (const std::size_t size : { 0, 4, 8, 76, 92, 476, 480 }) {
        CountingHost host(8, 8, 32);
        host.Param().nFontSize = 12;
        host.Param().dwFlags = TEXT_INFO;
        _TEXTPARAM expected = host.Param();
        std::memcpy(&expected, &sample, size);
        host.archive = ArchiveOf(sample);
        host.archive.resize(size);
        host.loading = true;
        EXPECT_EQ(host.Call(epiSerialize), 0);
        EXPECT_TRUE(SameBytes(host.Param(), expected)) << size << " bytes";
    }
}

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

TEST(CTextFilter, DrawsWhenTheSwitchHasAnIntegerPart) {
    using Limits = std::numeric_limits<double>;
    const auto draws = [](double apply) {
        CountingHost host(120, 40, 32);
        SetText(host, "Text");
        const Bytes empty = host.image.memory;
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
            const Bytes empty = host.image.memory;
            host.Call(epiDoFilter);
            EXPECT_EQ(std::memcmp(&before, &host.Param(), sizeof before), 0);
            EXPECT_NE(host.image.memory, empty);
            return host.image.memory;
        };
        EXPECT_EQ(draw('W'), draw(0)) << flag;
    }
}

TEST(EntryPoint, UnknownSelectorsTouchNothing) {
    CountingHost host(8, 8, 32);
    const _EPIRECORD before = host.record;
    for (const long selector : { 11L, -1L, static_cast<long>(0xFFFFFFFFu), LONG_MAX, LONG_MIN }) {
        EXPECT_EQ(host.Call(selector), 0x6001138EL) << selector;
        EXPECT_EQ(std::memcmp(&host.record, &before, sizeof before), 0) << selector;
    }
    EXPECT_EQ(host.CallbacksSoFar(), 0);
}

// One run of the selector with trouble at a callback; the number of callbacks that it took.
int RunSelector(long selector, bool loading, int index, CountingHost::Trouble trouble) {
    CountingHost host(64, 48, 32);
    host.loading = loading;
    host.archive.assign(sizeof(_TEXTPARAM), 0);
    host.Param().nFontSize = 12;
    std::strcpy(host.Param().szInfoText, "Text");
    host.Param().dwFlags = TEXT_INFO | TEXT_BOX;
    host.Param().nOpacity = 100;
    const _TEXTPARAM before = host.Param();
    host.MakeTrouble(index, trouble);
    bool thrown = false;
    try {
        EXPECT_EQ(host.Call(selector), 0) << selector << " callback " << index;
    } catch (const HostFailure&) {
        thrown = true;
    }
    EXPECT_EQ(thrown, trouble == CountingHost::Trouble::kThrow) << selector << " at " << index;
    if (selector == epiSerialize && thrown && index < 3) // to the read or the write
        EXPECT_EQ(std::memcmp(&before, &host.Param(), sizeof before), 0) << index;
    EXPECT_EQ(host.LocksOutstanding(), 0) << selector << " callback " << index;
    EXPECT_EQ(host.image.readableLocks, 0) << "a frame is locked for writing";
    EXPECT_TRUE(host.image.MarksAreWhole()) << selector << " callback " << index;
    return host.CallbacksSoFar();
}

TEST(EntryPoint, LeavesNothingLockedWhateverFails) {
    for (long selector = epiInit; selector <= epiCalcRenderBound; ++selector) {
        for (const bool loading : { false, true }) {
            const int callbacks = RunSelector(selector, loading, -1, CountingHost::Trouble::kNone);
            for (int index = 0; index < callbacks; ++index) {
                RunSelector(selector, loading, index, CountingHost::Trouble::kFail);
                RunSelector(selector, loading, index, CountingHost::Trouble::kThrow);
            }
        }
    }
}

} // namespace
