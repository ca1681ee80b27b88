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
    Write("bad.txt", "\xFF\xFE");
    Write("there.png", "x");
    Write("in.MOV", "a video");
    Write("t/1.tif", "a picture");
    WritePicture("b/shot.1.png", MakeFrame(1));
    WritePicture("b/ref.png", MakeFrame(1));
    Write("s.json", " {\"size\": 9}");
    Write("d.telop", R"({"format": "telop-document"})");
    Write("480.set", std::string(480, 'x'));
    ExpectEndings(
        "", {
                { "rendr", 2, "doctor; did you mean 'render'?" },
                { "lists shwo x", 2, "did you mean 'show'?" },
                { "render --strng , in.png o.png", 2, "did you mean '--strings'?" },
                { "render", 2, "INPUT and OUTPUT" },
                { "render in.png o.png more", 2, "'more' is one argument too many" },
                { "render --info --at in.png o.png", 2, "--info lacks its value" },
                { "render --INOF=x in.png o.png", 2, "no option; did you mean '--info'?" },
                { "render --sound 5 in.png o.png", 2, "'--sound' is no option\n" },
                { "render a.png b.png c.png o", 2, "such as shot.####.png" },
                { "render --progress lots in.png o.png", 2, "none of bar, lines and none" },
                { "render --info a --score 1 in.png o.png", 2, "--score" },
                { "render --opacity 101 in.png o.png", 2, "--opacity" },
                { "render --scale nan in.png o.png", 2, "--scale" },
                { "render --encoding EBCDIC-XX in.png o.png", 2, "--encoding" },
                { "render --frames 10-5 in.png o.png", 2, "--frames: " },
                { "render --memory much in.png o.png", 2, "'much' is no size above 0" },
                { "render --memory 0 in.png o.png", 2, "'0' is no size above 0" },
                { "render --overwrite --skip-existing in.png o.png", 2, "--skip-existing" },
                { "render --info a --then --info b --save-settings s in.png o.png", 2,
                  "--save-settings keeps one text" },
                { "render --info a --strings 1,2,3,4 in.png o.png", 2, "--strings are the parts" },
                { "render --score 0 --strings 1,2,3 in.png o.png", 2, "has 3 of the four" },
                { "render a o.mov", 2, "INPUT - | ffmpeg -f image2pipe -c:v pam -i - o.mov" },
                { "render in.png o.jpg", 2, "let the name end in .png" },
                { "render there.png o.png", 3, "there.png" },
                { "render in.MOV o/", 3, "ffmpeg -i in.MOV -f image2pipe -c:v pam - |" },
                { "render t/%d.tif o/", 3, "convert it first, for example with ffmpeg -i 1.tif" },
                { "render t o/", 3, "holds no PNG files, and frames are read as PNG" },
                { "render *.png o/", 3, "no such file or folder; the frames of a sequence" },
                { "render b o/", 3, "ref.png has no number" },
                { "render b/shot.####.png o/", 3, "b/" },
                { "render --frames 7-9 a o/", 3, "1 to 2" },
                { "render --frames -2 a o/", 3, "all up to 9 are ..9" },
                { "render --settings s.json in.png o.png", 3, "'telop settings --from s.json -o" },
                { "render --settings in.png in.png o.png", 3, "is a picture, not settings" },
                { "render --settings d.telop in.png o.png", 3, "--document d.telop' draws it" },
                { "render --document in.png o/", 3, "pictures are named as INPUT" },
                { "render --document 480.set o/", 3, "give it with --settings" },
                { "settings --from 480.set", 3, "name it as ARCHIVE, without --from" },
                { "render --dialogue @not.txt in.png o.png", 3, "not.txt" },
                { "render --dialogue @bad.txt in.png o.png", 3, "bad.txt" },
                { "render --info \xFF in.png o.png", 3, "--info" },
                { "render --plugin No.bundle in.png o.png", 3, "No.bundle" },
                { "render in.png /proc/o.png", 5, "/proc/o.png" },
                { "render --info x --save-settings there.png", 5, "there.png" },
            });
    EXPECT_FALSE(std::filesystem::exists(Path("o.png")));
    EXPECT_EQ(Contents("there.png"), "x");
}

TEST_F(RenderTrouble, FramesThatFailOrAreNotThereAreNamedAndTheOthersAreFinished) {
    WriteSequence("a", 1, 4);
    const auto whole = Contents("a/shot.2.png");
    Write("a/shot.2.png", std::string_view(whole).substr(0, whole.size() / 2));
    const auto outcome =
        Run("render --info x --frames 1-6 a b/", { .code = 1, .says = "a/shot.2.png" });
    EXPECT_THAT(outcome.err, HasSubstr("5, 6"));
    EXPECT_THAT(outcome.err, HasSubstr("3 frames written, 1 failed"));
    EXPECT_THAT(Files("b"), ElementsAre("shot.1.png", "shot.3.png", "shot.4.png"));
    Run("render --info x --frames 4-5 a c/", { .code = 1 });
}

TEST_F(RenderTrouble, FontsAndCharactersThatAreNotThereAreSaidOrStopTheRun) {
    WriteSequence("a", 1, 6);
    const std::string nowhere = "render --info x --font 'Nirgendwo Sans' a ";
    const auto outcome = Run(nowhere + "b/", { .says = "warning: " });
    EXPECT_NE(outcome.err.find("Nirgendwo Sans"), std::string::npos);
    EXPECT_EQ(outcome.err.find("Nirgendwo"), outcome.err.rfind("Nirgendwo")) << "said once";
    Run(nowhere + "c/ --strict-fonts", { .code = 4, .says = "'Nirgendwo Sans' is not installed" });
    Run("render --info x --font 'DejaVu Snas' a g/", { .says = "did you mean 'DejaVu Sans'?" });
    Run("render --info x --font dejavusans --strict-fonts a c/",
        { .code = 4, .says = "did you mean 'DejaVu Sans'?" });
    EXPECT_FALSE(std::filesystem::exists(Path("c")));

    // A code point of the private use area at the very end of the last plane.
    const std::string missing = " --info \xF4\x8F\xBF\xBD";
    Run("render a d/" + missing);
    Run("render --strict-fonts --jobs 4 --apply 3- a e/" + missing,
        { .code = 4, .says = "U+10FFFD" });
    for (const auto& name : Files("e"))
        EXPECT_LT(name, "shot.3.png") << "was drawn with a stand-in";
    Run("render --info 'Latin 日本語' --strict-fonts a f/");

    // The second of the letter's accents is above the line.
    const std::string tall = "render --font 'DejaVu Sans' --info Ẫ a ";
    Run(tall + "g2/", { .says = "warning: character U+1EAA: its top is cut off" });
    Run(tall + "h/ --strict-fonts", { .code = 4, .says = "U+1EAA" });
}

TEST_F(RenderTrouble, MemoryForFewerFramesMakesThemOneAfterTheOtherOrNamesThem) {
    WriteSequence("a", 1, 6);
    Run("render --info {frame} --jobs 1 a b/");
    Run("render --info {frame} --jobs 4 --memory 1M a c/",
        { .says = "memory for frames is 1 MiB, which is enough for 2 of them" });
    for (const auto& name : Files("b"))
        EXPECT_EQ(Contents("b/" + name), Contents("c/" + name));

    std::filesystem::remove(Path("a/shot.3.png"));
    WritePicture("a/shot.3.png", MakeFrame(3, host::kRgba64, 900, 700));
    Run("render --info x --memory 1M a d/", { .code = 1, .says = "a/shot.3.png: needs " });
    EXPECT_EQ(Files("d").size(), 5U);
    const auto pam = "P6\n900 700\n255\n" + std::string(std::size_t { 900 } * 700 * 3, 'x');
    Run("render --info x --memory 1M - -",
        { .code = 3, .says = "the input stream: frame 1: needs ", .input = pam });
}

TEST_F(RenderTrouble, AFrameWithoutItsTextIsAFailedOne) {
    WriteSequence("a", 1, 3);
    Write("fonts.conf", "<fontconfig></fontconfig>");
    std::string large(60, 'W'); // 247 MB at 120 points
    for (int i = 0; i < 60; ++i)
        large += "\\n.";
    using Row = std::tuple<std::string, std::function<void()>, const char*>;
    for (const auto& [text, inChild, reason] : {
             Row { "x --size 32767", {}, "pixels, more than a picture can have" },
                 Row { "x", [this] { setenv("FONTCONFIG_FILE", Path("fonts.conf").c_str(), 1); },
                       "no font is installed" },
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // they need more addresses
                 Row { large + " --size 120",
                       [] {
                           const rlimit small { 280 << 20, 280 << 20 };
                           setrlimit(RLIMIT_AS, &small);
                       },
                       "pixels, more than there is memory for" },
#endif
         }) {
        std::filesystem::remove_all(Path("b"));
        const auto outcome =
            Start("render --apply 2 --jobs 1 a b/ --dialogue " + text, "/dev/null", inChild).Wait();
        EXPECT_EQ(outcome.code, 1) << outcome.err;
        EXPECT_THAT(outcome.err, HasSubstr("a/shot.2.png: the text is not drawn: "));
        EXPECT_THAT(outcome.err, HasSubstr(reason));
        EXPECT_THAT(Files("b"), ElementsAre("shot.1.png", "shot.3.png"));
    }
}

// Each thread asks for a stack of a gibibyte, and few of them fit.
TEST_F(RenderTrouble, ALimitOnThreadsLeavesThoseThatThereAre) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizer needs more addresses";
#endif
    WriteSequence("a", 1, 8);
    const auto outcome =
        Start("render --info x --jobs 8 a b/", "/dev/null", [] {
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
    const host::Descriptor keeper(open(Path("pipe").c_str(), O_RDWR | O_CLOEXEC));
    auto waiting = Start("render --info x - out.#.png", Path("pipe"), [] { close(STDERR_FILENO); });
    waiting.AwaitHandler(SIGTERM);
    EXPECT_EQ(std::filesystem::read_symlink("/proc/" + std::to_string(waiting.process) + "/fd/2"),
              "/dev/null");
    waiting.Send(SIGTERM);
    waiting.Wait();
    WriteSequence("a", 1, 2);
    auto nowhere = Start("render --info x a -", "/dev/null", [] { close(STDOUT_FILENO); });
    EXPECT_EQ(nowhere.Wait().code, 5) << "frames that go nowhere are no success";
}

TEST_F(RenderTrouble, NamesReachTheTerminalAsTextAlone) {
    Write("a/\x1B[2J\n\xFF.png", "no picture");
    const auto outcome = Run("render --info x a b/",
                             { .code = 3, .says = "a/\\x1B[2J\\x0A\\xFF.png: is not a PNG file" });
    EXPECT_EQ(outcome.err.find('\x1B'), std::string::npos);
}

TEST_F(RenderTrouble, ARunSaysAsMuchAsIsAskedFor) {
    WriteSequence("a", 1, 2);
    EXPECT_EQ(Run("render --info x --font Nirgendwo -q a b/").err, "");
    Run("render --info x -q a b/", { .code = 5, .says = "exist already" });
    const std::string again = "render --info x --overwrite --jobs 1 a b/";
    EXPECT_THAT(Run(again).err, Not(HasSubstr("[1/2]")));
    Run(again + " --progress lines", { .says = "[1/2] b/shot.1.png\n[2/2] b/shot.2.png\n" });
}

} // namespace
} // namespace telop
