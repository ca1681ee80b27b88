// SPDX-License-Identifier: BSD-3-Clause
// Reads and writes PNG files of every kind.
#include <numeric>

#include <gmock/gmock.h>

#include "host/frames/PngReader.h"
#include "host/frames/PngWriter.h"
#include "host/frames/TestPng.h"
#include "support/TemporaryFolder.h"

namespace host {
namespace {

using test::MakePicture;
using test::TestChunk;
using test::TestPng;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

using Bytes8 = std::vector<std::uint8_t>;

// Without and with transparency, and interlaced; small ones too, of whose seven passes some are empty.
std::vector<TestPng> EveryKind() {
    std::vector<TestPng> all;
    for (const int type : { 0, 2, 3, 4, 6 })
        for (const int depth : { 1, 2, 4, 8, 16 }) {
            if (type == 3 ? depth == 16 : type != 0 && depth < 8)
                continue; // there are none such
            TestPng picture = MakePicture(type, depth);
            all.push_back(picture);
            if (type == 3)
                picture.transparency = { 0, 77 };
            // The colour of a pixel within, or in a few bits one that is met anyhow.
            const auto* const pixel = picture.rows[3].data();
            for (int i = 0; i < (type == 0 ? 1 : type == 2 ? 3 : 0); ++i) {
                picture.transparency.push_back(depth == 16 ? pixel[i * 2] : 0);
                picture.transparency.push_back(depth == 16  ? pixel[i * 2 + 1]
                                               : depth == 8 ? pixel[i]
                                                            : 1);
            }
            if (type <= 3)
                all.push_back(picture);
        }
    const std::vector<TestPng> straight = all;
    all.insert(all.end(), straight.begin(), straight.end());
    for (int width = 1; width <= 9; ++width)
        for (int height = 1; height <= 9; ++height)
            all.push_back(MakePicture(0, 2, width, height));
    for (std::size_t i = straight.size(); i < all.size(); ++i)
        all[i].interlaced = true;
    return all;
}

// A row as an image has it: where 16 bits come without an alpha, they get a full one.
Bytes8 WithAlpha(const TestPng& expanded, std::size_t y) {
    const Bytes8& row = expanded.rows[y];
    if (expanded.bitDepth == 8 || expanded.colorType == 6)
        return row;
    Bytes8 wide;
    for (std::size_t i = 0; i < row.size(); i += 6) {
        wide.insert(wide.end(), &row[i], &row[i] + 6);
        wide.insert(wide.end(), 2, 0xFF);
    }
    return wide;
}

class PngReaderTest : public ::testing::Test {
protected:
    // Why the bytes are refused.
    std::string ErrorOf(std::span<const std::uint8_t> bytes) {
        why.clear();
        EXPECT_FALSE(reader.Decode(bytes, "a.png", frame, why));
        return why;
    }

    PngReader reader;
    Frame frame;
    std::string why;
};

TEST_F(PngReaderTest, ReadsEveryKindOfPictureExactly) {
    for (const TestPng& picture : EveryKind()) {
        SCOPED_TRACE(testing::Message() << picture.colorType << ", " << picture.bitDepth
                                        << " bits, " << picture.width << " x " << picture.height);
        const Bytes8 file = test::Write(picture);
        ASSERT_TRUE(reader.Decode(file, "it", frame, why)) << why;
        const TestPng expected = test::Read(file, true);
        ASSERT_EQ(frame.image->Width(), picture.width);
        ASSERT_EQ(frame.image->Height(), picture.height);
        EXPECT_EQ(int(frame.header.color), picture.colorType);
        EXPECT_EQ(frame.header.bitDepth, picture.bitDepth);
        EXPECT_EQ(frame.header.interlaced, picture.interlaced);
        EXPECT_EQ(frame.image->Format(), picture.bitDepth == 16    ? kRgba64
                                         : expected.colorType == 6 ? kRgba32
                                                                   : kRgb24);
        for (int y = 0; y < picture.height; ++y) {
            const auto row = frame.image->Row(y);
            ASSERT_EQ(Bytes8(row.begin(), row.end()), WithAlpha(expected, std::size_t(y))) << y;
        }
    }
}

TEST_F(PngReaderTest, RefusesFilesThatEndAtAnyByteAndFindsEveryFlippedBit) {
    TestPng picture = MakePicture(3, 4);
    picture.transparency = { 5 };
    picture.chunks = { { "tEXt", std::string("Title\0cut", 9) } };
    Bytes8 file = test::Write(picture);
    for (std::size_t size = 0; size < file.size(); ++size)
        EXPECT_THAT(ErrorOf(std::span(file).first(size)), HasSubstr("a.png: is ")) << size;
    for (std::size_t bit = 0; bit < file.size() * 8; ++bit) {
        const auto mask = static_cast<std::uint8_t>(1 << bit % 8);
        file[bit / 8] ^= mask;
        EXPECT_NE(ErrorOf(file), "") << "byte " << bit / 8;
        file[bit / 8] ^= mask;
    }
}

TEST_F(PngReaderTest, SaysWhatIsWrongAndReadsTheNextFile) {
    const Bytes8 good = test::Write(MakePicture(2, 8));
    const std::size_t header = 8;
    const auto changed = [&](std::size_t at, Bytes8 bytes) {
        Bytes8 file = good;
        std::copy(bytes.begin(), bytes.end(), file.begin() + std::ptrdiff_t(header + 8 + at));
        test::Resum(file, header);
        return file;
    };
    const auto with = [&](const char* before, const char* type, const std::string& data) {
        return test::WithChunkBefore(good, before, { type, data });
    };
    // The row's filter is 9, which there is not; the sums are right.
    Bytes8 filtered = test::Write(MakePicture(0, 8, 1, 1));
    filtered.erase(filtered.begin() + 33, filtered.end() - 12);
    filtered = test::WithChunkBefore(filtered, "IEND",
                                     { "IDAT", { "\x78\1\1\2\0\xFD\xFF\x09\0\0\x14\0\x0A", 13 } });
    for (const auto& [file, reason] : std::vector<std::pair<Bytes8, std::string>> {
             { {}, "is empty" },
             { { 'G', 'I', 'F', '8', '9', 'a', 0, 0, 0 }, "is not a PNG file" },
             { changed(0, { 0, 0, 0, 0 }), "an impossible size" },
             { changed(0, { 0, 0, 0x80, 0 }), "is too large: 32768 x 11 pixels" },
             { changed(0, { 0, 0, 0x7F, 0xFF, 0, 0, 0x7F, 0xFF }), "is too large: 32767 x 32767" },
             { changed(0, { 0, 0, 0x40, 0, 0, 0, 0x40, 0 }), "fewer pixels than its header says" },
             { changed(4, { 0, 0, 0, 12 }), "fewer pixels than its header says" },
             { changed(4, { 0, 0, 0, 10 }), "more pixels than its header says" },
             { changed(9, { 5 }), "unknown colour type (5 with 8 bits)" },
             { changed(9, { 3 }), "has no palette" },
             { changed(12, { 2 }), "interlace method" },
             { with("IDAT", "acTL", "\1\1\1\1\1\1\1\1"), "is an animated PNG" },
             { with("IDAT", "IHDR", "1234567890123"), "chunk IHDR stands twice" },
             { with("IHDR", "tEXt", "a"), "begins without an IHDR chunk" },
             { with("IDAT", "COOL", "a"), "needs the unknown chunk COOL" },
             { with("IDAT", "PLTE", "1234"), "chunk PLTE has the wrong length" },
             { with("IEND", "PLTE", "123"), "chunk PLTE comes after the pixels" },
             { with("IDAT", "IDAT", "not a stream"), "compressed pixels cannot be read" },
             { filtered, "is damaged: bad adaptive filter" } }) {
        EXPECT_THAT(ErrorOf(file), HasSubstr("a.png: "));
        EXPECT_THAT(why, HasSubstr(reason));
    }
    EXPECT_TRUE(reader.Decode(good, "a.png", frame, why)) << why;
}

TEST_F(PngReaderTest, NamesFilesThatItCannotOpen) {
    const TemporaryFolder folder;
    PngReader small({ .fileBytes = 10 });
    for (const auto& [file, reason] : std::vector<std::pair<std::filesystem::path, std::string>> {
             { folder.Path() / "none.png", "none.png: cannot be read: No such file" },
             { folder.Path(), "Is a directory" },
             { folder.Write("long.png", "eleven byte"), "is larger than a frame may be" },
             { "/dev/null", "is not a file" } }) {
        EXPECT_FALSE(small.Read(file, frame, why));
        EXPECT_THAT(why, HasSubstr(reason));
    }
}

Frame Load(const Bytes8& file) {
    Frame frame;
    std::string why;
    EXPECT_TRUE(PngReader().Decode(file, "it", frame, why)) << why;
    return frame;
}

Bytes8 Encode(const Frame& frame, const PixelRect& touched, int level = kPngLevelDefault) {
    PngWriter writer(level);
    std::string why;
    const auto bytes = writer.Encode(frame, HeaderFor(frame, touched), why);
    return { bytes.begin(), bytes.end() };
}

TestPng Save(const Frame& frame, const PixelRect& touched) {
    return test::Read(Encode(frame, touched));
}

TestPng Again(const TestPng& picture, const PixelRect& touched = {}) {
    return Save(Load(test::Write(picture)), touched);
}

constexpr PixelRect kFirst { 0, 0, 1, 1 };
constexpr PixelRect kAll { -5, -5, 1000, 1000 };

TEST(PngWriter, WritesKindDepthAndValuesOfFlatAndNoisyRowsAtEveryLevel) {
    for (const auto& [type, depth] : std::vector<std::pair<int, int>> {
             { 0, 8 }, { 0, 16 }, { 2, 8 }, { 2, 16 }, { 4, 8 }, { 4, 16 }, { 6, 8 }, { 6, 16 } })
        for (const int width : { 1, 2, 13, 200 }) {
            TestPng picture = MakePicture(type, depth, width);
            for (std::size_t y = 3; y < 9; ++y)
                std::ranges::fill(picture.rows[y], static_cast<std::uint8_t>(y / 2));
            const Frame frame = Load(test::Write(picture));
            for (int level = -1; level <= 10; ++level) {
                const TestPng written = test::Read(Encode(frame, kAll, level));
                EXPECT_EQ(written.colorType, type);
                EXPECT_EQ(written.bitDepth, depth);
                EXPECT_EQ(written.rows, picture.rows) << type << ' ' << depth << ' ' << level;
            }
        }
}

TEST(PngWriter, KeepsMetadataInPlaceAndDropsWhatPixelsMakeFalse) {
    TestPng picture = MakePicture(2, 8);
    picture.palette = { 1, 2, 3, 4, 5, 6 };
    picture.chunks = { { "bKGD", std::string("\0\1\0\2\0\3", 6) },
                       { "hIST", std::string("\0\1\0\2", 4) },
                       { "pHYs", std::string("\0\0\x0B\x13\0\0\x0B\x13\1", 9) },
                       { "eXIf", "MM" },
                       { "tIME", std::string("\7\xE8\1\2\3\4\5", 7) },
                       { "tEXt", std::string("Title\0cut 12", 12) },
                       { "prVt", "kept: safe to copy" },
                       { "tEXt", std::string("Software\0later", 14), true } };
    Bytes8 file = test::Write(picture);
    for (const TestChunk& first : { TestChunk { "gAMA", std::string("\0\0\xB1\x8F", 4) },
                                    TestChunk { "cICP", std::string("\1\x0D\0\1", 4) } })
        file = test::WithChunkBefore(file, "PLTE", first);
    const TestChunk dropped { "prVT", "goes with the pixels" };
    const Bytes8 bytes = Encode(Load(test::WithChunkBefore(file, "IEND", dropped)), kAll);
    EXPECT_EQ(test::Read(bytes).chunks, test::Read(file).chunks);
    EXPECT_EQ(test::Read(bytes).palette, picture.palette);
    const std::string text(bytes.begin(), bytes.end());
    EXPECT_LT(text.find("cICP"), text.find("PLTE"));
    EXPECT_GT(text.find("hIST"), text.find("PLTE"));
}

TEST(PngWriter, GreyBecomesRgbOnlyWhereColourWasPainted) {
    for (const int type : { 0, 4 }) {
        TestPng picture = MakePicture(type, 8);
        picture.chunks = { { "sBIT", type == 0 ? "\6" : "\6\7" },
                           { "bKGD", std::string("\0\x40", 2) },
                           { "iCCP", std::string("grey\0\0data", 10) } };
        Frame frame = Load(test::Write(picture));
        const auto pixel = frame.image->Row(0).first(3);
        std::ranges::fill(pixel, std::uint8_t { 9 });
        const TestPng grey = Save(frame, kFirst);
        EXPECT_EQ(grey.colorType, type);
        EXPECT_EQ(grey.chunks, picture.chunks);

        pixel[1] = 8;
        EXPECT_EQ(Save(frame, { 1, 0, 13, 11 }).colorType, type) << "not in the touched part";
        const TestPng colored = Save(frame, kFirst);
        EXPECT_EQ(colored.colorType, type + 2);
        EXPECT_THAT(colored.chunks,
                    ElementsAre(TestChunk { "sBIT", type == 0 ? "\6\6\6" : "\6\6\6\7" },
                                TestChunk { "bKGD", std::string("\0\x40\0\x40\0\x40", 6) }));
        EXPECT_EQ(colored.rows[0][1], 8);
    }
}

TEST(PngWriter, PalettesBecomeRgbAndLowDepthsEightBits) {
    TestPng palette = MakePicture(3, 2), seeThrough = palette, grey = MakePicture(0, 4);
    palette.palette = { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12 };
    palette.chunks = { { "sBIT", "\5\6\7" }, { "bKGD", "\2" }, { "hIST", "12345678" } };
    seeThrough.transparency = { 9 };
    seeThrough.chunks = { { "sBIT", "\5\6\7" }, { "bKGD", "\4" } };
    grey.chunks = { { "bKGD", std::string("\0\3", 2) } };
    using Row = std::tuple<TestPng, int, std::vector<TestChunk>>;
    for (const auto& [picture, type, chunks] : std::vector<Row> {
             { palette,
               2,
               { { "sBIT", "\5\6\7" }, { "bKGD", std::string("\0\7\0\x08\0\x09", 6) } } },
             { seeThrough, 6, { { "sBIT", "\5\6\7\x08" } } },
             { grey, 0, { { "bKGD", std::string("\0\x33", 2) } } } }) {
        const TestPng written = Again(picture);
        EXPECT_EQ(written.colorType, type);
        EXPECT_EQ(written.bitDepth, 8);
        EXPECT_TRUE(written.palette.empty());
        EXPECT_EQ(written.chunks, chunks);
    }
    EXPECT_EQ(Again(grey).rows[0][0], (grey.rows[0][0] >> 4) * 17);
}

TEST(PngWriter, ATransparentColourStaysWhileItSaysAll) {
    TestPng picture = MakePicture(2, 8);
    picture.rows[0][0] = picture.rows[0][1] = picture.rows[0][2] = 200;
    picture.transparency = { 0, 200, 0, 200, 0, 200 };
    Frame frame = Load(test::Write(picture));
    const TestPng same = Save(frame, kAll);
    EXPECT_EQ(same.transparency, picture.transparency);
    EXPECT_EQ(same.rows, picture.rows);

    frame.image->Row(0)[3] = 255; // opaque in the very colour that means transparent
    const TestPng opaque = Save(frame, kFirst);
    EXPECT_EQ(opaque.colorType, 6);
    EXPECT_EQ(opaque.rows[0][3], 255);

    TestPng grey = MakePicture(0, 2);
    grey.transparency = { 0, 2 };
    EXPECT_THAT(Again(grey, kAll).transparency, ElementsAre(0, 170));
}

TEST(PngWriter, PacksImagesOfEveryChannelOrder) {
    for (const auto& [format, packed] : std::vector<std::pair<PixelFormat, Bytes8>> {
             { kArgb32, { 2, 3, 4, 1 } },
             { kArgb64, { 4, 3, 6, 5, 8, 7, 2, 1 } },
             { { 24, -1, 2, 1, 0 }, { 3, 2, 1, 255 } } }) {
        Frame frame { Image::Make(1, 1, format, 3), {} };
        frame.header.color = ColorKind::kRgba;
        std::iota(frame.image->Row(0).begin(), frame.image->Row(0).end(), std::uint8_t { 1 });
        EXPECT_EQ(Save(frame, {}).rows[0], packed);
    }
}

} // namespace
} // namespace host
