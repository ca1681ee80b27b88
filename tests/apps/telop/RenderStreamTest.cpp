// SPDX-License-Identifier: BSD-3-Clause
// Streams of pictures through the real program.
#include <csignal>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "TelopProgram.h"

namespace telop {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class RenderStream : public TelopProgram {
protected:
    static constexpr int kWidth = 160, kHeight = 48;

    static std::string Header() {
        return "P7\nWIDTH 160\nHEIGHT 48\nDEPTH 3\nMAXVAL 255\nTUPLTYPE RGB\nENDHDR\n";
    }
    static host::Frame SmallFrame(int seed) {
        return MakeFrame(seed, host::kRgb24, kWidth, kHeight);
    }
    static std::string Pam(const host::Frame& frame) {
        auto pam = Header();
        for (int y = 0; y < kHeight; ++y) {
            const auto row = frame.image->Row(y);
            pam.append(row.begin(), row.end());
        }
        return pam;
    }
    static std::string Stream(int frames) {
        std::string stream;
        for (int i = 1; i <= frames; ++i)
            stream += Pam(SmallFrame(i));
        return stream;
    }
    static std::size_t PamSize() { return Header().size() + std::size_t { kWidth } * kHeight * 3; }
};

TEST_F(RenderStream, FramesComeOutInOrderAndOnlyTheTextDiffers) {
    const auto outcome = Run("render --info {frame} --at 4,4 --size 20 --start 1001 --apply 1003- "
                             "--jobs 4 - -",
                             { .input = Stream(30) });
    ASSERT_EQ(outcome.out.size(), 30 * PamSize());
    for (int i = 1; i <= 30; ++i) {
        const auto name = std::to_string(1000 + i);
        WritePicture(name + ".png", SmallFrame(i));
        if (i >= 3) {
            Run("render --at 4,4 --size 20 --overwrite --info " + name + " " + name +
                ".png drawn.png");
        }
        ASSERT_EQ(outcome.out.substr((i - 1) * PamSize(), PamSize()),
                  Pam(ReadPicture(i < 3 ? name + ".png" : "drawn.png")))
            << i;
    }
}

TEST_F(RenderStream, MeetsFilesOnEitherSide) {
    auto outcome =
        Run("render --info x --apply 9 --frames 2-3 - new/shot.%02d.png", { .input = Stream(4) });
    EXPECT_EQ(Compare(ReadPicture("new/shot.02.png"), SmallFrame(2)).pixels, 0);
    EXPECT_FALSE(std::filesystem::exists(Path("new/shot.01.png")));

    outcome = Run("render --info x --apply 9 new/shot.%02d.png -");
    EXPECT_EQ(outcome.out, Pam(SmallFrame(2)) + Pam(SmallFrame(3)));

    // Frame 2 of a longer stream would be there.
    Run("render --info x - new/shot.%02d.png",
        { .code = 5, .says = "shot.02.png", .input = Stream(1) });
}

TEST_F(RenderStream, ATextThatFailsCostsNoFrame) {
    const auto outcome = Run(
        "render --info " + std::string(62, 'x') + "{frame} - -",
        { .code = 1, .says = "frame 10 of the input stream: direction: ", .input = Stream(11) });
    ASSERT_EQ(outcome.out.size(), 11 * PamSize());
    EXPECT_EQ(outcome.out.substr(9 * PamSize(), PamSize()), Pam(SmallFrame(10)));
}

TEST_F(RenderStream, ABrokenStreamIsNamedAndItsWholeFramesAreKept) {
    auto cut = Stream(3);
    cut.resize(cut.size() - 100);
    const auto outcome = Run("render --info x - -", { .code = 1, .says = "frame 3", .input = cut });
    EXPECT_EQ(outcome.out.size(), 2 * PamSize());

    const auto nothing = Run("render --info x - -", { .code = 3, .input = "this is no picture" });
    EXPECT_EQ(nothing.out, "");
}

TEST_F(RenderStream, RefusesWhatAStreamCannotDo) {
    WritePicture("in.png", SmallFrame(1));
    ExpectEndings("render --info", {
                                       { "x - -", 3, "" },
                                       { "x --frames 5- - -", 3, "", Stream(2) },
                                       { "{file} - -", 2, "{file}", Stream(1) },
                                       { "{count} - -", 2, "{count}", Stream(1) },
                                       { "x - one.png", 2, "%04d", Stream(1) },
                                       { "x --start 5 in.png -", 2, "--start" },
                                   });
}

TEST_F(RenderStream, AReaderThatWentAwayIsAnError) {
    Write("stream", Stream(60));
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
    close(ends[0]);
    auto run = Start("render --info x - -", Path("stream"), [&] { dup2(ends[1], STDOUT_FILENO); });
    close(ends[1]);
    const auto outcome = run.Wait();
    EXPECT_EQ(outcome.code, 5) << outcome.err;
    EXPECT_THAT(outcome.err, HasSubstr("output stream"));
}

TEST_F(RenderStream, AnInterruptionEndsTheWaitForASilentStream) {
    ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
    const int keeper = open(Path("pipe").c_str(), O_RDWR | O_CLOEXEC);
    const auto stream = Stream(1);
    ASSERT_EQ(write(keeper, stream.data(), stream.size()), static_cast<ssize_t>(stream.size()));
    int told[2];
    ASSERT_EQ(pipe2(told, O_CLOEXEC), 0);
    auto run = Start("render --info x --progress lines - out.#.png", Path("pipe"),
                     [&] { dup2(told[1], STDERR_FILENO); });
    char first;
    EXPECT_EQ(read(told[0], &first, 1), 1) << "of the line about the only frame";
    EXPECT_TRUE(std::filesystem::exists(Path("out.1.png")));
    run.Send(SIGTERM);
    EXPECT_EQ(run.Wait().code, 143);
    for (const int file : { keeper, told[0], told[1] })
        close(file);
    EXPECT_THAT(Files("."), testing::Not(testing::Contains(HasSubstr(".part"))));
}

// Nobody reads the pipe, which takes the first frames and then no more, or the messages.
TEST_F(RenderStream, AnInterruptionEndsTheWaitForAReaderThatPauses) {
    Write("stream", Stream(100));
    WritePicture("in.png", SmallFrame(1));
    ASSERT_EQ(mkfifo(Path("pipe.png").c_str(), 0600), 0);
    struct Row {
        const char* arguments;
        int stream; // that goes to the pipe
    };
    for (const auto& row : {
             Row { "- -", STDOUT_FILENO },
             Row { "in.png pipe.png", -1 },
             Row { "--progress lines in.png out.png", STDERR_FILENO },
         }) {
        int ends[2];
        ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
        fcntl(ends[1], F_SETPIPE_SZ, 4096);
        if (row.stream == STDERR_FILENO)
            ASSERT_EQ(write(ends[1], std::string(4096, 'x').data(), 4096), 4096);
        auto run = Start(std::string("render --info x ") + row.arguments, Path("stream"),
                         [&] { dup2(ends[1], row.stream); });
        run.AwaitHandler(SIGINT);
        for (int held = 0; row.stream == STDOUT_FILENO && held < 500000;)
            ioctl(ends[0], FIONREAD, &held);
        run.Send(SIGINT);
        const auto outcome = run.Wait();
        EXPECT_EQ(outcome.code, 130) << row.arguments;
        EXPECT_THAT(outcome.err, HasSubstr(row.stream == STDERR_FILENO ? "" : "interrupted after"));
        close(ends[0]);
        close(ends[1]);
    }
}

} // namespace
} // namespace telop
