// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxCoreFoundation/HuxMutableString.h"

#include <string>

#include <gmock/gmock.h>

#include "platform/TextEncoding.h"
#include "support/Converts.h"

using namespace platform;

namespace {

TEST(HuxString, IsNeverWithoutAString) {
    for (const HuxString& text :
         { HuxString(), HuxString(static_cast<const char*>(nullptr)),
           HuxString(static_cast<const unsigned char*>(nullptr)), HuxString(CFStringRef {}),
           HuxString::Adopt(nullptr), HuxString("") }) {
        ASSERT_NE(text.GetCFString(), nullptr);
        EXPECT_TRUE(text.IsEmpty());
        EXPECT_EQ(text, HuxString());
    }
}

TEST(HuxString, CountsCharactersAndCutsAtThem) {
    const HuxString text = HuxString::FromUTF8("aé漢😀");
    EXPECT_EQ(text.GetLength(), 4u);
    EXPECT_EQ(text.GetCharacters(), U"aé漢😀");
    EXPECT_EQ(HuxString(U"aé漢😀"), text);
    EXPECT_EQ(HuxString::FromUTF8("a\xFF\xE6z").GetCharacters(), U"a\uFFFD\uFFFDz");
    char buffer[7];
    EXPECT_FALSE(text.GetCString(buffer, sizeof buffer));
    EXPECT_STREQ(buffer, "aé漢");
    char all[16];
    EXPECT_TRUE(text.GetCString(all, sizeof all));
    EXPECT_EQ(text.GetBytes(), all);
}

TEST(HuxString, SpeaksTheApplicationsEncodingAtBothEnds) {
    if (!Converts("CP932")) {
        EXPECT_FALSE(SetApplicationTextEncoding("no such encoding"));
        return;
    }
    const std::string before = ApplicationTextEncoding();
    ASSERT_TRUE(SetApplicationTextEncoding("CP932"));
    const unsigned char pascal[] = { 4, 0x8A, 0xBF, 0x83, 0x5C, 'x' };
    const HuxString text(pascal);
    EXPECT_EQ(text.GetUTF8(), "漢ソ");
    EXPECT_EQ(HuxString("\x8A\xBF\x83\x5C"), text);
    unsigned char back[256] = {};
    EXPECT_TRUE(text.GetPascalString(back));
    EXPECT_EQ(std::string(reinterpret_cast<char*>(back), 5), std::string("\4\x8A\xBF\x83\x5C"));
    EXPECT_EQ(HuxString::FromUTF8("é").GetBytes(), "?");
    SetApplicationTextEncoding(before);
}

TEST(HuxString, APascalStringHoldsWholeCharacters) {
    std::string text;
    for (int i = 0; i < 100; ++i)
        text += "漢";
    unsigned char pascal[256];
    EXPECT_FALSE(HuxString::FromUTF8(text).GetPascalString(pascal));
    EXPECT_EQ(pascal[0], 255);
    EXPECT_FALSE(HuxString::FromUTF8("x" + text).GetPascalString(pascal));
    EXPECT_EQ(pascal[0], 253);
}

TEST(HuxMutableString, RemovesKeepsAndCutsByCharacter) {
    HuxMutableString text = HuxString::FromUTF8("1a漢2字-3");
    const HuxString before = text;
    text.RemoveCharacters(HuxString::FromUTF8("漢-"));
    EXPECT_EQ(text.GetUTF8(), "1a2字3");
    text.KeepCharacters("0123456789");
    EXPECT_EQ(text.GetUTF8(), "123");
    text.Append(HuxString::FromUTF8("字9"));
    text.Truncate(4);
    EXPECT_EQ(text.GetUTF8(), "123字");
    text.Truncate(100);
    EXPECT_EQ(text.GetLength(), 4u);
    text.Clear();
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(before.GetUTF8(), "1a漢2字-3");
}

} // namespace
