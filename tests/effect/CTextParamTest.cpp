// SPDX-License-Identifier: BSD-3-Clause
// What the effect tells the host and the defaults that it writes, byte for byte: memory that it is
// not meant to write keeps its pattern. The test program lies in no bundle, so each text is its key.
#include <cstring>

#include <gmock/gmock.h>

#include "support/CountingHost.h"

namespace {

template <typename Block>
Block Patterned() {
    Block block;
    std::memset(&block, 0xA7, sizeof block);
    return block;
}

template <typename Block>
void ExpectBytes(const Block& block, const Block& expected) {
    EXPECT_EQ(std::memcmp(&block, &expected, sizeof block), 0)
        << testing::PrintToString(block) << " instead of " << testing::PrintToString(expected);
}

TEST(CTextParam, InitDescribesTheEffect) {
    CountingHost host(8, 8, 32);
    host.pluginInfo = Patterned<EPIPluginInfo>();
    auto expected = Patterned<EPIPluginInfo>();
    expected.nSignature = 0x54455854;
    expected.nInfo1 = 2;
    expected.nInfo2 = 1;
    std::strcpy(expected.szCategory, "IDS_CATEGORY");
    std::strcpy(expected.szName, "IDS_FILTER");
    expected.nFixedParamSize = 480;
    expected.nSettingsSize = 5140;
    EXPECT_EQ(host.Call(epiInit), 0);
    ExpectBytes(host.pluginInfo, expected);
    EXPECT_EQ(host.Call(epiTerm), 0);
}

TEST(CTextParam, OnlyParameterZeroIsDescribed) {
    CountingHost host(8, 8, 32);
    const auto untouched = Patterned<EPIParamDesc>();
    host.paramDesc = untouched;
    for (const std::int32_t index : { 1, -1, 0x10000 }) {
        host.record.nParamIndex = index;
        EXPECT_EQ(host.Call(epiParamInfo), 0);
        ExpectBytes(host.paramDesc, untouched);
    }
    auto expected = untouched;
    expected.nKind = 4;
    std::strcpy(expected.szName, "IDS_PARAM_APPLY");
    expected.dMinimum = 0.0;
    expected.dMaximum = 1.0;
    expected.dDefault = 0.0;
    host.record.nParamIndex = 0;
    EXPECT_EQ(host.Call(epiParamInfo), 0);
    ExpectBytes(host.paramDesc, expected);
}

TEST(CTextParam, DefaultsLeaveTheRestOfTheMemory) {
    CountingHost host(8, 8, 32);
    host.Param() = Patterned<_TEXTPARAM>();
    std::strcpy(host.Param().szDialogue, "typed before");
    auto expected = host.Param();
    expected.ptPos = { 54, 41 };
    std::strcpy(expected.szFontName, "IDS_DEFAULTFONT");
    expected.nFontSize = 36;
    expected.crText = 0x00FFFFFF;
    expected.crBack = 0;
    expected.nOpacity = 50;
    expected.nScoreFormat = 0;
    expected.szInfoText[0] = 0;
    expected.szCharacter[0] = 0;
    expected.dwFlags = 0x00010008;
    EXPECT_EQ(host.Call(epiInitFixedParam), 0);
    ExpectBytes(host.Param(), expected);
}

TEST(CTextParam, DialogSettingsStartWithSevenDirections) {
    CountingHost host(8, 8, 32);
    host.settings = Patterned<_TEXT_DIALOG_PARAM>();
    _TEXT_DIALOG_PARAM expected {};
    char* entry = expected.infoPopup.szPreset[0];
    for (const char* direction : { "F.I.", "F.O.", "T.U.", "T.B.", "WIPE", "PAN", "FOLLOW" }) {
        std::strcpy(entry, direction);
        entry += 64;
    }
    EXPECT_EQ(host.Call(epiInitSettings), 0);
    ExpectBytes(host.settings, expected);
}

} // namespace
