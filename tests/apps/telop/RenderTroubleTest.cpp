// SPDX-License-Identifier: BSD-3-Clause
// Wrong command lines, settings, inputs, fonts and outputs: each ends with its own code, says what is
// wrong, and loses nothing.
#include <csignal>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "TelopProgram.h"
#include "host/frames/Descriptor.h"

namespace telop {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class RenderTrouble : public TelopProgram {};

TEST_F(RenderTrouble, EveryClassOfErrorHasItsCodeAndSaysWhatIsWrong) {
    WritePicture("in.png", MakeFrame(1));
    WriteSequence("a", 1, 2);
    Write("short.telop", "not 480 bytes");
    Write("bad.txt", "\xFF\xFE");
    Write("there.png", "x");
    Write("no.png", "this is no PNG");
    struct Row {
        Arguments arguments;
        int code;
        const char* message;
    };
    for (auto const& row : {
             Row { {}, 2, "render" },
             Row { { "rendr" }, 2, "'rendr' is no command" },
             Row { { "render" }, 2, "INPUT and OUTPUT" },
             Row { { "render", "in.png" }, 2, "OUTPUT" },
             Row { { "render", "in.png", "o.png", "more" }, 2, "'more' is one argument too many" },
             Row { { "render", "--inof", "x", "in.png", "o.png" }, 2, "'--inof' is no option" },
             Row { { "render", "--info", "a", "--score", "1", "in.png", "o.png" }, 2, "--score" },
             Row { { "render", "--score", "4", "in.png", "o.png" }, 2, "--score" },
             Row { { "render", "--info", "--at", "in.png", "o.png" }, 2, "--info lacks its value" },
             Row { { "render", "--opacity", "101", "in.png", "o.png" }, 2, "--opacity" },
             Row { { "render", "--scale", "nan", "in.png", "o.png" }, 2, "--scale" },
             Row { { "render", "--encoding", "EBCDIC-XX", "in.png", "o.png" }, 2, "--encoding" },
             Row { { "render", "--frames", "10-5", "in.png", "o.png" }, 2, "--frames: " },
             Row { { "render", "--apply", "x", "in.png", "o.png" }, 2, "--apply: " },
             Row { { "render", "--overwrite", "--skip-existing", "in.png", "o.png" },
                   2,
                   "--skip-existing" },
             Row { { "render", "--info", "x", "a", "o.png" }, 2, "o.png" },
             Row { { "render", "--info", "x", "in.png", "in.png" }, 2, "in.png" },
             Row { { "render", "--info", "{frame}", "--save-settings", "s", "in.png", "o.png" },
                   2,
                   "--info has tokens" },
             Row { { "render", "--info", "x", "no.png", "o.png" }, 3, "no.png" },
             Row { { "render", "--info", "x", "b/shot.####.png", "o/" }, 3, "b/" },
             Row { { "render", "--frames", "7-9", "a", "o/" }, 3, "1 to 2" },
             Row { { "render", "--settings", "short.telop", "in.png", "o.png" }, 3, "short.telop" },
             Row { { "render", "--dialogue", "@not.txt", "in.png", "o.png" }, 3, "not.txt" },
             Row { { "render", "--dialogue", "@bad.txt", "in.png", "o.png" }, 3, "bad.txt" },
             Row { { "render", "--info", "\xFF", "in.png", "o.png" }, 3, "--info" },
             Row { { "render", "--plugin", "No.bundle", "in.png", "o.png" }, 3, "No.bundle" },
             Row { { "render", "--info", "x", "in.png", "there.png" }, 5, "there.png" },
             Row { { "render", "--info", "x", "in.png", "/proc/o.png" }, 5, "/proc/o.png" },
             Row { { "render", "--info", "x", "--save-settings", "there.png" }, 5, "there.png" },
         }) {
        auto const outcome = Run(row.arguments);
        EXPECT_EQ(outcome.code, row.code) << testing::PrintToString(row.arguments) << outcome.err;
        EXPECT_THAT(outcome.err, HasSubstr(row.message)) << testing::PrintToString(row.arguments);
        EXPECT_FALSE(std::filesystem::exists(Path("o.png"))) << "after " << row.message;
    }
    EXPECT_EQ(Contents("there.png"), "x");
}

TEST_F(RenderTrouble, AFrameThatFailsIsNamedAndTheOthersAreFinished) {
    WriteSequence("a", 1, 4);
    auto const whole = Contents("a/shot.2.png");
    Write("a/shot.2.png", std::string_view(whole).substr(0, whole.size() / 2));
    auto const outcome = Render({ "--info", "x" }, "a", "b/");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.err, HasSubstr("a/shot.2.png"));
    EXPECT_THAT(outcome.err, HasSubstr("3 frames written, 1 failed"));
    EXPECT_THAT(Files("b"), ElementsAre("shot.1.png", "shot.3.png", "shot.4.png"));
}

TEST_F(RenderTrouble, FramesThatAreAskedForAndNotThereCountAsFailed) {
    WriteSequence("a", 1, 3);
    auto const outcome = Render({ "--info", "x", "--frames", "2-5" }, "a", "b/");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.err, HasSubstr("4, 5"));
    EXPECT_THAT(Files("b"), ElementsAre("shot.2.png", "shot.3.png"));
}

TEST_F(RenderTrouble, AFontThatIsNotThereIsSaidOrStopsTheRun) {
    WriteSequence("a", 1, 6);
    auto outcome = Render({ "--info", "x", "--font", "Nirgendwo Sans" }, "a", "b/");
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_THAT(outcome.err, HasSubstr("warning: "));
    EXPECT_THAT(outcome.err, HasSubstr("Nirgendwo Sans"));
    EXPECT_EQ(outcome.err.find("Nirgendwo"), outcome.err.rfind("Nirgendwo")) << "said once";

    outcome = Render({ "--info", "x", "--font", "Nirgendwo Sans", "--strict-fonts" }, "a", "c/");
    EXPECT_EQ(outcome.code, 4);
    EXPECT_THAT(outcome.err, HasSubstr("'Nirgendwo Sans' is not installed"));
    EXPECT_FALSE(std::filesystem::exists(Path("c")));
}

TEST_F(RenderTrouble, ACharacterThatNoFontHasStopsAStrictRunBeforeItsFrame) {
    WriteSequence("a", 1, 6);
    // A code point of the private use area at the very end of the last plane.
    std::string const missing = "\xF4\x8F\xBF\xBD";
    EXPECT_EQ(Render({ "--info", missing }, "a", "b/").code, 0);
    auto const outcome =
        Render({ "--info", missing, "--strict-fonts", "--jobs", "4", "--apply", "3-" }, "a", "c/");
    EXPECT_EQ(outcome.code, 4) << outcome.err;
    EXPECT_THAT(outcome.err, HasSubstr("U+10FFFD"));
    for (auto const& name : Files("c"))
        EXPECT_LT(name, "shot.3.png") << "was drawn with a stand-in";
    EXPECT_EQ(Render({ "--info", "Latin 日本語", "--strict-fonts" }, "a", "d/").code, 0);
}

TEST_F(RenderTrouble, MemoryForFewerFramesMakesThemOneAfterTheOtherOrNamesThem) {
    WriteSequence("a", 1, 6);
    ASSERT_EQ(Render({ "--info", "{frame}", "--jobs", "4" }, "a", "b/").code, 0);
    auto outcome = Render({ "--info", "{frame}", "--jobs", "4", "--memory", "1M" }, "a", "c/");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_THAT(outcome.err,
                HasSubstr("memory for frames is 1 MiB, which is enough for 2 of them"));
    for (auto const& name : Files("b"))
        EXPECT_EQ(Contents("b/" + name), Contents("c/" + name));

    std::filesystem::remove(Path("a/shot.3.png"));
    WritePicture("a/shot.3.png", MakeFrame(3, host::kRgba64, 900, 700));
    outcome = Render({ "--info", "x", "--memory", "1M" }, "a", "d/");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.err, HasSubstr("a/shot.3.png: needs "));
    EXPECT_EQ(Files("d").size(), 5U);
    auto const pam = "P6\n900 700\n255\n" + std::string(std::size_t { 900 } * 700 * 3, 'x');
    EXPECT_THAT(Render({ "--info", "x", "--memory", "1M" }, "-", "-", pam).err,
                HasSubstr("the input stream: frame 1: needs "));
    EXPECT_EQ(Render({ "--info", "x", "--memory", "much" }, "a", "e/").code, 2);
}

// Each thread asks for a stack of a gibibyte, and few of them fit.
TEST_F(RenderTrouble, ALimitOnThreadsLeavesThoseThatThereAre) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizer needs more addresses";
#endif
    WriteSequence("a", 1, 8);
    auto const outcome =
        Start({ "render", "--info", "x", "--jobs", "8", "a", "b/" }, "/dev/null", [] {
            constexpr rlim_t kGibibyte = rlim_t { 1 } << 30;
            rlimit const stack { kGibibyte, kGibibyte }, all { 3 * kGibibyte, 3 * kGibibyte };
            setrlimit(RLIMIT_STACK, &stack);
            setrlimit(RLIMIT_AS, &all);
        }).Wait();
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_THAT(outcome.err, testing::ContainsRegex("only [12] of 8 jobs run"));
    EXPECT_EQ(Files("b").size(), 8U);
}

TEST_F(RenderTrouble, NoFileTakesThePlaceOfAClosedStandardStream) {
    ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
    host::Descriptor const keeper(open(Path("pipe").c_str(), O_RDWR | O_CLOEXEC));
    auto waiting = Start({ "render", "--info", "x", "-", "out.#.png" }, Path("pipe"),
                         [] { close(STDERR_FILENO); });
    waiting.AwaitHandler(SIGTERM);
    EXPECT_EQ(waiting.FileAt(STDERR_FILENO), "/dev/null");
    waiting.Send(SIGTERM);
    waiting.Wait();
    WriteSequence("a", 1, 2);
    auto nowhere =
        Start({ "render", "--info", "x", "a", "-" }, "/dev/null", [] { close(STDOUT_FILENO); });
    EXPECT_EQ(nowhere.Wait().code, 5) << "frames that go nowhere are no success";
}

TEST_F(RenderTrouble, NamesReachTheTerminalAsTextAlone) {
    Write("a/\x1B[2J\n\xFF.png", "no picture");
    auto const outcome = Render({ "--info", "x" }, "a", "b/");
    EXPECT_THAT(outcome.err, HasSubstr("a/\\x1B[2J\\x0A\\xFF.png: is not a PNG file"));
    EXPECT_EQ(outcome.err.find('\x1B'), std::string::npos);
}

TEST_F(RenderTrouble, QuietSaysOnlyErrors) {
    WriteSequence("a", 1, 2);
    EXPECT_EQ(Render({ "--info", "x", "--font", "Nirgendwo", "-q" }, "a", "b/").err, "");
    EXPECT_THAT(Render({ "--info", "x", "-q" }, "a", "b/").err, HasSubstr("exist already"));
}

TEST_F(RenderTrouble, LinesOfProgressNameEachFrame) {
    WriteSequence("a", 1, 2);
    auto const outcome = Render({ "--info", "x", "--jobs", "1", "--progress", "lines" }, "a", "b/");
    EXPECT_THAT(outcome.err, HasSubstr("[1/2] b/shot.1.png\n[2/2] b/shot.2.png\n"));
    EXPECT_THAT(Render({ "--info", "x", "--overwrite" }, "a", "b/").err, Not(HasSubstr("[1/2]")));
}

} // namespace
} // namespace telop
