// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/TextOptions.h"

#include <gmock/gmock.h>

#include "apps/telop/CommandError.h"
#include "apps/telop/OptionText.h"
#include "host/text/TextField.h"
#include "platform/TextContext.h"
#include "support/TemporaryFolder.h"

namespace telop {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

host::Track Defaults() {
    host::Track track;
    track.settings.dwFlags = TEXT_SCORE | TEXT_BOX;
    track.settings.nFontSize = 36;
    return track;
}

TEST(TextOptions, ANewKindTakesTheOldOnesPlace) {
    auto track = Defaults();
    track.settings.dwFlags = TEXT_CHARACTER | TEXT_DIALOGUE | TEXT_OFFCHARACTER | TEXT_BOX;
    using Row = std::tuple<TextOptions, std::uint32_t>;
    for (const auto& [options, flags] : {
             Row { { .info = "a" }, TEXT_INFO | TEXT_OFFCHARACTER | TEXT_BOX },
             Row { { .character = "a" }, TEXT_CHARACTER | TEXT_BOX },
             Row { { .dialogue = "a" }, TEXT_DIALOGUE | TEXT_OFFCHARACTER | TEXT_BOX },
             Row { { .score = 2 }, TEXT_SCORE | TEXT_OFFCHARACTER | TEXT_BOX },
         })
        EXPECT_EQ(MakeTrack(options, track).settings.dwFlags, flags);
}

TEST(TextOptions, ATextThatIsLongOnlyByItsTokensIsKept) {
    const auto text = std::string(60, 'x') + "{frame}";
    const auto track = MakeTrack({ .info = text }, Defaults());
    ASSERT_EQ(track.cues.size(), 1U);
    EXPECT_EQ(track.CueAt(-1001)->text, text);
    EXPECT_STREQ(MakeTrack({ .info = "{frame}" }, track).settings.szInfoText, "{frame}");
    EXPECT_TRUE(MakeTrack({ .info = "{frame}" }, track).cues.empty());
}

TEST(TextOptions, EachTextBeforeThenHasItsOwnOptions) {
    std::vector<std::string> arguments { "render", "--info", "PAN", "--jobs", "4",
                                         "--then", "--size", "48",  "in/",    "--then",
                                         "--at",   "-1,2",   "out/" };
    const auto texts = TakeEarlierTexts(arguments);
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[0].info, "PAN");
    EXPECT_EQ(texts[1].size, 48);
    EXPECT_THAT(arguments, ElementsAre("render", "--jobs", "4", "in/", "--at", "-1,2", "out/"));
}

TEST(OptionText, ReadsPoints) {
    const auto read = [](const char* text) {
        const auto point = ParsePoint("--at", text);
        return std::pair(point.x, point.y);
    };
    EXPECT_EQ(read("-5,+7"), std::pair(-5, 7));
    EXPECT_EQ(read("2147483647,-2147483648"), std::pair(2147483647, -2147483647 - 1));
    for (const auto* text :
         { "", "1", "1,", ",1", "1,2,3", "1.5,2", "1, 2", "2147483648,0", "+-1,2" })
        EXPECT_THROW(ParsePoint("--at", text), CommandError) << text;
}

TEST(OptionText, SplitsStringsAtCommas) {
    EXPECT_THAT(SplitStrings("--strings", ",,12,{frame}"), ElementsAre("", "", "12", "{frame}"));
    EXPECT_THAT(SplitStrings("--strings", R"(a\,b,c\d,,)"), ElementsAre("a,b", R"(c\d)", "", ""));
    for (const auto* text : { "", "a,b,c", "a,b,c,d,e" })
        EXPECT_THROW(SplitStrings("--strings", text), CommandError) << text;
}

// A file loses its mark and its last line break, and nothing in it is an escape.
TEST(OptionText, DialogueBreaksItsLinesWithCarriageReturns) {
    const TemporaryFolder folder;
    const auto file = folder.Path() / "line.txt";
    for (const auto& [typed, text, inFile] :
         std::vector<std::tuple<std::string, std::string, std::string>> {
             { R"(one\ntwo)", "one\rtwo", "" },
             { "one\ntwo\r\nthree", "one\rtwo\rthree", "" },
             { R"(C:\\new \t)", R"(C:\new \t)", "" },
             { "@@home", "@home", "" },
             { "@" + file.string(), "one\rtwo", "\xEF\xBB\xBFone\r\ntwo\r\n" },
             { "@" + file.string(), "one\r", "one\n\n" },
             { "@" + file.string(), R"(a\nb)", R"(a\nb)" },
             { "@" + file.string(), "", "" },
         }) {
        folder.Write("line.txt", inFile);
        EXPECT_EQ(DialogueText("--dialogue", typed), text) << typed << inFile;
    }
}

TEST(OptionText, ADialogueFileIsInTheEncodingOfTexts) {
    const TemporaryFolder folder;
    platform::TextContext context(*platform::TextEncoding::Find("CP932"));
    const platform::TextScope scope(context);
    const auto read = [&](const char* bytes) {
        return DialogueText("--dialogue", "@" + folder.Write("line.txt", bytes).string());
    };
    EXPECT_EQ(read("\x83\x4A\x83\x62\r\n\xED\x40\n"), "カッ\r纊");
    EXPECT_EQ(read("\xEF\xBB\xBFカッ\n"), "カッ");
    for (const auto* bytes : { "a\xFF", "a\x83" })
        try {
            read(bytes);
            ADD_FAILURE() << bytes;
        } catch (const CommandError& error) {
            EXPECT_THAT(error.what(), HasSubstr("line.txt: the text is not CP932"));
        }
}

TEST(TextOptions, NamesTheOptionThatIsWrong) {
    using Row = std::tuple<TextOptions, const char*>;
    for (const auto& [options, named] : {
             Row { { .info = std::string(64, 'x') }, "--info: the text has 64 bytes" },
             Row { { .info = std::string(63, 'x') + "{frame}" }, "--info: the text has 64 bytes" },
             Row { { .info = "{cut}" }, "--info: '{cut}' is no token" },
             Row { { .info = "two\nlines" }, "--info: the text has a line break" },
             Row { { .dialogue = std::string(256, 'x') }, "--dialogue: the text has 256 bytes" },
             Row { { .off = true }, "--off says how a character speaks" },
             Row { { .info = "x", .monologue = true }, "--monologue says how" },
             Row { { .font = std::string(70, 'x') }, "--font: the text has 70 bytes" },
             Row { { .color = "bleu" }, "--color: 'bleu' is no color" },
             Row { { .box = "nothing" }, "--box: 'nothing' is no color" },
             Row { { .position = "12" }, "--at: '12' is not X,Y" },
             Row { { .anchor = "bottom@safe" }, "--anchor: 'bottom@safe' is no place" },
             Row { { .margin = "1,2" }, "--margin is the distance from an anchor" },
             Row { { .anchor = "top", .margin = "1,x" }, "--margin: '1,x' is not X,Y" },
             Row { { .apply = "5-1" }, "--apply: '5-1': ends before it starts" },
         })
        try {
            MakeTrack(options, Defaults());
            ADD_FAILURE() << named;
        } catch (const CommandError& error) {
            EXPECT_EQ(error.Code(), ExitCode::kUsage);
            EXPECT_THAT(error.what(), HasSubstr(named));
        }
}

} // namespace
} // namespace telop
