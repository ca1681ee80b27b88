// SPDX-License-Identifier: BSD-3-Clause
#include "host/text/TokenText.h"

#include <gmock/gmock.h>

namespace host {
namespace {

using testing::HasSubstr;

TEST(TokenText, ResolvesTokensForAFrame) {
    using Row = std::tuple<const char*, std::int64_t, const char*>;
    for (const auto& [typed, frame, result] : {
             Row { "", 7, "" },
             Row { "plain", 7, "plain" },
             Row { "{frame}", 1001, "1001" },
             Row { "{frame:04}", 7, "0007" },
             Row { "{frame:04}", 12345, "12345" },
             Row { "{frame:4}", 7, "   7" },
             Row { "{frame-1000}", 1012, "12" },
             Row { "{frame-1000}", 998, "-2" },
             Row { "{frame-1000:04}", 998, "-002" },
             Row { "{frame-1000:4}", 998, "  -2" },
             Row { "{frame+1:03}", 1, "002" },
             Row { "{file} / {frame}", 3, "shot / 3" },
             Row { "{{frame}} }}{{", 3, "{frame} }{" },
             Row { "{{{frame}}}", 3, "{3}" },
             Row { "カット{frame}番", 3, "カット3番" },
             Row { "{frame+9223372036854775807}", 5, "9223372036854775807" },
         }) {
        std::string why;
        const auto text = TokenText::Parse(typed, why);
        ASSERT_TRUE(text) << typed << ": " << why;
        EXPECT_EQ(text->Resolve({ frame, "shot" }), result) << typed;
        const bool hasFile = text->Resolve({ frame, "other" }) != result;
        EXPECT_EQ(text->NeedsFile(), hasFile) << typed;
        EXPECT_EQ(text->HasTokens(), hasFile || text->Resolve({ -9, "shot" }) != result) << typed;
    }
    std::string why;
    EXPECT_EQ(TokenText::Parse("{frame-9:03}{file}{{x", why)->Shortest(), "000{x");
}

TEST(TokenText, NamesWhatItDoesNotKnowAndListsTheTokens) {
    for (const std::string text :
         { "{cut}", "{}", "{frame+}", "{frame--1}", "{frame+-1}", "{frame:}", "{frame:-4}",
           "{frame:0}", "{frame:999999}", "{frame+99999999999999999999}", "{file:3}" }) {
        std::string why;
        EXPECT_FALSE(TokenText::Parse("a" + text, why)) << text;
        EXPECT_THAT(why, HasSubstr("'" + text + "'"));
        EXPECT_THAT(why, HasSubstr("{frame:04}")) << text;
    }
    for (const auto& [text, alone] : { std::pair { "a { b", "'{'" }, std::pair { "{{{", "'{'" },
                                       std::pair { "5 } x", "'}'" } }) {
        std::string why;
        EXPECT_FALSE(TokenText::Parse(text, why)) << text;
        EXPECT_THAT(why, HasSubstr(std::string(alone) + " stands alone")) << text;
    }
}

} // namespace
} // namespace host
