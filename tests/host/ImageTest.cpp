// SPDX-License-Identifier: BSD-3-Clause
#include "host/Image.h"

#include <algorithm>
#include <array>
#include <limits>
#include <random>

#include "LedgerTest.h"
#include "host/Tables.h"

namespace host {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::uint8_t kPad = 0xEE;
constexpr auto kMax = std::numeric_limits<std::int32_t>::max();
constexpr auto kMin = std::numeric_limits<std::int32_t>::min();

// Every order of the channels in every depth, with an unused channel in place of the alpha as well.
std::vector<PixelFormat> AllFormats() {
    std::vector<PixelFormat> formats;
    for (std::int32_t depth : { 24, 32, 64 }) {
        std::array<std::int32_t, 4> places { 0, 1, 2, 3 };
        do {
            for (const auto alpha : { places[3], -1 }) {
                const PixelFormat format { depth, alpha, places[0], places[1], places[2] };
                if (format.IsValid())
                    formats.push_back(format);
            }
        } while (std::ranges::next_permutation(places).found);
    }
    EXPECT_EQ(formats.size(), 6U + 48 + 48);
    return formats;
}

std::string Print(const PixelFormat& f) {
    return std::to_string(f.depth) + " bits, a" + std::to_string(f.alpha) + " r" +
           std::to_string(f.red) + " g" + std::to_string(f.green) + " b" + std::to_string(f.blue);
}

// Random pixels, kPad behind each row.
std::unique_ptr<Image> RandomImage(std::int32_t width, std::int32_t height, PixelFormat format,
                                   unsigned seed) {
    auto image = Image::Make(width, height, format, 5);
    std::mt19937 random(seed);
    std::ranges::fill(image->Bytes(), kPad);
    for (std::int32_t y = 0; y < height; ++y)
        std::ranges::generate(image->Row(y), [&] { return static_cast<std::uint8_t>(random()); });
    return image;
}

void ExpectPaddingUntouched(const Image& image, const std::string& what) {
    for (std::int32_t y = 0; y < image.Height(); ++y) {
        const auto* end = image.Row(y).data() + image.Row(y).size();
        EXPECT_THAT(std::vector(end, end + 5), Each(kPad)) << what << ", row " << y;
    }
}

// The pixel at (x, y) through the cursor.
std::uint32_t PixelAt(Image& image, std::int32_t x, std::int32_t y) {
    image.MoveTo(x, y);
    return image.GetPixel();
}

std::vector<std::uint32_t> AllPixels(Image& image) {
    std::vector<std::uint32_t> pixels;
    for (std::int32_t y = 0; y < image.Height(); ++y)
        for (std::int32_t x = 0; x < image.Width(); ++x)
            pixels.push_back(PixelAt(image, x, y));
    return pixels;
}

class ImageTest : public LedgerTest {};

TEST_F(ImageTest, IsNotMadeOfWhatCannotBe) {
    EXPECT_FALSE(Image::Make(0, 1, kRgb24));
    EXPECT_FALSE(Image::Make(1, -1, kRgb24));
    EXPECT_FALSE(Image::Make(1, 1, kRgb24, -1));
    EXPECT_FALSE(Image::Make(kMax / 4, 1, kArgb64));
    EXPECT_FALSE(Image::Make(1, 1, { 16, -1, 0, 1, 2 }));
    EXPECT_FALSE(Image::Make(1, 1, { 32, 0, 1, 2, 2 }));
    EXPECT_FALSE(Image::Make(1, 1, { 32, 0, 1, 2, 4 }));
    EXPECT_FALSE(Image::Make(1, 1, { 24, 0, 1, 2, 3 }));
}

TEST_F(ImageTest, TheCursorWritesEveryChannelWhereTheFormatHasIt) {
    for (const auto& format : AllFormats()) {
        auto image = RandomImage(2, 2, format, 1);
        image->Lock(true);
        image->MoveTo(1, 0);
        image->Next();
        image->SetPixel(0x44332211);
        EXPECT_EQ(image->GetPixel(), format.alpha >= 0 ? 0x44332211U : 0x00332211U)
            << Print(format);
        const auto row = image->Row(1);
        const auto size = static_cast<std::size_t>(format.BytesPerChannel());
        for (const auto& [index, value] :
             { std::pair { format.red, 0x11 }, { format.green, 0x22 }, { format.blue, 0x33 } })
            for (std::size_t i = 0; i < size; ++i)
                EXPECT_EQ(row[static_cast<std::size_t>(index) * size + i], value) << Print(format);

        const auto raw = image->GetRawPixel();
        image->Next();
        image->SetRawPixel(raw);
        EXPECT_EQ(image->GetRawPixel(), raw) << Print(format);
        image->Unlock();
        ExpectPaddingUntouched(*image, Print(format));
    }
}

TEST_F(ImageTest, PixelsOutsideOrNotLockedForWritingStay) {
    auto image = RandomImage(2, 2, kRgba32, 2);
    const auto before = AllPixels(*image);
    image->MoveTo(0, 0);
    image->SetPixel(1);
    image->Lock(true);
    for (const auto& [x, y] : { std::pair { -1, 0 }, { 2, 0 }, { 0, 2 }, { 0, -1 } }) {
        image->MoveTo(x, y);
        image->SetPixel(1);
        image->SetRawPixel(1);
    }
    image->MoveTo(1, 1);
    image->Next();
    EXPECT_EQ(image->GetPixel(), 0U);
    image->Unlock();
    EXPECT_EQ(AllPixels(*image), before);
    ExpectPaddingUntouched(*image, "outside");
    EXPECT_EQ(TakeMisuse().size(), 10U);
}

TEST_F(ImageTest, LocksCountAndAddressesNeedThem) {
    auto image = Image::Make(2, 1, kRgba64);
    const auto& procs = OffscreenTable(LateEntries::kPresent);
    EXPECT_EQ(procs.BaseAddress(image->Ref()), nullptr);
    EXPECT_EQ(procs.RowBytes(image->Ref()), 0);
    EXPECT_NE(procs.Lock(image->Ref(), 0), 0);
    EXPECT_NE(procs.Lock(image->Ref(), 1), 0);
    procs.Unlock(image->Ref());
    EXPECT_EQ(procs.BaseAddress(image->Ref()), image->Row(0).data());
    EXPECT_EQ(procs.RowBytes(image->Ref()), 16);
    procs.Unlock(image->Ref());
    procs.Unlock(image->Ref());
    EXPECT_NE(procs.Lock(image->Ref(), 0), 0);
    procs.Copy(image->Ref(), 0, 0, 1, 1, image->Ref(), 1, 0);
    const auto ref = image->Ref();
    image.reset();
    EXPECT_EQ(procs.Width(ref), 0);
    EXPECT_THAT(TakeMisuse(), ElementsAre(HasSubstr("base address"), HasSubstr("row bytes"),
                                          HasSubstr("not locked"), HasSubstr("reading only"),
                                          HasSubstr("1 locks"), HasSubstr("width was given")));
}

TEST_F(ImageTest, NothingIsCopiedFromAnotherDepthOrFromWhatHasNoPixels) {
    const auto& procs = OffscreenTable(LateEntries::kPresent);
    const auto src = RandomImage(2, 2, kRgb24, 8), dst = RandomImage(2, 2, kRgba32, 9);
    const auto before = AllPixels(*dst);
    const auto empty = static_cast<EPIImageRef>(ObjectTable().Create(epiObjectImage));
    for (const auto from : { src->Ref(), empty }) {
        procs.Lock(dst->Ref(), 1);
        procs.Copy(dst->Ref(), 0, 0, 2, 2, from, 0, 0);
        procs.Stretch(dst->Ref(), 0, 0, 2, 2, from, 0, 0, 2, 2);
        procs.Unlock(dst->Ref());
    }
    EXPECT_EQ(AllPixels(*dst), before);
    EXPECT_EQ(procs.Lock(empty, 1), 0);
    ObjectTable().Release(empty, epiObjectImage);
    EXPECT_EQ(ObjectTable().Create(7), nullptr);
    EXPECT_THAT(TakeMisuse(), ElementsAre("copy from 24 to 32 bits", "stretch from 24 to 32 bits",
                                          HasSubstr("kind 7")));
}

// Holds a copy against one that goes pixel by pixel.
void ExpectCopied(Image& dst, std::int32_t x, std::int32_t y, Image& src, Area from) {
    std::vector<std::uint32_t> expected;
    for (std::int32_t row = 0; row < dst.Height(); ++row)
        for (std::int32_t column = 0; column < dst.Width(); ++column) {
            const auto dx = std::int64_t { column } - x, dy = std::int64_t { row } - y;
            const auto sx = dx + from.x, sy = dy + from.y;
            const auto isCopied = dx >= 0 && dx < from.width && dy >= 0 && dy < from.height &&
                                  sx >= 0 && sx < src.Width() && sy >= 0 && sy < src.Height();
            expected.push_back(isCopied ? PixelAt(src, static_cast<std::int32_t>(sx),
                                                  static_cast<std::int32_t>(sy))
                                        : PixelAt(dst, column, row));
        }
    CopyPixels(dst, x, y, src, from);
    EXPECT_EQ(AllPixels(dst), expected) << x << ", " << y << " from " << from.x << ", " << from.y;
    ExpectPaddingUntouched(dst, "copy");
}

class CopyTest : public ImageTest {};

TEST_F(CopyTest, MatchesAPixelByPixelCopyWhereverItIsClippedOrOverlaps) {
    using Row = std::tuple<std::int32_t, std::int32_t, Area>;
    for (const auto& [x, y, from] :
         { Row { 0, 0, { 0, 0, 6, 5 } }, Row { 2, 1, { 0, 0, 6, 5 } },
           Row { -2, -1, { 0, 0, 6, 5 } }, Row { 0, 0, { -3, -2, 6, 5 } },
           Row { 4, 4, { 5, 4, 9, 9 } }, Row { 7, 0, { 0, 0, 6, 5 } },
           Row { 0, 0, { 0, 0, kMax, kMax } }, Row { kMax, kMin, { kMin, kMax, kMax, kMax } },
           Row { 0, 0, { 0, 0, -1, 5 } }, Row { kMin, 0, { kMin, 0, kMax, 5 } } })
        ExpectCopied(*RandomImage(7, 5, kRgba32, 4), x, y, *RandomImage(6, 5, kRgba32, 3), from);
    for (std::int32_t y = 0; y <= 4; ++y)
        for (std::int32_t x = 0; x <= 4; ++x) {
            const auto image = RandomImage(8, 8, kRgb24, 5);
            ExpectCopied(*image, x, y, *image, { 2, 2, 4, 4 });
        }
}

TEST_F(CopyTest, ColoursSurviveEveryChangeOfOrderAndAStretchOfOneToOne) {
    for (const auto& from : AllFormats())
        for (const auto& to : AllFormats()) {
            if (from.depth != to.depth)
                continue;
            const auto src = RandomImage(3, 2, from, 6), dst = RandomImage(3, 2, to, 7);
            for (std::int32_t y = 0; y < 2; ++y)
                for (auto& byte : src->Row(y))
                    byte |= 1; // a colour that nobody sees need not survive a stretch
            CopyPixels(*dst, 0, 0, *src, { 0, 0, 3, 2 });
            const auto seen = PixelAt(*src, 2, 1) | (from.alpha < 0 ? 0xFF000000 : 0);
            ASSERT_EQ(PixelAt(*dst, 2, 1), to.alpha < 0 ? seen & 0xFFFFFF : seen)
                << Print(from) << " to " << Print(to);
            if (from == to) {
                std::ranges::fill(dst->Row(1), 0);
                StretchPixels(*dst, { 0, 0, 3, 2 }, *src, { 0, 0, 3, 2 });
                ASSERT_EQ(AllPixels(*dst), AllPixels(*src)) << Print(from);
            }
        }
}

class StretchTest : public ImageTest {};

// The first pixel of the shrunk row covers source pixel 0 and half of 1: red 200 * 2/3, green 100 * 1/3.
// The second covers the other half of 1 and all of 2, which is transparent and has no colour.
TEST_F(StretchTest, ShrinkingAveragesByCoverageAndAlphaAndEnlargingBlendsBetweenCentres) {
    const auto stretched = [](PixelFormat format, std::vector<std::uint8_t> row, int width) {
        const auto from = static_cast<std::int32_t>(row.size()) / format.BytesPerPixel();
        const auto src = Image::Make(from, 1, format), dst = Image::Make(width, 1, format);
        std::ranges::copy(row, src->Row(0).begin());
        StretchPixels(*dst, { 0, 0, width, 1 }, *src, { 0, 0, from, 1 });
        return std::vector(dst->Row(0).begin(), dst->Row(0).end());
    };
    EXPECT_THAT(stretched(kRgba32, { 200, 0, 0, 255, 0, 100, 0, 255, 9, 9, 9, 0 }, 2),
                ElementsAre(133, 33, 0, 255, 0, 100, 0, 85));
    EXPECT_THAT(stretched(kRgb24, { 0, 0, 0, 200, 100, 40 }, 4),
                ElementsAre(0, 0, 0, 50, 25, 10, 150, 75, 30, 200, 100, 40));
}

TEST_F(StretchTest, ClippingDrawsTheSamePixelsAsTheWhole) {
    const auto src = RandomImage(6, 6, kRgb24, 12);
    auto whole = Image::Make(9, 9, kRgb24);
    StretchPixels(*whole, { 0, 0, 9, 9 }, *src, { 0, 0, 6, 6 });
    for (const auto& [x, y] : { std::pair { -4, -3 }, { 2, 1 }, { 5, -8 }, { 9, 9 }, { -9, 0 } }) {
        auto part = RandomImage(5, 5, kRgb24, 13);
        const auto old = RandomImage(5, 5, kRgb24, 13);
        StretchPixels(*part, { x, y, 9, 9 }, *src, { 0, 0, 6, 6 });
        CopyPixels(*old, x, y, *whole, { 0, 0, 9, 9 });
        EXPECT_EQ(AllPixels(*part), AllPixels(*old)) << x << ", " << y;
        ExpectPaddingUntouched(*part, "stretch");
    }
}

TEST_F(StretchTest, WildAreasStayInsideBothImages) {
    auto image = RandomImage(4, 4, kRgba64, 14);
    for (const auto& area :
         { Area { kMin, kMin, kMax, kMax }, Area { -1, -1, kMax, kMax }, Area { kMax, kMax, 1, 1 },
           Area { 0, 0, 0, -5 }, Area { -2, 3, kMax, 1 } })
        for (const auto& other : { Area { 0, 0, 4, 4 }, area }) {
            StretchPixels(*image, area, *image, other);
            StretchPixels(*image, other, *image, area);
        }
    ExpectPaddingUntouched(*image, "wild");
}

} // namespace
} // namespace host
