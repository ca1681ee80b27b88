// SPDX-License-Identifier: BSD-3-Clause
#include "host/frames/PngReader.h"

#include <cstring>
#include <functional>

#include <gmock/gmock.h>

#include "host/frames/PngChunks.h"
#include "host/frames/TestPng.h"
#include "support/TemporaryFolder.h"

namespace host {
namespace {

using test::MakePicture;
using test::TestPng;
using ::testing::HasSubstr;

using Bytes8 = std::vector<std::uint8_t>;

// The picture's value at a channel of a pixel, straight from its packed row.
std::uint32_t Sample(const TestPng& picture, int channels, int x, int y, int channel) {
    const auto& row = picture.rows[std::size_t(y)];
    const auto index = std::size_t(x * channels + channel);
    if (picture.bitDepth == 16)
        return row[index * 2] << 8U | row[index * 2 + 1];
    if (picture.bitDepth == 8)
        return row[index];
    const int shift = 8 - picture.bitDepth - x * picture.bitDepth % 8;
    return row[std::size_t(x * picture.bitDepth / 8)] >> shift & ((1U << picture.bitDepth) - 1);
}

// What a pixel must look like in the image: red, green, blue, alpha.
std::array<std::uint32_t, 4> Expected(const TestPng& picture, int x, int y) {
    const std::uint32_t most = picture.bitDepth == 16 ? 65535 : 255;
    const auto channels = int(ChannelsOf(static_cast<ColorKind>(picture.colorType)));
    const auto sample = [&](int c) { return Sample(picture, channels, x, y, c); };
    if (picture.colorType == 3) {
        const std::size_t i = sample(0);
        const auto& colors = picture.palette;
        const auto& alpha = picture.transparency;
        return { colors[i * 3], colors[i * 3 + 1], colors[i * 3 + 2],
                 i < alpha.size() ? alpha[i] : 255U };
    }
    bool isKey = !picture.transparency.empty();
    for (int c = 0; isKey && c < channels; ++c)
        isKey = sample(c) == picture.transparency[std::size_t(c) * 2 + 1] +
                                 256U * picture.transparency[std::size_t(c) * 2];
    if (channels < 3) {
        const std::uint32_t grey =
            picture.bitDepth < 8 ? sample(0) * 255 / ((1U << picture.bitDepth) - 1) : sample(0);
        return { grey, grey, grey, channels == 2 ? sample(1) : isKey ? 0 : most };
    }
    return { sample(0), sample(1), sample(2), channels == 4 ? sample(3) : isKey ? 0 : most };
}

std::array<std::uint32_t, 4> Pixel(const Image& image, int x, int y) {
    const PixelFormat& format = image.Format();
    const std::uint8_t* pixel = &image.Row(y)[std::size_t(x) * format.BytesPerPixel()];
    std::array<std::uint32_t, 4> values {};
    const std::array order { format.red, format.green, format.blue, format.alpha };
    for (std::size_t i = 0; i < 4; ++i) {
        std::uint16_t wide = 0;
        if (format.depth == 64)
            std::memcpy(&wide, pixel + order[i] * 2, 2);
        values[i] = order[i] < 0 ? 255 : format.depth == 64 ? wide : pixel[order[i]];
    }
    return values;
}

std::vector<TestPng> EveryKind() {
    std::vector<TestPng> all;
    for (const auto& [type, depths] :
         std::vector<std::pair<int, std::vector<int>>> { { 0, { 1, 2, 4, 8, 16 } },
                                                         { 2, { 8, 16 } },
                                                         { 3, { 1, 2, 4, 8 } },
                                                         { 4, { 8, 16 } },
                                                         { 6, { 8, 16 } } })
        for (const int depth : depths)
            for (const bool interlaced : { false, true }) {
                TestPng picture = MakePicture(type, depth);
                picture.interlaced = interlaced;
                all.push_back(picture);
                const Bytes8& row = picture.rows[3];
                if (type == 0 && depth < 16)
                    picture.transparency = { 0, std::uint8_t(depth == 8 ? row[5] : 1) };
                else if (type == 0)
                    picture.transparency = { row[10], row[11] };
                else if (type == 2 && depth == 8)
                    picture.transparency = { 0, row[15], 0, row[16], 0, row[17] };
                else if (type == 2)
                    picture.transparency.assign(&row[30], &row[36]);
                else if (type == 3)
                    picture.transparency = { 0, 77 };
                else
                    continue;
                all.push_back(picture);
            }
    return all;
}

TEST(PngReader, ReadsEveryKindOfPictureExactly) {
    PngReader reader;
    Frame frame;
    std::string why;
    for (const TestPng& picture : EveryKind()) {
        SCOPED_TRACE(picture.Name());
        ASSERT_TRUE(reader.Decode(test::Write(picture), "it", frame, why)) << why;
        ASSERT_EQ(frame.image->Width(), picture.width);
        ASSERT_EQ(frame.image->Height(), picture.height);
        EXPECT_EQ(int(frame.header.color), picture.colorType);
        EXPECT_EQ(frame.header.bitDepth, picture.bitDepth);
        EXPECT_EQ(frame.header.interlaced, picture.interlaced);
        const bool alpha = picture.colorType >= 4 || !picture.transparency.empty();
        EXPECT_EQ(frame.image->Format(), picture.bitDepth == 16 ? kRgba64
                                         : alpha                ? kRgba32
                                                                : kRgb24);
        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < picture.width; ++x)
                ASSERT_EQ(Pixel(*frame.image, x, y), Expected(picture, x, y)) << x << ',' << y;
    }
}

TEST(PngReader, ReadsSmallInterlacedPicturesWhosePassesAreEmpty) {
    PngReader reader;
    Frame frame;
    std::string why;
    for (int width = 1; width <= 9; ++width)
        for (int height = 1; height <= 9; ++height) {
            TestPng picture = MakePicture(0, 2, width, height);
            picture.interlaced = true;
            ASSERT_TRUE(reader.Decode(test::Write(picture), "it", frame, why)) << why;
            ASSERT_EQ(Pixel(*frame.image, width - 1, height - 1),
                      Expected(picture, width - 1, height - 1))
                << picture.Name();
        }
}

TEST(PngReader, RefusesFilesThatEndAtAnyByte) {
    TestPng picture = MakePicture(3, 4);
    picture.transparency = { 5 };
    picture.chunks = { { "tEXt", std::string("Title\0cut", 9) } };
    const Bytes8 file = test::Write(picture);
    PngReader reader;
    for (std::size_t size = 0; size < file.size(); ++size) {
        Frame frame;
        std::string why;
        ASSERT_FALSE(reader.Decode(std::span(file).first(size), "c.png", frame, why)) << size;
        EXPECT_THAT(why, HasSubstr("c.png: is ")) << size;
    }
}

TEST(PngReader, FindsEveryFlippedBit) {
    const Bytes8 file = test::Write(MakePicture(2, 8, 4, 3));
    PngReader reader;
    for (std::size_t bit = 0; bit < file.size() * 8; ++bit) {
        Bytes8 broken = file;
        broken[bit / 8] ^= static_cast<std::uint8_t>(1 << bit % 8);
        Frame frame;
        std::string why;
        EXPECT_FALSE(reader.Decode(broken, "it", frame, why)) << "byte " << bit / 8;
    }
}

TEST(PngReader, SaysWhatIsWrong) {
    const Bytes8 good = test::Write(MakePicture(2, 8));
    const std::size_t header = 8;
    const auto changed = [&](std::size_t at, Bytes8 bytes) {
        Bytes8 file = good;
        std::copy(bytes.begin(), bytes.end(), file.begin() + std::ptrdiff_t(header + 8 + at));
        test::Resum(file, header);
        return file;
    };
    const auto with = [&](const char* before, const char* type, const char* data) {
        return test::WithChunkBefore(good, before, { type, data });
    };
    struct Row {
        Bytes8 file;
        std::string reason;
    };
    for (const Row& row : std::vector<Row> {
             { {}, "is empty" },
             { { 'G', 'I', 'F', '8', '9', 'a', 0, 0, 0 }, "is not a PNG file" },
             { changed(0, { 0, 0, 0, 0 }), "an impossible size" },
             { changed(0, { 0xFF, 0xFF, 0xFF, 0xFF }), "an impossible size" },
             { changed(0, { 0, 0, 0x80, 0 }), "is too large: 32768 x 11 pixels" },
             { changed(0, { 0, 0, 0x7F, 0xFF, 0, 0, 0x7F, 0xFF }), "is too large: 32767 x 32767" },
             { changed(0, { 0, 0, 0x40, 0, 0, 0, 0x40, 0 }), "fewer pixels than its header says" },
             { changed(4, { 0, 0, 0, 12 }), "fewer pixels than its header says" },
             { changed(4, { 0, 0, 0, 10 }), "more pixels than its header says" },
             { changed(8, { 3 }), "unknown colour type (2 with 3 bits)" },
             { changed(9, { 5 }), "unknown colour type (5 with 8 bits)" },
             { changed(9, { 3 }), "has no palette" },
             { changed(12, { 2 }), "interlace method" },
             { with("IDAT", "acTL", "\1\1\1\1\1\1\1\1"), "is an animated PNG" },
             { with("IDAT", "IHDR", "1234567890123"), "chunk IHDR stands twice" },
             { with("IHDR", "tEXt", "a"), "begins without an IHDR chunk" },
             { with("IDAT", "COOL", "a"), "needs the unknown chunk COOL" },
             { with("IDAT", "PLTE", "1234"), "chunk PLTE has the wrong length" },
             { with("IDAT", "tRNS", "1234"), "chunk tRNS has the wrong length" },
             { with("IEND", "PLTE", "123"), "chunk PLTE comes after the pixels" },
             { with("IDAT", "IDAT", "not a stream"), "compressed pixels cannot be read" } }) {
        PngReader reader;
        Frame frame;
        std::string why;
        EXPECT_FALSE(reader.Decode(row.file, "a.png", frame, why)) << row.reason;
        EXPECT_THAT(why, HasSubstr("a.png: "));
        EXPECT_THAT(why, HasSubstr(row.reason));
    }
}

TEST(PngReader, PassesOnWhatLibpngFindsAndReadsTheNextFile) {
    // The row's filter is 9, which there is not; the sums are right.
    Bytes8 file = test::Write(MakePicture(0, 8, 1, 1));
    const std::size_t pixels = test::ChunkOffsets(file)[1];
    const Bytes8 stream { 0x78, 0x01, 1, 2, 0, 0xFD, 0xFF, 9, 0, 0, 0x14, 0, 0x0A };
    Bytes8 made(file.begin(), file.begin() + std::ptrdiff_t(pixels));
    const Bytes8 end(file.end() - 12, file.end());
    made.insert(made.end(), end.begin(), end.end());
    made = test::WithChunkBefore(made, "IEND", { "IDAT", { stream.begin(), stream.end() } });
    PngReader reader;
    Frame frame;
    std::string why;
    EXPECT_FALSE(reader.Decode(made, "f.png", frame, why));
    EXPECT_THAT(why, HasSubstr("f.png: is damaged: bad adaptive filter"));
    EXPECT_TRUE(reader.Decode(file, "f.png", frame, why)) << why;
}

TEST(PngReader, NamesFilesThatItCannotOpen) {
    const TemporaryFolder folder;
    PngReader reader({ .fileBytes = 10 });
    Frame frame;
    std::string why;
    EXPECT_FALSE(reader.Read(folder.Path() / "none.png", frame, why));
    EXPECT_THAT(why, HasSubstr("none.png: cannot be read: No such file"));
    EXPECT_FALSE(reader.Read(folder.Path(), frame, why));
    EXPECT_THAT(why, HasSubstr("Is a directory"));
    EXPECT_FALSE(reader.Read("/dev/null", frame, why));
    EXPECT_THAT(why, HasSubstr("is not a file"));
}

} // namespace
} // namespace host
