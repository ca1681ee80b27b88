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
    Difference Drawn(const Arguments& options, host::PixelFormat format = host::kRgb24) {
        auto const name = std::to_string(++m_pictures) + ".png";
        WritePicture("in" + name, MakeFrame(1, format));
        auto const outcome = Render(options, "in" + name, "out" + name);
        EXPECT_EQ(outcome.code, 0) << outcome.err;
        return Compare(ReadPicture("in" + name), ReadPicture("out" + name));
    }

private:
    int m_pictures = 0;
};

TEST_F(RenderFiles, DrawsOnlyWhereTheTextIs) {
    for (auto const format : { host::kRgb24, host::kRgba32, host::kRgba64 }) {
        auto const drawn = Drawn({ "--info", "PAN", "--at", "40,30", "--size", "24" }, format);
        EXPECT_GT(drawn.pixels, 100) << format.depth;
        EXPECT_EQ(drawn.bounds.left, 40);
        EXPECT_EQ(drawn.bounds.top, 30);
        EXPECT_LT(drawn.bounds.right, 160);
        EXPECT_LT(drawn.bounds.bottom, 80);
    }
}

TEST_F(RenderFiles, EveryKindOfTextIsDrawn) {
    Write("lines.txt", "first\nsecond\n");
    for (auto const& options : std::vector<Arguments> {
             { "--info", "T.U." },
             { "--character", "Hanako" },
             { "--dialogue", "@lines.txt" },
             { "--score", "3", "--strings", "A,B,C,D" },
             {},
         })
        EXPECT_GT(Drawn(options).pixels, 100) << testing::PrintToString(options);
    auto const plain = Drawn({ "--character", "Hanako", "--at", "0,0", "--size", "14" });
    for (auto const* suffix : { "--off", "--monologue" })
        EXPECT_GT(
            Drawn({ "--character", "Hanako", "--at", "0,0", "--size", "14", suffix }).bounds.right,
            plain.bounds.right)
            << suffix;
    auto const oneLine = Drawn({ "--dialogue", "a", "--at", "0,0", "--size", "14" });
    auto const twoLines = Drawn({ "--dialogue", "a\\na", "--at", "0,0", "--size", "14" });
    EXPECT_EQ(twoLines.bounds.bottom, 2 * oneLine.bounds.bottom);
}

TEST_F(RenderFiles, ScaleAndOriginMoveTheText) {
    auto const drawn =
        Drawn({ "--info", "x", "--at", "100,60", "--scale", "0.5", "--origin", "10,20" });
    EXPECT_EQ(drawn.bounds.left, 40);
    EXPECT_EQ(drawn.bounds.top, 10);
}

TEST_F(RenderFiles, TokensDifferFromFrameToFrame) {
    for (int number : { 7, 8 })
        WritePicture("a/shot." + std::to_string(number) + ".png", MakeFrame(3));
    WritePicture("literal.png", MakeFrame(3));
    ASSERT_EQ(Render({ "--info", "{frame-1:03} {file} {{}}" }, "a/shot.#.png", "b/").code, 0);
    ASSERT_EQ(Render({ "--info", "006 shot.7 {{}}" }, "literal.png", "six.png").code, 0);
    ASSERT_EQ(Render({ "--info", "007 shot.8 {{}}" }, "literal.png", "seven.png").code, 0);
    EXPECT_EQ(Contents("b/shot.7.png"), Contents("six.png"));
    EXPECT_EQ(Contents("b/shot.8.png"), Contents("seven.png"));
    EXPECT_NE(Contents("six.png"), Contents("seven.png"));
}

TEST_F(RenderFiles, OnlyFramesInTheRangesAreMadeAndDrawn) {
    WriteSequence("a", 1, 6);
    auto const outcome = Render({ "--info", "PAN", "--frames", "1-5:2,6", "--apply", "3-" },
                                "a/shot.%d.png", "b/shot.%03d.png");
    ASSERT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_THAT(Files("b"),
                ElementsAre("shot.001.png", "shot.003.png", "shot.005.png", "shot.006.png"));
    for (int number : { 1, 3, 5, 6 }) {
        auto const drawn =
            Compare(MakeFrame(number), ReadPicture("b/shot.00" + std::to_string(number) + ".png"));
        EXPECT_EQ(drawn.pixels > 0, number >= 3) << number;
    }
}

TEST_F(RenderFiles, TheNumberOfJobsDoesNotShow) {
    WriteSequence("a", 1, 12);
    ASSERT_EQ(Render({ "--info", "{frame} 日本語", "--jobs", "1" }, "a", "one/").code, 0);
    ASSERT_EQ(Render({ "--info", "{frame} 日本語", "--jobs", "4" }, "a", "four/").code, 0);
    ASSERT_EQ(Files("one").size(), 12U);
    for (auto const& name : Files("one"))
        EXPECT_EQ(Contents("one/" + name), Contents("four/" + name)) << name;
}

TEST_F(RenderFiles, ExistingOutputsAreKeptUnlessTheyAreToBeReplaced) {
    WriteSequence("a", 1, 3);
    WritePicture("b/shot.2.png", MakeFrame(7));
    auto const precious = Contents("b/shot.2.png");
    auto outcome = Render({ "--info", "x" }, "a", "b");
    EXPECT_EQ(outcome.code, 5);
    EXPECT_THAT(outcome.err, HasSubstr("b/shot.2.png"));
    EXPECT_THAT(Files("b"), ElementsAre("shot.2.png")) << "refused before the first frame";

    outcome = Render({ "--info", "x", "--skip-existing" }, "a", "b");
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_THAT(outcome.err, HasSubstr("2 frames written, 1 there already"));
    EXPECT_EQ(Contents("b/shot.2.png"), precious);

    EXPECT_EQ(Render({ "--info", "x", "--overwrite" }, "a", "b").code, 0);
    EXPECT_GT(Compare(MakeFrame(2), ReadPicture("b/shot.2.png")).pixels, 0);
}

TEST_F(RenderFiles, SavedSettingsDrawTheSamePicture) {
    WritePicture("in.png", MakeFrame(1));
    Arguments const options {
        "--dialogue", "Grüße\\nzwei", "--font", "DejaVu Serif", "--size", "20",        "--color",
        "red",        "--box",        "none",   "--at",         "5,6",    "--opacity", "80"
    };
    auto saving = options;
    saving.insert(saving.end(), { "--save-settings", "text.telop" });
    ASSERT_EQ(Render(saving, "in.png", "typed.png").code, 0);
    EXPECT_EQ(Contents("text.telop").size(), 480U);
    ASSERT_EQ(Render({ "--settings", "text.telop" }, "in.png", "loaded.png").code, 0);
    EXPECT_EQ(Contents("typed.png"), Contents("loaded.png"));
    ASSERT_EQ(Render({ "--settings", "text.telop", "--opacity", "10" }, "in.png", "other.png").code,
              0);
    EXPECT_NE(Contents("other.png"), Contents("loaded.png"));
}

TEST_F(RenderFiles, AnInterruptedRunLeavesOnlyWholeFramesAndGoesOn) {
    WriteSequence("a", 1, 400);
    for (int const signal : { SIGINT, SIGTERM }) {
        auto const folder = "b" + std::to_string(signal);
        auto run =
            Start({ "render", "--info", "{frame}", "--jobs", "2", "a", folder + "/" }, "/dev/null");
        while (!std::filesystem::exists(Path(folder)) || Files(folder).empty())
            std::this_thread::yield();
        run.Send(signal);
        auto const outcome = run.Wait();
        EXPECT_EQ(outcome.code, 128 + signal) << outcome.err;
        EXPECT_THAT(outcome.err, HasSubstr("--skip-existing"));
        auto const made = Files(folder);
        EXPECT_LT(made.size(), 400U);
        for (auto const& name : made)
            EXPECT_GT(ReadPicture(folder + "/" + name).image->Width(), 0) << name;
        EXPECT_EQ(Render({ "--info", "{frame}", "--skip-existing" }, "a", folder).code, 0);
        EXPECT_EQ(Files(folder).size(), 400U);
    }
}

} // namespace
} // namespace telop
