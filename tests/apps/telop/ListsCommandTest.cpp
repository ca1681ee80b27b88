// SPDX-License-Identifier: BSD-3-Clause
// "telop lists", through the real program.
#include "TelopProgram.h"

namespace telop {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kCut = "\x83\x4A\x83\x62\x83\x67"; // カット in CP932

std::string Lines(int count, const std::string& end) {
    std::string text;
    for (int i = 1; i <= count; ++i)
        text += "text " + std::to_string(i) + end;
    return text;
}

class ListsCommand : public TelopProgram {};

TEST_F(ListsCommand, ShowPrintsWhatTheEditorReads) {
    Write("list.txt", "F.I.\rback\\slash\r\x1B[2J");
    const auto shown = Run("lists show list.txt");
    EXPECT_EQ(shown.out, " 1  F.I.\n 2  back\\\\slash\n 3  \\x1B[2J\n");
    EXPECT_THAT(shown.err, IsEmpty());
    EXPECT_EQ(Run("lists show --json -", { .input = "PAN\rA\"B\r" }).out,
              "[\n  \"PAN\",\n  \"A\\\"B\"\n]\n");
}

TEST_F(ListsCommand, ShowWarnsOfWhatIsLost) {
    using Row = std::tuple<std::string, const char*, const char*>;
    for (const auto& [file, warning, shown] : {
             Row { "A\r\rB\r", "empty lines are skipped: 1", " 2  B\n" },
             Row { "A\r" + std::string(100, 'x') + "\r", "line 2 has 100 bytes and is cut to 63\n",
                   " 2  xxx" },
             Row { std::string(62, 'x') + "あ\r", "cut to 63, in the middle of a character",
                   "\\xE3\n" },
             Row { Lines(25, "\r"), "25 lines with text; the first 20", "20  text 20\n" },
             Row { "A\r\nB\r\n", "end with CR LF", " 2  \\x0AB\n" },
             Row { "A\nB\n", "end with LF", " 1  A\\x0AB\\x0A\n" },
             Row { "\xEF\xBB\xBF"
                   "A\r",
                   "byte-order mark", "A\n" },
             Row { "A\r" + std::string(kCut) + "\r", "line 2 is no text in UTF-8", " 2  \\x83J" },
             Row { std::string("A\0B\rC", 5), "zero byte", " 2  C\n" },
         }) {
        Write("list.txt", file);
        const auto outcome = Run("lists show list.txt");
        EXPECT_THAT(outcome.err, AllOf(HasSubstr("list.txt: "), HasSubstr(warning)));
        EXPECT_THAT(outcome.out, HasSubstr(shown));
    }
}

TEST_F(ListsCommand, SaveConvertsBetweenEncodingsAndLineEndsAndCutsWhenAsked) {
    using Row = std::tuple<const char*, std::string, std::string>;
    const std::string cut = kCut;
    const auto x62 = std::string(62, 'x');
    for (const auto& [options, from, saved] : {
             Row { "", "PAN\nカット\r\n\r\nA\rB", "PAN\rカット\rA\rB\r" },
             Row { "", "\xEF\xBB\xBFPAN\r\n", "PAN\r" },
             Row { "--encoding CP932", "カット\n", cut + "\r" },
             Row { "--from-encoding sjis", cut + "\r\n", "カット\r" },
             Row { "--line-ends crlf", "A\rB\r", "A\r\nB\r\n" },
             Row { "--line-ends LF --encoding CP932 --from-encoding CP932", cut + "\rB",
                   cut + "\nB\n" },
         }) {
        Write("from.txt", from);
        const auto outcome =
            Run("lists save to.txt --from from.txt --overwrite " + std::string(options));
        EXPECT_EQ(Contents("to.txt"), saved);
        EXPECT_THAT(outcome.err, IsEmpty());
    }
    EXPECT_EQ(Run("lists save -", { .input = "PAN\n" }).out, "PAN\r");
    const auto shortened = Run("lists save --cut -", { .input = "A\n" + x62 + "あ\n" });
    EXPECT_EQ(shortened.out, "A\r" + x62 + "\r");
    EXPECT_THAT(shortened.err, HasSubstr("line 2 has 65 bytes in UTF-8 and is cut to"));
    const auto fewer = Run("lists save --cut -", { .input = Lines(21, "\n") });
    EXPECT_EQ(fewer.out, Lines(20, "\r"));
    EXPECT_THAT(fewer.err, HasSubstr("the first 20"));
}

TEST_F(ListsCommand, LoadPutsAFileIntoTheListsAndSaveTakesItOut) {
    Write("names.txt", std::string(kCut) + "\rA\\B\r");
    const auto loaded = Run("lists load names.txt --list character --encoding CP932 -o lists.json");
    EXPECT_THAT(Contents("lists.json"),
                AllOf(HasSubstr("FOLLOW"), HasSubstr("カット"), HasSubstr("\"locked\": false")));
    Write("info.txt", "PAN\r");
    Run("lists load info.txt --into lists.json -o both.json");
    EXPECT_THAT(Contents("both.json"),
                AllOf(testing::Not(HasSubstr("FOLLOW")), HasSubstr("PAN"), HasSubstr("カット")));
    Run("lists save --json both.json --list character again.txt --encoding CP932");
    EXPECT_EQ(Contents("again.txt"), Contents("names.txt"));
    EXPECT_EQ(Run("lists save - --json both.json").out, "PAN\r");
}

TEST_F(ListsCommand, LoadTakesAnyLineEnds) {
    for (const std::string text : { "\xEF\xBB\xBFカ\nB\n", "カ\r\n\r\nB", "カ\rB\r" }) {
        const auto loaded = Run("lists load -", { .input = text });
        Write("lists.json", loaded.out);
        EXPECT_EQ(Run("lists save - --json lists.json").out, "カ\rB\r");
        EXPECT_THAT(loaded.err, testing::Not(HasSubstr("LF")));
    }
}

TEST_F(ListsCommand, NamesWhatIsWrong) {
    Write("there.txt", "A\r");
    Write("empty.txt", "");
    const auto entry = [](const std::string& json) { return "[\"A\", " + json + "]"; };
    ExpectEndings("lists",
                  {
                      { "", 2, "the commands are show load save" },
                      { "show empty.txt", 3, "empty.txt: is empty" },
                      { "show none.txt", 3, "none.txt" },
                      { "show -", 3, "has no entry", "\r\r" },
                      { "save --from-encoding klingon x", 2, "klingon", "A" },
                      { "save --line-ends none x", 2, "'none' is none of cr, crlf and lf", "A" },
                      { "load --list inof x", 2, "'inof' is none of info and character" },
                      { "save x", 3, "line 2 has 65 bytes in UTF-8, and the limit is 63",
                        "A\n" + std::string(62, 'x') + "あ\n" },
                      { "save x", 3, "has 21 entries, and the limit is 20", Lines(21, "\n") },
                      { "save x --cut", 3, "has no entry", "\n\n" },
                      { "save x --cut", 3, "line 3: '\\x83J\\x83b\\x83g' is no text in UTF-8",
                        "A\n\n" + std::string(kCut) },
                      { "save x --cut --encoding CP932", 3,
                        "line 1: '한글' has characters that CP932", "한글\n" },
                      { "save there.txt", 5, "there.txt: exists already; --overwrite", "A" },
                      { "save /dev/full", 5, "No space left", "A" },
                      { "load there.txt -o there.txt", 5, "exists already" },
                      { "load there.txt --into -", 3, "infos: no such", "{\"infos\": {}}" },
                  });
    ExpectEndings("lists save x --json -",
                  {
                      { "", 3, "entry 2: is empty", entry("\"\"") },
                      { "", 3, "would not come back", entry("\"A\\rB\"") },
                      { "", 3, "entry 2 has 64 bytes", entry("\"" + std::string(64, 'x') + "\"") },
                      { "", 3, "no list info.registered", "{\"info\": {}}" },
                      { "", 3, "not readable as JSON", "[" },
                  });
    EXPECT_EQ(Contents("there.txt"), "A\r");
    EXPECT_THAT(Files(""), testing::Not(testing::Contains("x")));
}

} // namespace
} // namespace telop
