// SPDX-License-Identifier: BSD-3-Clause
// From parameters to pixels: which text is drawn, where its box lies and what is restored. Sizes are
// compared with what the platform measures, so that any font will do.
#include "render/CTextRenderer.h"

#include <algorithm>
#include <array>
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

namespace {

using Box = std::array<int, 4>; // left, top, right, bottom

constexpr Box kNothing {};
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

    Box Draw(double scale = 0, tagPOINT origin = { 0, 0 }) {
        tagRECT covered { 9, 9, 9, 9 };
        PIOffscreen wrapper(nullptr, image.Procs(), image.Ref());
        const long result =
            CTextRenderer::DoText(&wrapper, &param, &covered, "T", "2", "5", "12", scale, &origin);
        EXPECT_EQ(result, 0);
        EXPECT_EQ(image.locks, 0);
        EXPECT_TRUE(image.MarksAreWhole());
        return { covered.left, covered.top, covered.right, covered.bottom };
    }
    // The box of lines at the parameters' place.
    Box BoxOf(std::initializer_list<const char*> lines) {
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
    // How many pixels outside of the box have changed, and how many inside have not.
    int Strays(const Box& box) const {
        int count = 0;
        for (int i = 0; i < image.width * image.height; ++i) {
            const int x = i % image.width, y = i / image.width;
            const bool inside = x >= box[0] && x < box[2] && y >= box[1] && y < box[3];
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
    const Box covered = Draw();
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
    EXPECT_EQ(Draw()[3], BoxOf({ "X" })[3]);
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
    using Row = std::tuple<std::uint32_t, std::int32_t, std::int32_t, const char*>;
    for (const auto& [flags, format, size, summary] : {
             Row { 0, 0, 20, "" }, Row { TEXT_BOX, 0, 20, "" }, Row { TEXT_INFO, 0, 20, "" },
             Row { TEXT_CHARACTER | TEXT_OFFCHARACTER, 0, 20, "" },
             // The empty text hides the filled one in the frame, but not in the summary.
             Row { TEXT_INFO | TEXT_DIALOGUE | TEXT_BOX, 0, 20, "said" },
             Row { TEXT_SCORE, 4, 20, "" },
             Row { TEXT_SCORE, 0, 0x8000, "C-005-0012" }, // negative in its 16 bits
         }) {
        param.dwFlags = flags;
        param.nScoreFormat = format;
        param.nFontSize = size;
        EXPECT_EQ(Draw(), kNothing) << flags;
        EXPECT_EQ(Summary(), summary) << flags;
    }
    EXPECT_EQ(image.memory, before);
}

TEST_F(CTextRendererTest, ScalesThePositionTowardsZeroAndShiftsItThen) {
    param.dwFlags = TEXT_SCORE | TEXT_BOX;
    using Row = std::tuple<tagPOINT, double, tagPOINT, int, int>;
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const auto& [at, scale, origin, left, top] : {
             Row { { 100, 60 }, 0.5, { 10, 20 }, 40, 10 },
             Row { { 33, -33 }, 0.5, { 0, 0 }, 16, -16 },
             Row { { 100, 60 }, 0.0, { 10, 20 }, 100, 60 },
             Row { { 100, 60 }, -2.0, { 10, 20 }, 100, 60 },
             Row { { 100, 60 }, std::nan(""), { 10, 20 }, 100, 60 },
             Row { { 0, -5 }, kInfinity, { 7, 0 }, -7, INT_MIN },
             Row { { INT_MAX, INT_MIN }, 1e300, { INT_MIN, INT_MAX }, INT_MAX, INT_MIN },
             Row { { 3, 3 }, 1e9, { INT_MAX, 2000000000 }, 852516353, 1000000000 },
         }) {
        param.ptPos = at;
        const Box covered = Draw(scale, origin);
        EXPECT_EQ(covered[0], left) << scale;
        EXPECT_EQ(covered[1], top) << scale;
        EXPECT_GE(covered[2], covered[0]);
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

std::string Score(long format, const char* info1, const char* info2, const char* info3,
                  const char* info4) {
    char out[256 + 1];
    std::memset(out, '#', sizeof out);
    CTextRenderer::GetScoreInfoText(out, format, info1, info2, info3, info4);
    EXPECT_EQ(out[256], '#');
    return out;
}

TEST(ScoreTextTest, ComposesTheFormats) {
    using Row = std::tuple<long, const char*, const char*, const char*, const char*, const char*>;
    for (const auto& [format, info1, info2, info3, info4, text] : {
             Row { 0, "T", "2", "5", "12", "C-005-0012" },
             Row { 1, "T", "2", "12A", "7", "012A-0007" },
             Row { 2, "T", "A3", "1", "1", "A3-001-0001" },
             Row { 3, "Title 7", "2", "3", "4", "Title 7-002-003-0004" },
             Row { 3, "", "", "", "", "-000-000-0000" },
             Row { 3, nullptr, nullptr, nullptr, nullptr, "-000-000-0000" },
             Row { 1, "", "", "0007B", "12345", "007B-12345" },
             Row { 1, "", "", "000", "00000", "000-0000" },
             Row { 1, "", "", "-5", " 5", "-5- 5" },
             Row { 1, "", "", "5 %s%n", "7%d", "005 %s%n-0007%d" },
             // Longer than any number type.
             Row { 1, "", "", "123456789012345678901234567890x", "1",
                   "123456789012345678901234567890x-0001" },
             Row { 4, "1", "2", "3", "4", "" },
             Row { -1, "1", "2", "3", "4", "" },
         })
        EXPECT_EQ(Score(format, info1, info2, info3, info4), text);
}

TEST(ScoreTextTest, ReadsAndWritesWithinItsFields) {
    const std::string x(64, 'x'), nine(64, '9');
    char full[4][64]; // without a NUL, one behind the other
    std::memset(full, 'x', 192);
    std::memset(full[3], '9', 64);
    EXPECT_EQ(Score(3, full[0], full[1], full[2], full[3]),
              (x + "-" + x + "-" + x + "-" + nine).substr(0, 255));
}

TEST(ScoreTextTest, SplitsANumberFromItsRest) {
    using Row = std::tuple<const char*, bool, long, const char*>;
    for (const auto& [text, isSplit, wanted, wantedRest] :
         { Row { "", true, 0, "" }, Row { "12A", true, 12, "A" }, Row { "3 4", true, 3, " 4" },
           Row { "A3", false, 0, "old" }, Row { "2147483648b", true, INT_MAX, "b" },
           Row { "99999999999999999999999", true, INT_MAX, "" } }) {
        long number = -1;
        char rest[256] = "old";
        EXPECT_EQ(CTextRenderer::SplitNumberAndString(text, &number, rest), isSplit) << text;
        EXPECT_EQ(number, wanted) << text;
        EXPECT_STREQ(rest, wantedRest) << text;
    }
}

} // namespace
