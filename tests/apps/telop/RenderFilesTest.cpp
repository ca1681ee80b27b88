// SPDX-License-Identifier: BSD-3-Clause
// Pictures and sequences through the real program and the real plug-in.
#include <csignal>

#include <thread>

#include "TelopProgram.h"

namespace telop {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class RenderFiles : public TelopProgram {
protected:
    // The difference that a text makes in a picture.
    Difference Drawn(const std::string& options, host::PixelFormat format = host::kRgb24) {
        const auto name = std::to_string(++m_pictures) + ".png";
        WritePicture("in" + name, MakeFrame(1, format));
        const auto outcome = Run("render " + options + " in" + name + " out" + name);
        return Compare(ReadPicture("in" + name), ReadPicture("out" + name));
    }

private:
    int m_pictures = 0;
};

TEST_F(RenderFiles, DrawsOnlyWhereTheTextIs) {
    for (const auto format : { host::kRgb24, host::kRgba32, host::kRgba64 }) {
        const auto drawn = Drawn("--info PAN --at 40,30 --size 24", format);
        EXPECT_GT(drawn.pixels, 100) << format.depth;
        EXPECT_EQ(drawn.bounds.left, 40);
        EXPECT_EQ(drawn.bounds.top, 30);
        EXPECT_LT(drawn.bounds.right, 160);
        EXPECT_LT(drawn.bounds.bottom, 80);
    }
    const auto moved = Drawn("--info x --at 100,60 --scale 0.5 --origin 10,20");
    EXPECT_EQ(moved.bounds.left, 40);
    EXPECT_EQ(moved.bounds.top, 10);
}

TEST_F(RenderFiles, EveryKindOfTextIsDrawn) {
    Write("lines.txt", "first\nsecond\n");
    for (const auto* options : { "--info T.U.", "--character Hanako", "--dialogue @lines.txt",
                                 "--score 3 --strings A,B,C,D", "" })
        EXPECT_GT(Drawn(options).pixels, 100) << options;
}

TEST_F(RenderFiles, TokensAreFilledIn) {
    WriteSequence("a", 7, 7);
    Run("render --info '{frame-1:03} {file} {{}}' a/shot.#.png b/");
    Run("render --info '006 shot.7 {{}}' a/shot.7.png six.png");
    EXPECT_EQ(Contents("b/shot.7.png"), Contents("six.png"));
}

TEST_F(RenderFiles, TokensOfTheShotAreThoseOfAllItsFrames) {
    WriteSequence("cut", 1001, 1004);
    Run("render --info '{id} {tc} {seconds:.2} {first}-{last} {count} {name} {shot}' "
        "--define id={1} --define shot=7 --fps 29.97 --timecode 23:59:59;29 "
        "--save-document s.telop --frames 1003 cut/ b/");
    Run("render --info '{{1}} 00:00:00;01 0.06 1001-1004 4 cut 7' cut/shot.1003.png same.png");
    EXPECT_EQ(Contents("b/shot.1003.png"), Contents("same.png"));
    Run("render --document s.telop --frames 1003 c/");
    EXPECT_EQ(Contents("c/shot.1003.png"), Contents("same.png"));
    Run("render --document s.telop --fps 25 --define shot=8 --timecode 1:0:0:0 --frames 1001 d/");
    Run("render --info '{{1}} 01:00:00:00 0.00 1001-1004 4 cut 8' cut/shot.1001.png eight.png");
    EXPECT_EQ(Contents("d/shot.1001.png"), Contents("eight.png"));
    // The moment of the run is the same in all its frames, and no other text.
    const auto now = Run("render --info '{date}' --frames 1001 cut/ now/");
    EXPECT_THAT(now.err, testing::Not(testing::HasSubstr("warning")));
    Run("render --info '{{date}}' --frames 1001 cut/ words/");
    EXPECT_NE(Contents("now/shot.1001.png"), Contents("words/shot.1001.png"));

    ExpectEndings("render --info {tc} cut/ e/",
                  { { "--fps 23", 2, "--fps: '23'" },
                    { "--timecode 1:2:3:24", 2, "--timecode: '1:2:3:24'" },
                    { "--drop-frame", 2, "--drop-frame: drop-frame time code is for" },
                    { "--define shot", 2, "--define: 'shot' is not KEY=VALUE" },
                    { "--define frame=1", 2, "--define: {frame} has a meaning" },
                    { "--define 1st=1", 2, "--define: '1st' cannot" } });
}

TEST_F(RenderFiles, OnlyFramesInTheRangesAreMadeAndDrawn) {
    WriteSequence("a", 1, 6);
    const auto outcome =
        Run("render --info PAN --frames 1-5:2,6 --apply 3- a/shot.%d.png b/shot.%03d.png");
    EXPECT_THAT(Files("b"),
                ElementsAre("shot.001.png", "shot.003.png", "shot.005.png", "shot.006.png"));
    for (int number : { 1, 3, 5, 6 }) {
        const auto drawn =
            Compare(MakeFrame(number), ReadPicture("b/shot.00" + std::to_string(number) + ".png"));
        EXPECT_EQ(drawn.pixels > 0, number >= 3) << number;
    }
}

TEST_F(RenderFiles, NegativeFramesAreChosenDrawnAndWrittenByTheirNumbers) {
    for (const auto* name : { "a/shot.-0005.png", "a/shot.-0004.png", "a/shot.0003.png" })
        WritePicture(name, MakeFrame(3));
    Run("render --info '{frame} {frame-1:03}' --frames=-5--4,3 --apply ..-5 a b/s.####.png");
    EXPECT_THAT(Files("b"), ElementsAre("s.-0004.png", "s.-0005.png", "s.0003.png"));
    Run("render --info '-5 -06' a/shot.0003.png five.png");
    EXPECT_EQ(Contents("b/s.-0005.png"), Contents("five.png"));
    EXPECT_EQ(Compare(MakeFrame(3), ReadPicture("b/s.-0004.png")).pixels, 0);
    Run("render --info x --frames -5--4 a/shot.%04d.png c/");
    EXPECT_THAT(Files("c"), ElementsAre("shot.-0004.png", "shot.-0005.png"));
}

TEST_F(RenderFiles, ANumberThatAPictureDoesNotHaveIsTold) {
    for (const auto* name : { "title.png", "cut2.png" })
        WritePicture(name, MakeFrame(3));
    EXPECT_EQ(Run("render --info {frame} cut2.png a.png").err, "1 frame written\n");
    EXPECT_EQ(Run("render --info {file} title.png b.png").err, "1 frame written\n");
    Run("render --score 1 title.png c.png", { .says = "title.png: its name has no number" });
}

TEST_F(RenderFiles, ATextOnNoFrameIsToldWithItsReason) {
    WriteSequence("a", 7, 9);
    struct Row {
        const char* options;
        const char* reason; // null: the text is on a frame
    };
    for (const auto& row : {
             Row { "--info x --apply 10-", "it is on 10-, and the frames are 7 to 9" },
             Row { "--info x --apply ..8 --frames 9", "it is on ..8, and the frames are 9\n" },
             Row { "--character '' --off", "the character's name is empty" },
             Row { "--info ''", "the direction is empty" },
             Row { "--dialogue ''", "the dialogue is empty" },
             Row { "--info x --at 5000,40", "at 5000,40 it lies outside the picture" },
             Row { "--info x --at 54,41 --scale 8", "which has 320 x 120 pixels (shot.7.png)" },
             Row { "--info x --opacity 0 --box none", "its opacity is 0" },
             Row { "--info x --apply 9", nullptr },
             Row { "--info {file} --at 310,100", nullptr },
             Row { "--info x --color white --box none --opacity 100", nullptr },
             Row { "--info x --color black --box none --opacity 100", nullptr },
         }) {
        const auto err = Run("render --overwrite a b/ " + std::string(row.options)).err;
        const std::string warning = "warning: the text is on no frame: ";
        EXPECT_EQ(err.find(warning) != std::string::npos, row.reason != nullptr) << row.options;
        EXPECT_THAT(err, HasSubstr(row.reason ? row.reason : "")) << row.options;
    }
}

TEST_F(RenderFiles, ExistingOutputsAreKeptUnlessTheyAreToBeReplacedOrNotWhole) {
    WriteSequence("a", 1, 6);
    WritePicture("b/shot.2.png", MakeFrame(7));
    const auto precious = Contents("b/shot.2.png");
    Run("render --info x a b", { .code = 5, .says = "b/shot.2.png" });
    EXPECT_THAT(Files("b"), ElementsAre("shot.2.png")) << "refused before the first frame";

    Write("b/shot.3.png", "");
    Write("b/shot.4.png", std::string_view(precious).substr(0, precious.size() - 1));
    Write("b/shot.5.png", "a text");
    WritePicture("b/shot.6.png", MakeFrame(6, host::kRgb24, 2, 2));
    Write("b/.telop-1.part", "of a run that was killed");
    const auto outcome =
        Run("render --info x --skip-existing a b", { .says = "5 frames written, 1 there already" });
    for (const auto* warning : { "shot.3.png: is no PNG file", "shot.4.png: is cut off",
                                 "shot.5.png: is no PNG file", "shot.6.png: has another size" })
        EXPECT_THAT(outcome.err, HasSubstr(warning));
    EXPECT_EQ(Contents("b/shot.2.png"), precious);
    EXPECT_EQ(Files("b").size(), 6U);

    Run("render --info x --frames 2 --overwrite a b");
    for (int number = 2; number <= 6; ++number) {
        const auto drawn = ReadPicture("b/shot." + std::to_string(number) + ".png");
        EXPECT_GT(Compare(MakeFrame(number), drawn).pixels, 0) << number;
    }
}

TEST_F(RenderFiles, SavedSettingsDrawTheSamePicture) {
    WritePicture("in.png", MakeFrame(1));
    Run("render --dialogue Grüße\\nzwei --font 'DejaVu Serif' --size 20 --color red --box none "
        "--at 5,6 --opacity 80 --save-settings text.telop in.png typed.png");
    EXPECT_EQ(Contents("text.telop").size(), 480U);
    Run("render --settings text.telop in.png loaded.png");
    EXPECT_EQ(Contents("typed.png"), Contents("loaded.png"));
    Run("render --settings text.telop --opacity 10 in.png other.png");
    EXPECT_NE(Contents("other.png"), Contents("loaded.png"));
}

TEST_F(RenderFiles, AnInterruptedRunLeavesOnlyWholeFramesAndGoesOn) {
    WriteSequence("a", 1, 400);
    for (const int signal : { SIGINT, SIGTERM }) {
        const auto folder = "b" + std::to_string(signal);
        auto run = Start("render --info {frame} --jobs 2 a " + folder + "/");
        while (!std::filesystem::exists(Path(folder)) || Files(folder).empty())
            std::this_thread::yield();
        run.Send(signal);
        const auto outcome = run.Wait();
        EXPECT_EQ(outcome.code, 128 + signal) << outcome.err;
        EXPECT_THAT(outcome.err, HasSubstr("--skip-existing"));
        const auto made = Files(folder);
        EXPECT_LT(made.size(), 400U);
        for (const auto& name : made)
            EXPECT_GT(ReadPicture(folder + "/" + name).image->Width(), 0) << name;
        Run("render --info {frame} --skip-existing a " + folder);
        EXPECT_EQ(Files(folder).size(), 400U);
    }
}

} // namespace
} // namespace telop
