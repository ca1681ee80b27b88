// SPDX-License-Identifier: BSD-3-Clause
// From parameters to pixels: which text is drawn, where its box lies and what is restored. Sizes are
// compared with what the platform measures, so that any font will do.
#include "render/CTextRenderer.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/TextContext.h"
#include "render/FakeImage.h"
#include "support/TestWorld.h"

bool operator==(const tagRECT& a, const tagRECT& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
void PrintTo(const tagRECT& rect, std::ostream* out) {
    *out << rect.left << ',' << rect.top << ' ' << rect.right << ',' << rect.bottom;
}

namespace {

constexpr tagRECT kNothing { 0, 0, 0, 0 };

struct Metrics {
    int lineHeight;
    int width; // of the widest line
};

Metrics Measured(int size, std::initializer_list<const char*> lines) {
    const test::TestWorld current(8, 8);
    platform::TextFont(0);
    platform::TextSize(static_cast<std::int16_t>(size));
    platform::FontInfo font;
    platform::GetFontInfo(&font);
    Metrics metrics { font.ascent + font.descent, 0 };
    for (const char* line : lines)
        metrics.width = std::max(metrics.width, test::WidthOf(line));
    return metrics;
}

class CTextRendererTest : public testing::Test {
protected:
    CTextRendererTest() : image(400, 200, 32) {
        platform::SetApplicationTextEncoding("UTF-8");
        param.nFontSize = 20;
        param.nOpacity = 100;
        param.crText = 0x0000FF;
        param.crBack = 0x800000;
        param.ptPos = { 30, 40 };
    }

    tagRECT Draw(double scale = 0, tagPOINT origin = { 0, 0 }) {
        tagRECT covered { 9, 9, 9, 9 };
        PIOffscreen wrapper(nullptr, image.Procs(), image.Ref());
        const long result =
            CTextRenderer::DoText(&wrapper, &param, &covered, "T", "2", "5", "12", scale, &origin);
        EXPECT_EQ(result, 0);
        EXPECT_EQ(image.locks, 0);
        return covered;
    }
    tagRECT BoxAt(int x, int y, std::initializer_list<const char*> lines) {
        const Metrics metrics = Measured(param.nFontSize, lines);
        return { x, y, x + metrics.width, y + metrics.lineHeight * static_cast<int>(lines.size()) };
    }
    std::string Summary(long size = 256) {
        char out[257];
        std::fill_n(out, sizeof out, '#');
        CTextRenderer::GetTextInfoText(&param, out, size, "T", "2", "5", "12");
        return std::string(out, strnlen(out, sizeof out));
    }
    // Whether the box's colour fills rect but for glyphs, and nothing else changed.
    bool IsBoxed(const tagRECT& rect) const {
        for (int i = 0; i < image.width * image.height; ++i) {
            const int x = i % image.width, y = i / image.width;
            const bool inside =
                x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
            if (image.Channel(x, y, 0) != (inside ? 255u : 0u))
                return false;
        }
        return true;
    }
    int PixelsOf(std::uint32_t red, std::uint32_t blue) const {
        int count = 0;
        for (int i = 0; i < image.width * image.height; ++i) {
            const int x = i % image.width, y = i / image.width;
            count += image.Channel(x, y, 1) == red && image.Channel(x, y, 3) == blue;
        }
        return count;
    }

    FakeImage image;
    _TEXTPARAM param {};
};

TEST_F(CTextRendererTest, DrawsTheScoreOnItsBox) {
    param.dwFlags = TEXT_SCORE | TEXT_BOX;
    const tagRECT covered = Draw();
    EXPECT_EQ(covered, BoxAt(30, 40, { "C-005-0012" }));
    param.nFontSize += 0x70000; // its low half is the size
    EXPECT_EQ(Draw(), covered);
    EXPECT_TRUE(IsBoxed(covered));
    EXPECT_GT(PixelsOf(255, 0), 20);   // glyphs
    EXPECT_GT(PixelsOf(0, 0x80), 100); // the box between them
    EXPECT_TRUE(image.MarksAreWhole());
}

TEST_F(CTextRendererTest, DrawsOnlyGlyphsWithoutABox) {
    param.dwFlags = TEXT_INFO;
    std::strcpy(param.szInfoText, "PAN");
    const tagRECT covered = Draw();
    EXPECT_EQ(covered, BoxAt(30, 40, { "PAN" }));
    EXPECT_FALSE(IsBoxed(covered));
    EXPECT_GT(PixelsOf(253, 0), 5); // full coverage leaves a little
    EXPECT_EQ(PixelsOf(0, 0x80), 0);
}

TEST_F(CTextRendererTest, StacksTheLinesOfADialogue) {
    param.dwFlags = TEXT_DIALOGUE | TEXT_BOX;
    std::strcpy(param.szDialogue, "X\rYoung\r\nZ");
    EXPECT_EQ(Draw(), BoxAt(30, 40, { "X", "Young", "Z" }));
    std::strcpy(param.szDialogue, "Young\r");
    EXPECT_EQ(Draw(), BoxAt(30, 40, { "Young", "" }));
    // Only dialogue has lines.
    param.dwFlags = TEXT_INFO | TEXT_BOX;
    std::strcpy(param.szInfoText, "X\rYoung");
    const Metrics one = Measured(param.nFontSize, { "X" });
    EXPECT_EQ(Draw().bottom, 40 + one.lineHeight);
}

TEST_F(CTextRendererTest, ChoosesTheTextByItsFlag) {
    std::strcpy(param.szInfoText, "info");
    std::strcpy(param.szCharacter, "Name");
    std::strcpy(param.szDialogue, "said\rmore");
    struct Row {
        std::uint32_t flags;
        const char* text;
    };
    // No bundle here has texts, so the keys stand for themselves.
    for (const Row& row : {
             Row { TEXT_SCORE | TEXT_INFO | TEXT_DIALOGUE, "C-005-0012" },
             Row { TEXT_INFO | TEXT_CHARACTER | TEXT_OFFCHARACTER, "info" },
             Row { TEXT_CHARACTER | TEXT_DIALOGUE, "Name" },
             Row { TEXT_CHARACTER | TEXT_OFFCHARACTER | TEXT_MONOLOGUE, "NameIDS_OFFCHARACTER" },
             Row { TEXT_CHARACTER | TEXT_MONOLOGUE, "NameIDS_MONOLOGUE" },
         }) {
        param.dwFlags = row.flags | TEXT_BOX;
        EXPECT_EQ(Draw(), BoxAt(30, 40, { row.text })) << row.text;
        EXPECT_EQ(Summary(), row.text);
    }
    param.dwFlags = TEXT_DIALOGUE;
    EXPECT_EQ(Summary(), "said\rmore");
}

TEST_F(CTextRendererTest, DrawsNothingWithoutText) {
    const std::vector<std::uint8_t> before = image.memory;
    std::strcpy(param.szDialogue, "said");
    struct Row {
        std::uint32_t flags;
        std::int32_t format, size;
        const char* summary;
    };
    for (const Row& row : {
             Row { 0, 0, 20, "" }, Row { TEXT_BOX, 0, 20, "" }, Row { TEXT_INFO, 0, 20, "" },
             Row { TEXT_CHARACTER | TEXT_OFFCHARACTER, 0, 20, "" },
             // The empty text hides the filled one in the frame, but not in the summary.
             Row { TEXT_INFO | TEXT_DIALOGUE | TEXT_BOX, 0, 20, "said" },
             Row { TEXT_SCORE, 4, 20, "" },
             Row { TEXT_SCORE, 0, 0x8000, "C-005-0012" }, // negative in its 16 bits
         }) {
        param.dwFlags = row.flags;
        param.nScoreFormat = row.format;
        param.nFontSize = row.size;
        EXPECT_EQ(Draw(), kNothing) << row.flags;
        EXPECT_EQ(Summary(), row.summary) << row.flags;
    }
    EXPECT_EQ(image.memory, before);
}

TEST_F(CTextRendererTest, ScalesThePositionTowardsZeroAndShiftsItThen) {
    param.dwFlags = TEXT_SCORE | TEXT_BOX;
    struct Row {
        tagPOINT at;
        double scale;
        tagPOINT origin;
        int left, top;
    };
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const Row& row : {
             Row { { 100, 60 }, 0.5, { 10, 20 }, 40, 10 },
             Row { { 33, -33 }, 0.5, { 0, 0 }, 16, -16 },
             Row { { 100, 60 }, 0.0, { 10, 20 }, 100, 60 },
             Row { { 100, 60 }, -2.0, { 10, 20 }, 100, 60 },
             Row { { 100, 60 }, std::nan(""), { 10, 20 }, 100, 60 },
             Row { { 0, -5 }, kInfinity, { 7, 0 }, -7, INT_MIN },
             Row { { INT_MAX, INT_MIN }, 1e300, { INT_MIN, INT_MAX }, INT_MAX, INT_MIN },
             Row { { 3, 3 }, 1e9, { INT_MAX, 2000000000 }, 852516353, 1000000000 },
         }) {
        param.ptPos = row.at;
        const tagRECT covered = Draw(row.scale, row.origin);
        EXPECT_EQ(covered.left, row.left) << row.scale;
        EXPECT_EQ(covered.top, row.top) << row.scale;
        EXPECT_GE(covered.right, covered.left);
        EXPECT_TRUE(image.MarksAreWhole());
    }
}

TEST_F(CTextRendererTest, ATextThatNoPictureHoldsIsAFailureOfItsContext) {
    param.dwFlags = TEXT_DIALOGUE | TEXT_BOX;
    std::memset(param.szDialogue, '\r', 255); // 256 lines, none of which has a width
    for (const int size : { 400, 32767, -1 }) {
        platform::TextContext met;
        const platform::TextScope scope(met);
        param.nFontSize = size;
        param.szDialogue[0] = '\r';
        EXPECT_EQ(Draw(), kNothing);
        EXPECT_EQ(met.Failure(), "") << size;
        param.szDialogue[0] = 'a';
        EXPECT_EQ(Draw(), kNothing);
        const std::string points = "at " + std::to_string(size) + " points it takes ";
        EXPECT_EQ(met.Failure().find("the text is not drawn: " + points) == 0, size > 0)
            << met.Failure();
    }
}

TEST_F(CTextRendererTest, ClearsAsMuchAsItIsToldAndCopiesAsMuchAsThereIs) {
    param.dwFlags = TEXT_INFO;
    EXPECT_EQ(Summary(0), std::string(257, '#'));
    EXPECT_EQ(Summary(-1), std::string(257, '#'));
    std::strcpy(param.szInfoText, "FOLLOW");
    EXPECT_EQ(Summary(2), "FOLLOW");
}

TEST_F(CTextRendererTest, RestoresTheDrawingStateAlsoWhenTheImageThrows) {
    const test::TestWorld current(8, 8);
    platform::TextSize(77);
    platform::RGBForeColor({ 1, 2, 3 });
    param.dwFlags = TEXT_SCORE | TEXT_BOX;
    for (const bool throws : { false, true }) {
        image.throwsOnDepth = throws;
        try {
            Draw();
            EXPECT_FALSE(throws);
        } catch (const std::runtime_error&) {
            EXPECT_TRUE(throws);
        }
        EXPECT_EQ(image.locks, 0);
        EXPECT_EQ(platform::GetPort(), current.World());
        EXPECT_EQ(platform::GetPortTextSize(current.World()), 77);
        platform::RGBColor color;
        platform::GetForeColor(&color);
        EXPECT_EQ(color.blue, 3);
    }
}

} // namespace
