// SPDX-License-Identifier: BSD-3-Clause
// Lines of texts in several encodings, and the strings around them.
#include "render/LineWalk.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/TextEncoding.h"
#include "render/CTextRenderer.h"
#include "render/PascalString.h"

namespace {

using testing::ElementsAre;
using Strings = std::vector<std::string>;

class LineWalkTest : public testing::Test {
protected:
    ~LineWalkTest() override { platform::SetApplicationTextEncoding("UTF-8"); }
    static void Encode(const char* name) {
        ASSERT_TRUE(platform::SetApplicationTextEncoding(name));
    }
};

Strings LinesOf(const std::string& text) {
    Strings lines;
    const long count = CTextRenderer::GetLineCount(text.c_str());
    for (long i = 0; i < count; ++i) {
        std::vector<char> out(text.size() + 1, '#');
        CTextRenderer::GetLineText(out.data(), text.c_str(), i);
        lines.emplace_back(out.data());
    }
    char out[] = "stale";
    CTextRenderer::GetLineText(out, text.c_str(), count);
    EXPECT_STREQ(out, "") << text;
    return lines;
}

TEST_F(LineWalkTest, EndsLinesAtCrAndCrLf) {
    Encode("UTF-8");
    EXPECT_THAT(LinesOf(""), ElementsAre(""));
    EXPECT_THAT(LinesOf("A"), ElementsAre("A"));
    EXPECT_THAT(LinesOf("A\r"), ElementsAre("A", ""));
    EXPECT_THAT(LinesOf("A\r\nB"), ElementsAre("A", "B"));
    EXPECT_THAT(LinesOf("X\rY\r\nZ"), ElementsAre("X", "Y", "Z"));
    EXPECT_THAT(LinesOf("\r\r\n\r"), ElementsAre("", "", "", ""));
    EXPECT_THAT(LinesOf("\n\n"), ElementsAre("\n\n"));
    EXPECT_THAT(LinesOf("A\n\rB"), ElementsAre("A\n", "B"));
}

// A break right behind a character of three bytes is one, and half a character at the end is read no
// further than it goes.
TEST_F(LineWalkTest, StepsOverWholeCharacters) {
    Encode("UTF-8");
    EXPECT_THAT(LinesOf("\xE6\x97\xA5\r\xE6\x9C\xAC\r\nB"),
                ElementsAre("\xE6\x97\xA5", "\xE6\x9C\xAC", "B"));
    EXPECT_THAT(LinesOf("a\xE6\x97"), ElementsAre("a\xE6\x97"));
    EXPECT_THAT(LinesOf("a\xE6\rb"), ElementsAre("a\xE6", "b"));
    EXPECT_TRUE(CTextRenderer::IsDoubleByte("\xE6\x97\xA5", 2));
    EXPECT_FALSE(CTextRenderer::IsDoubleByte("\xE6\x97\xA5x", 3));
}

TEST_F(LineWalkTest, TakesNoByteOfADoubleByteCharacterForABreak) {
    Encode("CP932");
    // 0x5C, a backslash elsewhere, ends one character; the CR after it is a break.
    EXPECT_THAT(LinesOf("\x83\x5C\r\x93\xFA\r\n\x96\x7B"),
                ElementsAre("\x83\x5C", "\x93\xFA", "\x96\x7B"));
    EXPECT_THAT(LinesOf("\x93\x0D\x41"), ElementsAre("\x93\x0D\x41"));
    EXPECT_THAT(LinesOf("\xB1\r\xB2"), ElementsAre("\xB1", "\xB2")); // of one byte
    EXPECT_THAT(LinesOf("a\x93"), ElementsAre("a\x93"));
    EXPECT_TRUE(CTextRenderer::IsDoubleByte("a\x83\x5C", 1));
    EXPECT_TRUE(CTextRenderer::IsDoubleByte("a\x83\x5C", 2));
    EXPECT_FALSE(CTextRenderer::IsDoubleByte("a\xB1\x5C", 2));
}

TEST_F(LineWalkTest, KnowsTheThreeByteCharactersOfEucJp) {
    Encode("EUC-JP");
    EXPECT_THAT(LinesOf("\x8F\xB0\xA1\r\xC6\xFC\rB"), ElementsAre("\x8F\xB0\xA1", "\xC6\xFC", "B"));
}

TEST_F(LineWalkTest, ReadsFieldsThatLackTheirNul) {
    Encode("UTF-8");
    const char field[4] = { 'a', '\r', 'b', '\xE6' };
    LineWalk walk(FieldText(field));
    std::string_view line;
    ASSERT_TRUE(walk.Next(&line));
    EXPECT_EQ(line, "a");
    ASSERT_TRUE(walk.Next(&line));
    EXPECT_EQ(line, "b\xE6");
    EXPECT_FALSE(walk.Next(&line));
}

TEST(PascalStringTest, KeepsAtMost255Bytes) {
    struct Row {
        std::size_t length, kept;
    };
    for (const Row& row : { Row { 0, 0 }, Row { 3, 3 }, Row { 255, 255 }, Row { 300, 255 } }) {
        unsigned char out[257] = {};
        out[256] = '#';
        const std::string text(row.length, 'x');
        CtoPascalString(out, text.c_str());
        EXPECT_EQ(out[0], row.kept);
        EXPECT_EQ(std::string(out + 1, out + 1 + row.kept), text.substr(0, row.kept));
        EXPECT_EQ(out[256], '#');
    }
}

} // namespace
