// SPDX-License-Identifier: BSD-3-Clause
// Lines as a reader expects them: order, shaping, fallback, widths, and nothing cut off.
#include <array>
#include <gmock/gmock.h>

#include "platform/TextContext.h"
#include "support/TestWorld.h"

namespace {

using namespace platform;
using test::Draw;
using test::TestWorld;
using test::UseFont;
using test::WidthOf;

using Picture = std::vector<std::uint32_t>;

// The text in black on white with its baseline 100 pixels from the top.
Picture PictureOf(const std::string& font, std::int16_t size, const std::string& text) {
    const TestWorld world(400, 140);
    world.Erase();
    UseFont(font, size);
    Draw(40, 100, text);
    return world.Pixels();
}

std::int32_t WidthIn(const std::string& font, std::int16_t size, const std::string& text) {
    const TestWorld world(1, 1);
    UseFont(font, size);
    return WidthOf(text);
}

bool IsBlank(const Picture& picture) {
    return std::all_of(picture.begin(), picture.end(),
                       [](std::uint32_t p) { return p == 0xFFFFFF; });
}

class LineTest : public testing::Test {
protected:
    void SetUp() override { PurgeTextCaches(); }

    TextContext m_met;
    TextScope m_scope { m_met };
};

// A world with room on every side shows what a box of the measured size would lose.
TEST_F(LineTest, NoFamilyLosesInkOutsideItsBox) {
    constexpr int kLeft = 60, kBaseline = 160;
    for (const FontFamily& family : InstalledFontFamilies()) {
        for (int i = 0; i < 8; ++i) {
            const char* const text =
                std::array { "ÅÉgjpqyç|日本語", "jÇ(Wj", "f", "e\u0301y" }[i / 2];
            const TestWorld world(700, 260);
            world.Erase();
            UseFont(family.name, i % 2 ? 13 : 36);
            FontInfo info;
            GetFontInfo(&info);
            const std::int32_t width = WidthOf(text);
            Draw(kLeft, kBaseline, text);
            const Picture pixels = world.Pixels();
            int inside = 0, outside = 0;
            for (int at = 0; at < 700 * 260; ++at) {
                const int x = at % 700 - kLeft, y = at / 700 - kBaseline;
                const bool box = x >= 0 && x < width && y >= -info.ascent && y < info.descent;
                (box ? inside : outside) += pixels[at] != 0xFFFFFF;
            }
            EXPECT_GT(inside, 0) << family.name << " " << text;
            EXPECT_EQ(outside, 0) << family.name << " " << text;
        }
    }
}

TEST_F(LineTest, LatinIsKernedAndMarksSitOnTheirBase) {
    EXPECT_LT(WidthIn("Liberation Sans", 200, "AV"),
              WidthIn("Liberation Sans", 200, "A") + WidthIn("Liberation Sans", 200, "V") - 5);
    EXPECT_EQ(PictureOf("DejaVu Sans", 40, "e\u0301x"), PictureOf("DejaVu Sans", 40, "\u00E9x"));
    EXPECT_EQ(WidthIn("DejaVu Sans", 40, "x\u0302\u0323"), WidthIn("DejaVu Sans", 40, "x"));
}

TEST_F(LineTest, TabularDigitsAreNotKernedAndTheRestIs) {
    const auto width = [](const char* text) { return WidthIn("Liberation Serif", 200, text); };
    const auto kerned = width("AV 11");
    EXPECT_LT(width("11"), width("10") - 5);
    m_met.UseTabularDigits(true);
    const TextContext frame(m_met, {});
    EXPECT_TRUE(frame.HasTabularDigits());
    EXPECT_EQ(width("11"), width("10"));
    EXPECT_EQ(width("A11"), width("A74"));
    EXPECT_LT(width("AV"), width("A") + width("V") - 5);
    EXPECT_EQ(WidthIn("DejaVu Sans", 40, "1\u0302"), WidthIn("DejaVu Sans", 40, "1"));
    m_met.UseTabularDigits(false);
    EXPECT_EQ(width("AV 11"), kerned);
}

TEST_F(LineTest, RightToLeftTextIsOrderedAndJoined) {
    // The override forces the letters into the order in which a reader sees them.
    EXPECT_EQ(PictureOf("DejaVu Sans", 40, "אבג"), PictureOf("DejaVu Sans", 40, "\u202Dגבא"));
    EXPECT_EQ(PictureOf("DejaVu Sans", 40, "a אב 12"),
              PictureOf("DejaVu Sans", 40, "\u202Da 12 בא"));
    std::int32_t apart = 0;
    for (const char* letter : { "س", "ل", "م" })
        apart += WidthIn("DejaVu Sans", 100, letter);
    EXPECT_LT(WidthIn("DejaVu Sans", 100, "سلم"), apart - 20);
}

TEST_F(LineTest, MissingCharactersComeFromAnotherFamilyWithTheirMarks) {
    EXPECT_EQ(PictureOf("Liberation Sans", 40, "日本語かな"),
              PictureOf("Noto Sans CJK JP", 40, "日本語かな"));
    EXPECT_EQ(WidthIn("Liberation Sans", 40, "日本語"), 120);
    // The dot above is in DejaVu Sans and not in the family; a base of another face would lose it.
    EXPECT_FALSE(IsBlank(PictureOf("Noto Sans CJK JP", 40, "日a\u0337")));
    EXPECT_EQ(WidthIn("Noto Sans CJK JP", 40, "a\u0337"), WidthIn("DejaVu Sans", 40, "a\u0337"));
    EXPECT_THAT(m_met.Reports(), testing::IsEmpty());
}

TEST_F(LineTest, NamedFamiliesComeBeforeTheMachinesChoice) {
    const struct {
        std::vector<std::string> fallbacks;
        const char* drawsLike;
        const char* says;
    } rows[] = {
        { {}, "Noto Sans CJK JP", "" },
        { { "Noto Serif CJK JP", "Noto Sans CJK JP" }, "Noto Serif CJK JP", "" },
        // One without the characters, one that is not there, and one by another name.
        { { "DejaVu Sans", "Nirgendwo", "ＭＳ 明朝" },
          "Noto Serif CJK JP",
          "font family 'Nirgendwo': it is to stand in for missing characters, and no installed "
          "family has this name" },
    };
    const Picture latin = PictureOf("Liberation Sans", 40, "Latin");
    for (int i = 0; i < 9; ++i) { // lines are kept from the second time on
        const auto& row = rows[i % 3];
        const TextContext wanted(TextEncoding::Utf8(), {}, "", row.fallbacks);
        TextContext met(wanted, {});
        const TextScope scope(met);
        EXPECT_EQ(PictureOf("Liberation Sans", 40, "日本語"),
                  PictureOf(row.drawsLike, 40, "日本語"));
        EXPECT_EQ(PictureOf("Liberation Sans", 40, "Latin"), latin);
        std::string says;
        for (const Report& report : met.Reports())
            says += Describe(report);
        EXPECT_EQ(says, row.says);
    }
}

// The first row of ink and the one below the last, from the baseline down.
std::pair<int, int> RowsOfInk(const std::string& font, const std::string& text) {
    const Picture picture = PictureOf(font, 40, text);
    const auto isInk = [](std::uint32_t pixel) { return pixel != 0xFFFFFF; };
    const auto first = std::ranges::find_if(picture, isInk) - picture.begin();
    const auto last = picture.rend() - std::find_if(picture.rbegin(), picture.rend(), isInk) - 1;
    return { first / 400 - 100, last / 400 + 1 - 100 };
}

TEST_F(LineTest, WhatIsTooTallForTheAskedFontIsSmallerByJustSoMuch) {
    const TestWorld world(1, 1);
    UseFont("Liberation Sans", 40);
    FontInfo info;
    GetFontInfo(&info);
    for (const char* text : { "ກີ້", "⎧" }) { // of DejaVu Sans, the first at the top
        const auto [ownTop, ownBottom] = RowsOfInk("DejaVu Sans", text);
        EXPECT_TRUE(ownTop < -info.ascent || ownBottom > info.descent) << text;
        const auto [top, bottom] = RowsOfInk("Liberation Sans", text);
        EXPECT_TRUE(top >= -info.ascent && bottom <= info.descent) << text;
        EXPECT_TRUE(top == -info.ascent || bottom == info.descent) << text;
    }
    EXPECT_EQ(PictureOf("Liberation Sans", 40, "ກ"), PictureOf("DejaVu Sans", 40, "ກ"));
    // The words of a phrase have one size; what stands apart keeps its own.
    const std::int32_t fits = WidthIn("Liberation Sans", 40, "ກກກກກກ a ");
    const std::int32_t tall = WidthIn("Liberation Sans", 40, "⎧");
    EXPECT_NEAR(WidthIn("Liberation Sans", 40, "ກກກກກກ a ⎧"), fits + tall, 1);
    EXPECT_LT(WidthIn("Liberation Sans", 40, "ກກກກກກ  ⎧a"), fits + tall - 10);
    EXPECT_THAT(m_met.Reports(), testing::IsEmpty());
}

// What a picture of that many rows above and below the line's own loses of the text, drawn twice.
std::vector<std::string> LostOf(const std::string& text, int above, int below) {
    TextContext met;
    const TextScope scope(met);
    FontInfo info {};
    {
        const TestWorld world(1, 1);
        UseFont("DejaVu Sans", 40);
        GetFontInfo(&info);
    }
    const TestWorld world(400,
                          static_cast<std::int16_t>(above + info.ascent + info.descent + below));
    UseFont("DejaVu Sans", 40);
    for (int round = 0; round < 2; ++round)
        Draw(0, static_cast<std::int16_t>(above + info.ascent), text);
    std::vector<std::string> lost;
    for (const Report& report : met.Reports())
        lost.push_back(Describe(report));
    return lost;
}

TEST_F(LineTest, WhatAPictureLosesAboveOrBelowIsSaidForEachCharacter) {
    const std::string noRoom = " cut off, for a line of 'DejaVu Sans' has no room for it";
    EXPECT_THAT(LostOf("Ẫ, aA\u0302\u0303Ẫ", 0, 0),
                testing::ElementsAre("character U+1EAA: its top is" + noRoom,
                                     "character U+0041 U+0302 U+0303: its top is" + noRoom));
    EXPECT_THAT(LostOf("Ẫ, aA\u0302\u0303Ẫ", 10, 0),
                testing::IsEmpty()); // room, as below another line
    EXPECT_THAT(LostOf("⎧", 0, 0),
                testing::ElementsAre("character U+23A7: its bottom is" + noRoom));
}

TEST_F(LineTest, ACharacterThatNoFontHasIsReplacedAndReportedOnce) {
    const Picture missing = PictureOf("DejaVu Sans", 40, "\U0010FFFD");
    PurgeTextCaches();
    EXPECT_EQ(missing, PictureOf("DejaVu Sans", 40, "\U0010FFFD"));
    EXPECT_EQ(missing, PictureOf("DejaVu Sans", 40, "\uFFFD"));
    EXPECT_FALSE(IsBlank(missing));
    ASSERT_THAT(m_met.Reports(), testing::SizeIs(1));
    EXPECT_EQ(m_met.Reports()[0].kind, ReportKind::kGlyphMissing);
    EXPECT_NE(m_met.Reports()[0].asked.find("10FFFD"), std::string::npos);
}

TEST_F(LineTest, ControlCharactersDrawNothing) {
    EXPECT_EQ(PictureOf("DejaVu Sans", 30, "a\x01\t\r\n\x7F\u0085\u2028z"),
              PictureOf("DejaVu Sans", 30, "az"));
    EXPECT_EQ(WidthIn("DejaVu Sans", 30, "\x01\n"), 0);
    EXPECT_THAT(m_met.Reports(), testing::IsEmpty());
}

// The part of a large drawing equals the drawing of the part, on both sides of the size from which
// glyphs are no longer cached.
TEST_F(LineTest, ClippingChangesNoPixelInside) {
    for (const std::int16_t size : { 60, 1500 }) {
        const auto draw = [size](std::int16_t width, std::int16_t height, std::int16_t x,
                                 std::int16_t y) {
            const TestWorld world(width, height);
            world.Erase();
            UseFont("DejaVu Serif", size);
            Draw(x, y, "RSÄ日");
            return world.Pixels();
        };
        const Picture all = draw(600, 400, -200, 300), part = draw(90, 70, -200 - 110, 300 - 230);
        for (int y = 0; y < 70; ++y)
            for (int x = 0; x < 90; ++x)
                ASSERT_EQ(part[y * 90 + x], all[(y + 230) * 600 + x + 110]) << size;
    }
}

TEST_F(LineTest, CachesStayWithinTheirBound) {
    const auto misses = GetTextCacheStats().lineMisses;
    for (int i = 0; i < 4000; ++i) {
        const TestWorld world(300, 60);
        for (int round = 0; round < 2; ++round) { // the second one makes the picture worth keeping
            world.Erase();
            UseFont("DejaVu Sans", static_cast<std::int16_t>(10 + i % 90));
            Draw(0, 50, "text " + std::to_string(i));
            LockPixels(world.Map());
            UnlockPixels(world.Map());
        }
    }
    const TextCacheStats after = GetTextCacheStats();
    EXPECT_LE(after.bytes, after.maxBytes);
    EXPECT_GT(after.bytes, 0);
    EXPECT_GE(after.lineMisses, misses + 4000);
    PurgeTextCaches();
    EXPECT_EQ(GetTextCacheStats().bytes, 0);
}

TEST_F(LineTest, PicturesCountTheLinesThatTheyKeepAlive) {
    const std::string text(3500, 'x');
    for (int i = 0; i < 4; ++i) { // until the line and its picture are worth keeping
        const TestWorld world(8, 8);
        world.Erase();
        UseFont("DejaVu Sans", 8);
        Draw(0, 8, text);
        world.Pixels();
    }
    constexpr std::int64_t kLineBytes = 3500 * 24; // a glyph takes so many at least
    EXPECT_GE(GetTextCacheStats().bytes, 2 * kLineBytes);
}

} // namespace
