// SPDX-License-Identifier: BSD-3-Clause
// What the effect tells the host and the defaults that it writes, byte for byte: memory that it is
// not meant to write keeps its pattern. The test program lies in no bundle, so each text is its key.
#include <cstring>
#include <functional>

#include <gmock/gmock.h>

#include "support/CountingHost.h"

namespace {

// of: the host's block that the selector writes, change: what it writes there.
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

} // namespace
