// SPDX-License-Identifier: BSD-3-Clause
// How names become families, and what is said about the ones that do not.
#include "platform/Fonts.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <memory>
#include <set>

#include "platform/TextContext.h"
#include "platform/text/Layout.h"
#include "support/TemporaryFolder.h"

namespace {

using namespace platform;
using testing::IsEmpty;
using testing::SizeIs;

FontNumber NumberOf(const std::string& name) {
    std::string counted = static_cast<char>(name.size()) + name;
    FontNumber number = -1;
    GetFNum(reinterpret_cast<const std::uint8_t*>(counted.data()), &number);
    return number;
}

std::string NameOf(FontNumber number) {
    std::uint8_t name[256];
    GetFontName(number, name);
    return { reinterpret_cast<const char*>(name) + 1, name[0] };
}

class FontsTest : public testing::Test {
protected:
    TextContext m_met;
    TextScope m_scope { m_met };
};

TEST_F(FontsTest, NamesAreFoundWithoutRegardToCase) {
    const FontNumber number = NumberOf("Liberation Sans");
    EXPECT_GT(number, 0);
    EXPECT_EQ(NumberOf("liberation SANS"), number);
    EXPECT_EQ(NameOf(number), "Liberation Sans");
    EXPECT_NE(NumberOf("Liberation Serif"), number);
    EXPECT_EQ(NumberOf(""), 0);
    EXPECT_THAT(m_met.Reports(), IsEmpty());
}

TEST_F(FontsTest, FamiliesOpenAndAliasesFindADesignOfTheSameScript) {
    std::set<std::string> installed;
    for (const FontFamily& family : InstalledFontFamilies()) {
        installed.insert(family.name);
        EXPECT_EQ(ResolveFontFamily(family.name).match, FontMatch::kInstalled) << family.name;
        EXPECT_EQ(ResolveFontFamily(family.name).file, family.file);
        EXPECT_TRUE(std::filesystem::exists(family.file)) << family.file;
        for (const std::string& alias : family.aliases)
            EXPECT_EQ(ResolveFontFamily(alias).match, FontMatch::kInstalled) << alias;
    }
    for (const char* name :
         { "Arial", "ＭＳ ゴシック", "ヒラギノ明朝 Pro W3", "times new roman" }) {
        const FontResolution resolution = ResolveFontFamily(name);
        if (installed.count(name) == 0) {
            EXPECT_EQ(resolution.match, FontMatch::kAlias) << name;
            EXPECT_EQ(installed.count(resolution.family), 1u) << name;
            EXPECT_NE(resolution.reason, "") << name;
            EXPECT_EQ(NameOf(NumberOf(name)), resolution.family);
        }
    }
    for (const FontAlias& alias : FontAliases())
        EXPECT_TRUE(alias.family.empty() || installed.count(alias.family)) << alias.asked;
    EXPECT_THAT(m_met.Reports(), IsEmpty());
}

TEST_F(FontsTest, AnUnknownNameGivesTheDefaultAndOneReport) {
    EXPECT_EQ(NumberOf("No Such Family"), 0);
    EXPECT_EQ(NumberOf("No Such Family"), 0);
    ASSERT_THAT(m_met.Reports(), SizeIs(1));
    EXPECT_EQ(m_met.Reports()[0].kind, ReportKind::kFontSubstituted);
    EXPECT_EQ(m_met.Reports()[0].asked, "No Such Family");
    EXPECT_EQ(m_met.Reports()[0].used, NameOf(0));
    EXPECT_EQ(ResolveFontFamily("No Such Family").match, FontMatch::kUnknown);
    TextContext other;
    const TextScope scope(other);
    NumberOf("No Such Family");
    EXPECT_THAT(other.Reports(), SizeIs(1));
}

TEST_F(FontsTest, BrokenFilesSayWhyAndNeverCrash) {
    const TemporaryFolder folder;
    const std::string file = (folder.Path() / "broken.ttf").string();
    std::ifstream source(ResolveFontFamily("Liberation Sans").file, std::ios::binary);
    const std::string whole { std::istreambuf_iterator<char>(source), {} };
    std::string why;
    EXPECT_EQ(text::Face::Open({ (folder.Path() / "none.ttf").string() }, why), nullptr);
    EXPECT_NE(why, "");
    for (std::size_t size = 0; size < whole.size(); size = size * 3 + 7) {
        std::ofstream(file, std::ios::binary)
            .write(whole.data(), static_cast<std::streamsize>(size));
        why.clear();
        const auto face = text::Face::Open({ file }, why);
        EXPECT_EQ(face == nullptr, !why.empty()) << size;
        EXPECT_TRUE(face || size < whole.size()) << size;
        if (face) // cut short within its glyphs, whose loss must be survived
            for (unsigned glyph = 0; glyph < 3000; ++glyph)
                face->InkOf(glyph);
    }
}

// Writes over the empty substitutions of a font: its digit one has another, tabular shape, which is that
// of a W.
std::string WithTabularOne(std::string font, std::uint16_t one, std::uint16_t wide) {
    const std::uint16_t words[] = {
        1, 0,      10,     30, 44,                     // scripts, features, lookups
        1, 0x4446, 0x4C54, 8,  4,  0, 0, 0xFFFF, 1, 0, // 'DFLT' has the first feature
        1, 0x746E, 0x756D, 8,  0,  1, 0,               // 'tnum', which is the first lookup
        1, 4,      1,      0,  1,  8, 2, 8,      1, wide, 1, 1, one,
    };
    const auto entry = font.find("GSUB") + 8;
    std::size_t at = 0;
    for (std::size_t i = 0; i < 4; ++i)
        at = at << 8 | static_cast<std::uint8_t>(font[entry + i]);
    for (const std::uint16_t word : words) {
        font[at++] = static_cast<char>(word >> 8);
        font[at++] = static_cast<char>(word);
    }
    return font;
}

TEST_F(FontsTest, DigitsAreTabularWhereAFontHasSuch) {
    const TemporaryFolder folder;
    const std::string file = (folder.Path() / "tabular.ttf").string();
    const auto regular = ResolveFontFamily("Liberation Sans").file;
    const auto glyph = [this](const std::string& name, const char* character, bool tabular) {
        m_met.UseTabularDigits(tabular);
        std::string why;
        const auto face = text::Face::Open({ name }, why);
        text::Family family;
        family.face = face.get();
        return text::LayOutGlyphs(family, 20, character).glyphs.at(0).glyph;
    };
    const auto one = glyph(regular, "1", false), wide = glyph(regular, "W", false);
    EXPECT_EQ(glyph(regular, "1", true), one);
    std::ifstream source(regular, std::ios::binary);
    std::ofstream(file, std::ios::binary)
        << WithTabularOne({ std::istreambuf_iterator<char>(source), {} },
                          static_cast<std::uint16_t>(one), static_cast<std::uint16_t>(wide));
    EXPECT_EQ(glyph(file, "1", false), one);
    EXPECT_EQ(glyph(file, "1", true), wide);
}

} // namespace
