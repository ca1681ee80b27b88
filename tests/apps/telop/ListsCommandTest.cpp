// SPDX-License-Identifier: BSD-3-Clause
// "telop lists", through the real program.
#include "TelopProgram.h"

namespace telop {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kCut = "\x83\x4A\x83\x62\x83\x67"; // カット in CP932

class ListsCommand : public TelopProgram {
protected:
    std::string Lines(int count, const std::string& end) {
        std::string text;
        for (int i = 1; i <= count; ++i)
            text += "text " + std::to_string(i) + end;
        return text;
    }
};

TEST_F(ListsCommand, ShowPrintsWhatTheEditorReads) {
    Write("list.txt", "F.I.\rback\\slash\r\x1B[2J");
    auto const shown = Run({ "lists", "show", "list.txt" });
    EXPECT_EQ(shown.code, 0);
    EXPECT_EQ(shown.out, " 1  F.I.\n 2  back\\\\slash\n 3  \\x1B[2J\n");
    EXPECT_THAT(shown.err, IsEmpty());
    EXPECT_EQ(Run({ "lists", "show", "--json", "-" }, "PAN\rA\"B\r").out,
              "[\n  \"PAN\",\n  \"A\\\"B\"\n]\n");
}

TEST_F(ListsCommand, ShowWarnsOfWhatIsLost) {
    struct Row {
        std::string file;
        const char* warning;
        const char* shown;
    };
    for (auto const& row : {
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
        Write("list.txt", row.file);
        auto const outcome = Run({ "lists", "show", "list.txt" });
        EXPECT_EQ(outcome.code, 0);
        EXPECT_THAT(outcome.err, AllOf(HasSubstr("list.txt: "), HasSubstr(row.warning)));
        EXPECT_THAT(outcome.out, HasSubstr(row.shown));
    }
}

TEST_F(ListsCommand, SaveConvertsBetweenEncodingsAndLineEnds) {
    struct Row {
        Arguments options;
        std::string from, saved;
    };
    std::string const cut = kCut;
    for (auto const& row : {
             Row { {}, "PAN\nカット\r\n\r\nA\rB", "PAN\rカット\rA\rB\r" },
             Row { {}, "\xEF\xBB\xBFPAN\r\n", "PAN\r" },
             Row { { "--encoding", "CP932" }, "カット\n", cut + "\r" },
             Row { { "--from-encoding", "sjis" }, cut + "\r\n", "カット\r" },
             Row { { "--line-ends", "crlf" }, "A\rB\r", "A\r\nB\r\n" },
             Row { { "--line-ends", "LF", "--encoding", "CP932", "--from-encoding", "CP932" },
                   cut + "\rB",
                   cut + "\nB\n" },
         }) {
        Write("from.txt", row.from);
        Arguments arguments { "lists", "save", "to.txt", "--from", "from.txt", "--overwrite" };
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        auto const outcome = Run(arguments);
        EXPECT_EQ(outcome.code, 0) << outcome.err;
        EXPECT_EQ(Contents("to.txt"), row.saved);
        EXPECT_THAT(outcome.err, IsEmpty());
    }
    EXPECT_EQ(Run({ "lists", "save", "-" }, "PAN\n").out, "PAN\r");
}

TEST_F(ListsCommand, SaveRefusesWhatDoesNotFitOrCutsIt) {
    auto const x62 = std::string(62, 'x');
    struct Row {
        Arguments options;
        std::string from;
        const char* refusal;
        const char* warning; // with --cut; null: refused all the same
        std::string saved;
    };
    for (auto const& row : {
             Row { {},
                   "A\n" + x62 + "あ\n",
                   "line 2 has 65 bytes in UTF-8, and the limit is 63",
                   "is cut to",
                   "A\r" + x62 + "\r" },
             Row { {},
                   Lines(21, "\n"),
                   "has 21 entries, and the limit is 20",
                   "the first 20",
                   Lines(20, "\r") },
             Row { {}, "\n\n", "has no entry", nullptr, "" },
             Row { {},
                   "A\n\n" + std::string(kCut),
                   "line 3: '\\x83J\\x83b\\x83g' is no text in UTF-8",
                   nullptr,
                   "" },
             Row { { "--encoding", "CP932" },
                   "한글\n",
                   "line 1: '한글' has characters that CP932",
                   nullptr,
                   "" },
         }) {
        for (bool const cut : { false, true }) {
            Write("to.txt", "old");
            Write("from.txt", row.from);
            Arguments arguments { "lists", "save", "to.txt", "--from", "from.txt", "--overwrite" };
            arguments.insert(arguments.end(), row.options.begin(), row.options.end());
            if (cut)
                arguments.emplace_back("--cut");
            auto const outcome = Run(arguments);
            bool const saves = cut && row.warning;
            EXPECT_EQ(outcome.code, saves ? 0 : 3) << outcome.err;
            EXPECT_EQ(Contents("to.txt"), saves ? row.saved : "old");
            EXPECT_THAT(outcome.err,
                        AllOf(HasSubstr("from.txt"), HasSubstr(saves ? row.warning : row.refusal)));
        }
    }
}

TEST_F(ListsCommand, LoadPutsAFileIntoTheListsAndSaveTakesItOut) {
    Write("names.txt", std::string(kCut) + "\rA\\B\r");
    auto const loaded = Run({ "lists", "load", "names.txt", "--list", "character", "--encoding",
                              "CP932", "-o", "lists.json" });
    ASSERT_EQ(loaded.code, 0) << loaded.err;
    EXPECT_THAT(Contents("lists.json"),
                AllOf(HasSubstr("FOLLOW"), HasSubstr("カット"), HasSubstr("\"locked\": false")));
    Write("info.txt", "PAN\r");
    ASSERT_EQ(Run({ "lists", "load", "info.txt", "--into", "lists.json", "-o", "both.json" }).code,
              0);
    EXPECT_THAT(Contents("both.json"),
                AllOf(testing::Not(HasSubstr("FOLLOW")), HasSubstr("PAN"), HasSubstr("カット")));
    ASSERT_EQ(Run({ "lists", "save", "--json", "both.json", "--list", "character", "again.txt",
                    "--encoding", "CP932" })
                  .code,
              0);
    EXPECT_EQ(Contents("again.txt"), Contents("names.txt"));
    EXPECT_EQ(Run({ "lists", "save", "-", "--json", "both.json" }).out, "PAN\r");
}

TEST_F(ListsCommand, NamesWhatIsWrong) {
    Write("there.txt", "A\r");
    Write("empty.txt", "");
    std::string const long64 = "[\"" + std::string(64, 'x') + "\"]";
    struct Row {
        Arguments arguments;
        std::string input;
        int code;
        const char* message;
    };
    for (auto const& row : {
             Row { { "show", "empty.txt" }, "", 3, "empty.txt: is empty" },
             Row { { "show", "none.txt" }, "", 3, "none.txt" },
             Row { { "show", "-" }, "\r\r", 3, "has no entry" },
             Row { {}, "", 2, "the commands are show load save" },
             Row { { "show", "--encoding", "klingon", "there.txt" }, "", 2, "klingon" },
             Row { { "save", "--from-encoding", "klingon", "x" }, "A", 2, "klingon" },
             Row { { "save", "--line-ends", "none", "x" }, "A", 2, "--line-ends" },
             Row { { "save", "there.txt" }, "A", 5, "there.txt: exists already; --overwrite" },
             Row { { "save", "/dev/full" }, "A", 5, "No space left" },
             Row { { "save", "x", "--json", "-" }, "[]", 3, "has no entry" },
             Row { { "save", "x", "--json", "-" }, "[\"A\", \"\"]", 3, "entry 2: is empty" },
             Row { { "save", "x", "--json", "-" }, "[\"A\", 3]", 3, "entry 2: expected a text" },
             Row { { "save", "x", "--json", "-" }, "[\"A\\rB\"]", 3, "would not come back" },
             Row { { "save", "x", "--json", "-" }, "[\"A\\\\q\"]", 3, "is no escape" },
             Row { { "save", "x", "--json", "-" }, long64, 3, "64 bytes" },
             Row { { "save", "x", "--json", "-" }, "{\"info\": {}}", 3, "no list info.registered" },
             Row { { "save", "x", "--json", "-" }, "[", 3, "not readable as JSON" },
             Row { { "load", "there.txt", "--into", "-" }, "{\"infos\": {}}", 3, "infos: no such" },
             Row { { "load", "there.txt", "--into", "-" },
                   "{\"info\": {\"history\": [\"\"]}}",
                   3,
                   "info.history: entry 1: is empty" },
             Row { { "load", "there.txt", "-o", "there.txt" }, "", 5, "exists already" },
         }) {
        Arguments arguments { "lists" };
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        auto const outcome = Run(arguments, row.input);
        EXPECT_EQ(outcome.code, row.code) << testing::PrintToString(arguments) << outcome.err;
        EXPECT_THAT(outcome.err, HasSubstr(row.message)) << testing::PrintToString(arguments);
    }
    EXPECT_EQ(Contents("there.txt"), "A\r");
    EXPECT_THAT(Files(""), testing::Not(testing::Contains("x")));
}

} // namespace
} // namespace telop
