// SPDX-License-Identifier: BSD-3-Clause
#include "host/text/TokenText.h"

#include <array>
#include <tuple>

#include <gmock/gmock.h>

namespace host {
namespace {

using testing::HasSubstr;

const Defines kDefines { { "shot", "A {frame}" }, { "cut-2", "B" } };

TEST(TokenText, ResolvesTokensForAFrame) {
    const auto run = std::make_shared<RunValues>(RunValues { .first = -5,
                                                             .last = 94,
                                                             .count = 100,
                                                             .name = "sc01",
                                                             .date = "2026-03-31",
                                                             .time = "23:59:59",
                                                             .zeroFrame = -5,
                                                             .startCode = 86400 });
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
             Row { "{frame:05}", -12, "-0012" },
             Row { "{first:04}-{last} {count+1}", 3, "-005-94 101" },
             Row { "{tc}", 18, "01:00:00:23" },
             Row { "{tc} {seconds} {seconds:.3}", 19, "01:00:01:00 1 1.000" },
             Row { "{tc} {seconds} {seconds:.3}", -6, "00:59:59:23 -1 -0.042" },
             Row { "{seconds:.2}", -9223372036854775807 - 1, "-384307168202282325.13" },
             Row { "{name} {date} {time}", 3, "sc01 2026-03-31 23:59:59" },
             Row { "{shot}/{cut-2}", 3, "A {frame}/B" },
         }) {
        std::string why;
        const auto text = TokenText::Parse(typed, why, kDefines);
        ASSERT_TRUE(text) << typed << ": " << why;
        EXPECT_EQ(text->Resolve({ frame, "shot", run }), result) << typed;
        const bool hasFile = text->Resolve({ frame, "other", run }) != result;
        EXPECT_EQ(text->Uses(Token::kFile), hasFile) << typed;
        EXPECT_EQ(text->HasTokens(), hasFile || text->Resolve({ -9, "shot" }) != result) << typed;
        EXPECT_LE(text->Shortest().size(), text->Resolve({}).size()) << typed;
    }
    std::string why;
    EXPECT_EQ(TokenText::Parse("{frame-9:03}{file}{{x", why)->Shortest(), "000{x");
}

TEST(TokenText, TakesWhatIsKnownOfARun) {
    RunValues run;
    const auto here = std::filesystem::current_path();
    for (const auto& [folder, name] :
         std::vector<std::pair<std::string, std::string>> { { "/shots/one", "one" },
                                                            { "shots/two/", "two" },
                                                            { "/shots/one/..", "shots" },
                                                            { ".", here.filename().string() },
                                                            { "", here.filename().string() },
                                                            { "/", "" } }) {
        run.SetShot(std::array<std::int64_t, 3> { -5, 0, 9 }, folder);
        EXPECT_EQ(run.name, name) << folder;
    }
    EXPECT_EQ(std::tie(run.first, run.last, run.count), std::tuple(-5, 9, 3));
    std::tm noon {};
    noon.tm_year = 126, noon.tm_mon = 2, noon.tm_mday = 31, noon.tm_hour = 12;
    run.SetDate(std::mktime(&noon));
    EXPECT_EQ(run.date + " " + run.time.substr(2), "2026-03-31 :00:00");
}

TEST(TokenText, NamesWhatItDoesNotKnowAndListsTheTokens) {
    const std::pair<const char*, const char*> rows[] {
        { "{cut}", "'{cut}' is no token" },
        { "{}", "'{}' is no token" },
        { "{frame+}", "'{frame+}'" },
        { "{frame--1}", "'{frame--1}'" },
        { "{frame+-1}", "'{frame+-1}'" },
        { "{frame:}", "'{frame:}'" },
        { "{frame:-4}", "'{frame:-4}'" },
        { "{frame:0}", "'{frame:0}'" },
        { "{frame:999999}", "'{frame:999999}'" },
        { "{frame+99999999999999999999}", "'{frame+99999999999999999999}'" },
        { "{file:3}", "'{file:3}'" },
        { "{seconds:.}", "'{seconds:.}'" },
        { "{tc+1}", "'{tc+1}'" },
        { "{farme:04}", "{frame} is the nearest;" },
        { "{Shto}", "{shot} is the nearest;" },
        { "{cut2}", "defined: {cut-2}, {shot}" },
        { "a { b", "'{' stands alone" },
        { "{{{", "'{' stands alone" },
        { "50 } x", "'}' stands alone" },
    };
    for (const auto& [text, named] : rows) {
        std::string why;
        EXPECT_FALSE(TokenText::Parse(text, why, kDefines)) << text;
        EXPECT_THAT(why, HasSubstr(named)) << text;
        EXPECT_THAT(why, HasSubstr("{frame:04}")) << text;
    }
}

TEST(TokenText, LetsDefineWhatHasNoMeaning) {
    std::string why;
    for (const char* name : { "shot", "_2", "first-name", "Frame" })
        EXPECT_TRUE(TokenText::IsDefinable(name, why)) << name << ": " << why;
    for (const char* name : { "", "2nd", "-x", "a b", "frame", "frame-1", "tc", "\xE5\xAD\x97" })
        EXPECT_FALSE(TokenText::IsDefinable(name, why)) << name;
    const auto literal = TokenText::Parse(TokenText::Literal("{frame} }{{"), why);
    ASSERT_TRUE(literal) << why;
    EXPECT_EQ(literal->Resolve({}), "{frame} }{{");
}

} // namespace
} // namespace host
