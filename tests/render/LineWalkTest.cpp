// SPDX-License-Identifier: BSD-3-Clause
// Lines of texts in several encodings, and the strings around them.
#include "render/LineWalk.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/TextEncoding.h"
#include "render/CTextRenderer.h"

namespace {

using Strings = std::vector<std::string>;

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

TEST(LineWalkTest, EndsLinesAtBreaksAndStepsOverWholeCharacters) {
    using Row = std::tuple<const char*, const char*, Strings>;
    for (const auto& [encoding, text, lines] : {
             Row { "UTF-8", "", { "" } },
             Row { "UTF-8", "A\r\r\n", { "A", "", "" } },
             Row { "UTF-8", "X\rY\r\nZ", { "X", "Y", "Z" } },
             Row { "UTF-8", "A\n\n\rB", { "A\n\n", "B" } },
             // A break right behind a character of three bytes is one, and half a character at the
             // end is read no further than it goes.
             Row { "UTF-8", "日\r本\r\nB", { "日", "本", "B" } },
             Row { "UTF-8", "a\xE6\x97", { "a\xE6\x97" } },
             Row { "UTF-8", "a\xE6\rb", { "a\xE6", "b" } },
             // 0x5C, a backslash elsewhere, ends one character; the CR after it is a break.
             Row { "CP932",
                   "\x83\x5C\r\x93\xFA\r\n\x96\x7B",
                   { "\x83\x5C", "\x93\xFA", "\x96\x7B" } },
             Row { "CP932", "\x93\x0D\x41", { "\x93\x0D\x41" } },
             Row { "CP932", "a\x93", { "a\x93" } },
             Row { "EUC-JP", "\x8F\xB0\xA1\r\xC6\xFC\rB", { "\x8F\xB0\xA1", "\xC6\xFC", "B" } },
         }) {
        platform::SetApplicationTextEncoding(encoding);
        EXPECT_EQ(LinesOf(text), lines) << encoding << ": " << text;
    }
    platform::SetApplicationTextEncoding("CP932");
    EXPECT_TRUE(CTextRenderer::IsDoubleByte("a\x83\x5C", 2));
    EXPECT_FALSE(CTextRenderer::IsDoubleByte("a\xB1\x5C", 2));
    platform::SetApplicationTextEncoding("UTF-8");
}

} // namespace
