// SPDX-License-Identifier: BSD-3-Clause
#include "host/frames/PngReader.h"

#include <gmock/gmock.h>

#include "host/frames/TestPng.h"
#include "support/TemporaryFolder.h"

namespace host {
namespace {

using test::MakePicture;
using test::TestPng;
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
        SCOPED_TRACE(picture.Name());
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

TEST_F(PngReaderTest, RefusesFilesThatEndAtAnyByte) {
    TestPng picture = MakePicture(3, 4);
    picture.transparency = { 5 };
    picture.chunks = { { "tEXt", std::string("Title\0cut", 9) } };
    const Bytes8 file = test::Write(picture);
    for (std::size_t size = 0; size < file.size(); ++size)
        EXPECT_THAT(ErrorOf(std::span(file).first(size)), HasSubstr("a.png: is ")) << size;
}

TEST_F(PngReaderTest, FindsEveryFlippedBit) {
    Bytes8 file = test::Write(MakePicture(2, 8, 4, 3));
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
             { with("IDAT", "IDAT", "not a stream"), "compressed pixels cannot be read" },
             { filtered, "is damaged: bad adaptive filter" } }) {
        EXPECT_THAT(ErrorOf(row.file), HasSubstr("a.png: "));
        EXPECT_THAT(why, HasSubstr(row.reason));
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

} // namespace
} // namespace host
