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
#include "support/FakeImage.h"
#include "support/TestWorld.h"

bool operator==(const tagRECT& a, const tagRECT& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
void PrintTo(const tagRECT& rect, std::ostream* out) {
    *out << rect.left << ',' << rect.top << ' ' << rect.right << ',' << rect.bottom;
}

namespace {

constexpr tagRECT kNothing { 0, 0, 0, 0 };
constexpr std::uint32_t kBoxBlue = 0x80;

class CTextRendererTest : public testing::Test {
protected:
    CTextRendererTest() : image(400, 200, 32) {
        platform::SetApplicationTextEncoding("UTF-8");
        param.nFontSize = 20;
        param.nOpacity = 100;
        param.crText = 0x0000FF;
        param.crBack = kBoxBlue << 16;
        param.ptPos = { 30, 40 };
    }

    tagRECT Draw(double scale = 0, tagPOINT origin = { 0, 0 }) {
        tagRECT covered { 9, 9, 9, 9 };
        PIOffscreen wrapper(nullptr, image.Procs(), image.Ref());
        const long result =
            CTextRenderer::DoText(&wrapper, &param, &covered, "T", "2", "5", "12", scale, &origin);
        EXPECT_EQ(result, 0);
        EXPECT_EQ(image.locks, 0);
        EXPECT_TRUE(image.MarksAreWhole());
        return covered;
    }
    // The box of lines at the parameters' place.
    tagRECT BoxOf(std::initializer_list<const char*> lines) {
        const test::TestWorld current(8, 8);
        platform::TextFont(0);
        platform::TextSize(static_cast<std::int16_t>(param.nFontSize));
        platform::FontInfo font;
        platform::GetFontInfo(&font);
        int width = 0;
        for (const char* line : lines)
            width = std::max(width, test::WidthOf(line));
        const int height = (font.ascent + font.descent) * static_cast<int>(lines.size());
        return { 30, 40, 30 + width, 40 + height };
    }
    std::string Summary(long size = 256) {
        char out[257];
        std::fill_n(out, sizeof out, '#');
        CTextRenderer::GetTextInfoText(&param, out, size, "T", "2", "5", "12");
        return std::string(out, strnlen(out, sizeof out));
    }
    // How many pixels outside of rect have changed, and how many inside have not.
    int Strays(const tagRECT& rect) const {
        int count = 0;
        for (int i = 0; i < image.width * image.height; ++i) {
            const int x = i % image.width, y = i / image.width;
            const bool inside =
                x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
            count += image.Channel(x, y, 0) != (inside ? 255u : 0u);
        }
        return count;
    }
    int PixelsOf(std::uint32_t red, std::uint32_t blue) const {
        int count = 0;
        for (int i = 0; i < image.width * image.height; ++i) {
            const auto pixel = image.Pixel(i % image.width, i / image.width);
            count += pixel[1] == red && pixel[3] == blue;
        }
        return count;
    }

    FakeImage image;
    _TEXTPARAM param {};
};

TEST_F(CTextRendererTest, DrawsGlyphsAloneOrOnTheirBox) {
    param.dwFlags = TEXT_SCORE;
    const tagRECT covered = Draw();
    EXPECT_EQ(covered, BoxOf({ "C-005-0012" }));
    EXPECT_GT(Strays(covered), 100); // the ground between the glyphs
    EXPECT_GT(PixelsOf(253, 0), 5);  // full coverage leaves a little
    EXPECT_EQ(PixelsOf(0, kBoxBlue), 0);
    param.dwFlags |= TEXT_BOX;
    param.nFontSize += 0x70000; // its low half is the size
    EXPECT_EQ(Draw(), covered);
    EXPECT_EQ(Strays(covered), 0);
    EXPECT_GT(PixelsOf(255, 0), 20);
    EXPECT_GT(PixelsOf(0, kBoxBlue), 100);
}

TEST_F(CTextRendererTest, StacksTheLinesOfADialogueAndOfNothingElse) {
    param.dwFlags = TEXT_DIALOGUE | TEXT_BOX;
    std::strcpy(param.szDialogue, "X\rYoung\r\nZ");
    EXPECT_EQ(Draw(), BoxOf({ "X", "Young", "Z" }));
    std::strcpy(param.szDialogue, "Young\r");
    EXPECT_EQ(Draw(), BoxOf({ "Young", "" }));
    param.dwFlags = TEXT_INFO | TEXT_BOX;
    std::strcpy(param.szInfoText, "X\rYoung");
    EXPECT_EQ(Draw().bottom, BoxOf({ "X" }).bottom);
}

TEST_F(CTextRendererTest, ChoosesTheTextByItsFlag) {
    std::strcpy(param.szInfoText, "info");
    std::strcpy(param.szCharacter, "Name");
    std::strcpy(param.szDialogue, "said\rmore");
    // No bundle here has texts, so the keys stand for themselves.
    const std::pair<std::uint32_t, const char*> rows[] {
        { TEXT_SCORE | TEXT_INFO | TEXT_DIALOGUE, "C-005-0012" },
        { TEXT_INFO | TEXT_CHARACTER | TEXT_OFFCHARACTER, "info" },
        { TEXT_CHARACTER | TEXT_DIALOGUE, "Name" },
        { TEXT_CHARACTER | TEXT_OFFCHARACTER | TEXT_MONOLOGUE, "NameIDS_OFFCHARACTER" },
        { TEXT_CHARACTER | TEXT_MONOLOGUE, "NameIDS_MONOLOGUE" },
    };
    for (const auto& [flags, text] : rows) {
        param.dwFlags = flags | TEXT_BOX;
        EXPECT_EQ(Draw(), BoxOf({ text })) << text;
        EXPECT_EQ(Summary(), text);
    }
    param.dwFlags = TEXT_DIALOGUE;
    EXPECT_EQ(Summary(), "said\rmore");
    // It clears as much as it is told, and copies as much as there is.
    EXPECT_EQ(Summary(2), "said\rmore");
    param.dwFlags = 0;
    for (const long size : { 0, -1 })
        EXPECT_EQ(Summary(size), std::string(257, '#'));
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
    }
}

TEST_F(CTextRendererTest, ATextThatNoPictureHoldsIsAFailureOfItsContext) {
    param.dwFlags = TEXT_DIALOGUE | TEXT_BOX;
    std::memset(param.szDialogue, '\r', 255); // 256 lines, none of which has a width
    for (const char first : { '\r', 'a' })
        for (const int size : { 400, 32767, -1 }) {
            platform::TextContext met;
            const platform::TextScope scope(met);
            param.nFontSize = size;
            param.szDialogue[0] = first;
            EXPECT_EQ(Draw(), kNothing);
            EXPECT_EQ(met.Failure() != "", first == 'a' && size > 0) << size;
        }
}

TEST_F(CTextRendererTest, RestoresTheDrawingStateAlsoWhenTheImageThrows) {
    const test::TestWorld current(8, 8);
    platform::TextSize(77);
    platform::RGBForeColor({ 1, 2, 3 });
    param.dwFlags = TEXT_SCORE | TEXT_BOX;
    for (const bool throws : { false, true }) {
        image.isInTrouble = [throws] { return throws ? throw std::runtime_error("host") : false; };
        if (throws)
            EXPECT_THROW(Draw(), std::runtime_error);
        else
            Draw();
        EXPECT_EQ(platform::GetPort(), current.World());
        EXPECT_EQ(platform::GetPortTextSize(current.World()), 77);
        platform::RGBColor color;
        platform::GetForeColor(&color);
        EXPECT_EQ(color.blue, 3);
    }
}

} // namespace
