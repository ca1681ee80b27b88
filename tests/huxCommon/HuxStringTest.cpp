// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxCoreFoundation/HuxString.h"

#include <string>

#include <gmock/gmock.h>

#include "platform/TextContext.h"
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
    unsigned char pascal[256];
    const std::string full(254, 'x');
    EXPECT_TRUE(HuxString::FromUTF8(full + "x").GetPascalString(pascal));
    EXPECT_EQ(pascal[0], 255);
    EXPECT_FALSE(HuxString::FromUTF8(full + "漢").GetPascalString(pascal));
    EXPECT_EQ(pascal[0], 254);
}

TEST(HuxString, SpeaksTheContextsEncodingAtBothEnds) {
    if (!Converts("CP932"))
        return;
    TextContext context(*TextEncoding::Find("CP932"));
    const TextScope scope(context);
    const unsigned char pascal[] = { 4, 0x8A, 0xBF, 0x83, 0x5C, 'x' };
    const HuxString text(pascal);
    EXPECT_EQ(text.GetUTF8(), "漢ソ");
    EXPECT_EQ(HuxString("\x8A\xBF\x83\x5C"), text);
    unsigned char back[256] = {};
    EXPECT_TRUE(text.GetPascalString(back));
    EXPECT_EQ(std::string(reinterpret_cast<char*>(back), 5), std::string("\4\x8A\xBF\x83\x5C"));
    EXPECT_EQ(HuxString::FromUTF8("é").GetBytes(), "?");
}

} // namespace
