// SPDX-License-Identifier: BSD-3-Clause
#include "host/frames/PngWriter.h"

#include <gmock/gmock.h>

#include "host/frames/PngReader.h"
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

TEST(PngWriter, WritesKindDepthAndValuesAsTheyWere) {
    for (const auto& [type, depth] : std::vector<std::pair<int, int>> {
             { 0, 8 }, { 0, 16 }, { 2, 8 }, { 2, 16 }, { 4, 8 }, { 4, 16 }, { 6, 8 }, { 6, 16 } })
        for (const int width : { 1, 2, 13, 200 }) {
            const TestPng picture = MakePicture(type, depth, width);
            const TestPng written = Again(picture, kAll);
            EXPECT_EQ(written.colorType, type) << picture.Name();
            EXPECT_EQ(written.bitDepth, depth) << picture.Name();
            EXPECT_EQ(written.rows, picture.rows) << picture.Name();
        }
}

TEST(PngWriter, WritesTheSamePixelsAtEveryLevelOfFlatAndNoisyRows) {
    TestPng picture = MakePicture(2, 8, 100, 40);
    for (std::size_t y = 10; y < 30; ++y)
        picture.rows[y].assign(300, static_cast<std::uint8_t>(y / 7));
    const Frame frame = Load(test::Write(picture));
    for (int level = -1; level <= 10; ++level)
        EXPECT_EQ(test::Read(Encode(frame, {}, level)).rows, picture.rows) << level;
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
    TestPng palette = MakePicture(3, 2);
    palette.palette = { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12 };
    palette.chunks = { { "sBIT", "\5\6\7" }, { "bKGD", "\2" }, { "hIST", "12345678" } };
    TestPng written = Again(palette);
    EXPECT_EQ(written.colorType, 2);
    EXPECT_EQ(written.bitDepth, 8);
    EXPECT_TRUE(written.palette.empty());
    EXPECT_THAT(written.chunks,
                ElementsAre(TestChunk { "sBIT", "\5\6\7" },
                            TestChunk { "bKGD", std::string("\0\7\0\x08\0\x09", 6) }));

    palette.transparency = { 9 };
    palette.chunks = { { "sBIT", "\5\6\7" }, { "bKGD", "\4" } };
    written = Again(palette);
    EXPECT_EQ(written.colorType, 6);
    EXPECT_THAT(written.chunks, ElementsAre(TestChunk { "sBIT", "\5\6\7\x08" }));

    TestPng grey = MakePicture(0, 4);
    grey.chunks = { { "bKGD", std::string("\0\3", 2) } };
    written = Again(grey);
    EXPECT_EQ(written.colorType, 0);
    EXPECT_EQ(written.bitDepth, 8);
    EXPECT_EQ(written.rows[0][0], (grey.rows[0][0] >> 4) * 17);
    EXPECT_THAT(written.chunks, ElementsAre(TestChunk { "bKGD", std::string("\0\x33", 2) }));
}

TEST(PngWriter, ATransparentColourStaysWhileItSaysAll) {
    TestPng picture = MakePicture(2, 8);
    picture.rows[0][0] = picture.rows[0][1] = picture.rows[0][2] = 200;
    picture.transparency = { 0, 200, 0, 200, 0, 200 };
    Frame frame = Load(test::Write(picture));
    const TestPng same = Save(frame, kAll);
    EXPECT_EQ(same.colorType, 2);
    EXPECT_EQ(same.transparency, picture.transparency);
    EXPECT_EQ(same.rows, picture.rows);

    frame.image->Row(0)[3] = 255; // opaque in the very colour that means transparent
    const TestPng opaque = Save(frame, kFirst);
    EXPECT_EQ(opaque.colorType, 6);
    EXPECT_TRUE(opaque.transparency.empty());
    EXPECT_EQ(opaque.rows[0][3], 255);

    TestPng grey = MakePicture(0, 2);
    grey.transparency = { 0, 2 };
    const TestPng widened = Again(grey, kAll);
    EXPECT_EQ(widened.colorType, 0);
    EXPECT_THAT(widened.transparency, ElementsAre(0, 170));
}

TEST(PngWriter, PacksImagesOfEveryChannelOrder) {
    for (const PixelFormat& format : { kArgb32, kArgb64, PixelFormat { 24, -1, 2, 1, 0 } }) {
        Frame frame { Image::Make(1, 1, format, 3), {} };
        frame.header.color = ColorKind::kRgba;
        const auto size = std::size_t(format.BytesPerChannel());
        std::uint8_t value = 1;
        for (const int channel : { format.red, format.green, format.blue, format.alpha })
            for (std::size_t byte = 0; channel >= 0 && byte < size; ++byte)
                frame.image->Row(0)[std::size_t(channel) * size + byte] = value++;
        const TestPng written = Save(frame, {});
        EXPECT_EQ(written.bitDepth, int(size * 8));
        EXPECT_EQ(written.rows[0], size == 2          ? (Bytes8 { 2, 1, 4, 3, 6, 5, 8, 7 })
                                   : format.alpha < 0 ? (Bytes8 { 1, 2, 3, 255 })
                                                      : (Bytes8 { 1, 2, 3, 4 }));
    }
}

} // namespace
} // namespace host
