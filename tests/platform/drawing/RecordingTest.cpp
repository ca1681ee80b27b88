// SPDX-License-Identifier: BSD-3-Clause
// What two drawings are found to have in common; runs with any font.
#include "platform/drawing/Recording.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using namespace platform;

constexpr std::int32_t kWidth = 300;
constexpr std::int32_t kHeight = 100;
constexpr Pixel kGround { 0, 254, 254, 254 };
constexpr Pixel kInk { 0, 0, 0, 0 };

struct Drawing {
    std::vector<std::string> lines; // 40 pixels apart
    Pixel ground = kGround, ink = kInk;
    std::int32_t left = 2, size = 20;

    Recording Record() const {
        Recording recording;
        recording.Fill({ 0, 0, kWidth, kHeight }, ground, kWidth, kHeight);
        std::int32_t baseline = 30;
        for (const std::string& line : lines) {
            recording.Text(left, baseline, text::LayOutLine(0, size, line), ink);
            baseline += 40;
        }
        return recording;
    }
};

std::optional<text::PixelBox> Difference(const Drawing& drawing, const Drawing& older) {
    return drawing.Record().DifferenceFrom(older.Record(), kWidth, kHeight);
}

TEST(RecordingTest, OnlyTheGlyphsThatChangedDiffer) {
    const Drawing older { { "C-005-0012", "second line" } };
    EXPECT_TRUE(Difference(older, older)->IsEmpty());

    const auto last = Difference({ { "C-005-001 ", "second line" } }, older);
    ASSERT_TRUE(last && !last->IsEmpty());
    EXPECT_GT(last->left, older.left + text::LayOutLine(0, 20, "C-005-00")->WidthPx());
    EXPECT_LE(last->right, older.left + text::LayOutLine(0, 20, "C-005-0012")->WidthPx() + 1);
    EXPECT_LE(last->bottom, 40);

    const auto longer = Difference({ { "C-005-0012", "second lines" } }, older);
    ASSERT_TRUE(longer && !longer->IsEmpty());
    EXPECT_GE(longer->top, 40);
    EXPECT_GE(longer->right, older.left + text::LayOutLine(0, 20, "second line")->WidthPx());

    const auto both = Difference({ { "C-005-0012!", "2nd line" } }, older);
    ASSERT_TRUE(both && !both->IsEmpty());
    EXPECT_LT(both->top, 40);
    EXPECT_GT(both->bottom, 60);
}

TEST(RecordingTest, TheDifferenceStaysOnTheCanvas) {
    const Drawing older { { "WWWWWW" }, kGround, kInk, -50, 200 };
    Drawing newer = older;
    newer.lines = { "W WWWW" };
    const auto box = Difference(newer, older);
    ASSERT_TRUE(box && !box->IsEmpty());
    EXPECT_GE(box->left, 0);
    EXPECT_GE(box->top, 0);
    EXPECT_LE(box->right, kWidth);
    EXPECT_LE(box->bottom, kHeight);
}

TEST(RecordingTest, DrawingsWithLessInCommonAreNotCompared) {
    const Drawing older { { "one", "two" } };
    EXPECT_FALSE(Difference({ { "one" } }, older));
    EXPECT_FALSE(Difference({ { "one", "two", "three" } }, older));
    const std::string longLine(40, 'g'); // over most of the canvas
    EXPECT_FALSE(Difference({ { longLine, longLine }, kGround, kInk, 2, 36 }, older));
    EXPECT_FALSE(Difference({ older.lines, { 0, 1, 1, 1 } }, older));
    EXPECT_FALSE(Difference({ older.lines, kGround, { 0, 9, 0, 0 } }, older));
    EXPECT_FALSE(Difference({ older.lines, kGround, kInk, 3 }, older));
    Recording colored = older.Record();
    colored.Text(5, 90, text::LayOutLine(0, 20, "red"), { 0, 255, 0, 0 });
    EXPECT_FALSE(colored.DifferenceFrom(colored, kWidth, kHeight));
    Recording bare;
    bare.Text(5, 90, text::LayOutLine(0, 20, "no ground"), kInk);
    EXPECT_FALSE(bare.DifferenceFrom(bare, kWidth, kHeight));
}

TEST(RecordingTest, CountsTheLinesThatItKeepsAlive) {
    const Recording recording = Drawing { { "a line", "and another one" } }.Record();
    EXPECT_GE(recording.Bytes(), text::LayOutLine(0, 20, "a line")->Bytes() +
                                     text::LayOutLine(0, 20, "and another one")->Bytes());
}

} // namespace
