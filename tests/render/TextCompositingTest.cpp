// SPDX-License-Identifier: BSD-3-Clause
// Where a drawn text ends up in an image, and what stays as it was.
#include <climits>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "render/CTextRenderer.h"
#include "support/FakeImage.h"

namespace {

using testing::ElementsAre;

// A picture of 3 x 2 pixels whose colours tell their column and row.
class Picture {
public:
    explicit Picture(std::uint16_t format) : m_stride(format & kTextImageXrgb32 ? 4 : 3) {
        // Three bytes beyond each row that must not be read.
        info = { 3, 2, 3 * m_stride + 3, nullptr, format };
        m_bytes.assign(static_cast<std::size_t>(2 * info.rowBytes - 3), 0xFE);
        info.pixels = m_bytes.data();
        // Red tells the column, green the row, counted from the top.
        for (std::uint8_t i = 0; i < 6; ++i) {
            const int column = i % 3, row = i / 3;
            const int stored = format & kTextImageTopDown ? row : 1 - row;
            std::uint8_t* pixel = m_bytes.data() + stored * info.rowBytes + column * m_stride;
            const int color[3] = { 10 + column, 20 + row, 30 };
            for (int place = 0; place < 3; ++place)
                pixel[format & kTextImageRgb24   ? place
                      : format & kTextImageBgr24 ? 2 - place
                                                 : m_stride - 3 + place] =
                    static_cast<std::uint8_t>(color[place]);
        }
    }

    _RTEXTIMAGE_INFO info;

private:
    int m_stride;
    std::vector<std::uint8_t> m_bytes;
};

_TEXTPARAM Param(std::uint32_t flags, int opacity = 100, COLORREF color = 0) {
    _TEXTPARAM param {};
    param.dwFlags = flags;
    param.nOpacity = opacity;
    param.crText = color;
    return param;
}

// With a lock from before, which stays, or none.
void Blend(FakeImage& image, Picture& picture, _TEXTPARAM param, long x, long y,
           bool isLocked = false) {
    PIOffscreen wrapper(nullptr, image.Procs(), image.Ref());
    if (isLocked)
        wrapper.Lock(PIOffscreen::Access::kWrite);
    CTextRenderer::CopyTextStringImage(&wrapper, &picture.info, &param, x, y);
    EXPECT_EQ(image.locks, isLocked ? 1 : 0);
    EXPECT_TRUE(image.MarksAreWhole()) << x << ',' << y;
}

TEST(CopyTextStringImageTest, PutsEveryLayoutTheRightWayUpAndClipsItOnAllSides) {
    for (int i = 0; i < 3 * 2 * 7 * 9 * 7; ++i) {
        const int depth = i % 3 == 0 ? 24 : i % 3 == 1 ? 32 : 64;
        const int layout = 1 + i / 6 % 7; // each of the bits, and all of their mixtures
        const long left = i / 42 % 9 - 4, top = i / 378 - 3;
        Picture picture(static_cast<std::uint16_t>(layout | (i / 3 % 2 ? 0x100 : 0)));
        FakeImage image(2, 2, depth);
        Blend(image, picture, Param(TEXT_BOX), left, top, i % 2 == 1);
        const std::uint32_t scale = depth == 64 ? 257 : 1;
        for (int at = 0; at < 4; ++at) {
            const long x = at % 2 - left, y = at / 2 - top;
            const bool inside = x >= 0 && x < 3 && y >= 0 && y < 2;
            std::vector<std::uint32_t> expected(4, 0);
            if (inside)
                expected = { 255 * scale, static_cast<std::uint32_t>(10 + x) * scale,
                             static_cast<std::uint32_t>(20 + y) * scale, 30 * scale };
            if (depth == 24)
                expected.erase(expected.begin());
            ASSERT_EQ(image.Pixel(at % 2, at / 2), expected)
                << depth << " layout " << layout << " at " << left << ',' << top;
        }
    }
    Picture picture(kTextImageXrgb32 | kTextImageTopDown);
    for (const long far :
         { static_cast<long>(INT_MIN), static_cast<long>(INT_MAX), LONG_MIN, LONG_MAX }) {
        FakeImage image(2, 2, 32);
        const std::vector<std::uint8_t> before = image.memory;
        Blend(image, picture, Param(TEXT_BOX), far, 0);
        Blend(image, picture, Param(TEXT_BOX), 0, far);
        EXPECT_EQ(image.memory, before) << far;
    }
}

TEST(CopyTextStringImageTest, TakesColorsAndOpacityFromTheParameters) {
    Picture picture(kTextImageXrgb32 | kTextImageTopDown);
    // The weight is floor(opacity * 255 / 100 * (255 - 10) / 256).
    for (const auto& [opacity, weight] :
         { std::pair { 100, 244 }, std::pair { 50, 121 }, std::pair { 0, 0 },
           std::pair { 400, 244 }, std::pair { INT_MIN, 0 } }) {
        FakeImage image(1, 1, 32);
        image.SetPixel(0, 0, { 0, 100, 100, 100 });
        Blend(image, picture, Param(0, opacity, 0xFFC80005), 0, 0);
        const auto down = [weight =
                               weight](int text) { // towards a darker colour the floor goes down
            return 100 - (weight * (100 - text) + 255) / 256;
        };
        EXPECT_THAT(image.Pixel(0, 0), ElementsAre(255, down(5), down(0), 100 + weight * 100 / 256))
            << opacity;
    }
    // Coverage comes from byte 1 in every layout, here green, which is 20.
    Picture rgb(kTextImageRgb24 | kTextImageTopDown);
    FakeImage image(1, 1, 32);
    Blend(image, rgb, Param(0, 100, 0xFFFFFF), 0, 0);
    EXPECT_EQ(image.Channel(0, 0, 1), (255u * (255 - 20) / 256) * 255 / 256);
}

TEST(CopyTextStringImageTest, DrawsNothingWhereItCannot) {
    Picture picture(kTextImageXrgb32 | kTextImageTopDown), unknown(kTextImageTopDown);
    Picture empty(kTextImageXrgb32 | kTextImageTopDown);
    empty.info.width = -3;
    for (int fault = 0; fault < 7; ++fault) {
        FakeImage image(4, 4, fault == 0 ? 16 : 32);
        image.isInTrouble = [fault] { return fault == 1; };
        image.toldRowBytes = fault == 2 ? 0 : fault == 3 ? -16 : fault == 4 ? 15 : image.rowBytes;
        const std::vector<std::uint8_t> before = image.memory;
        Blend(image, fault == 5 ? unknown : fault == 6 ? empty : picture, Param(TEXT_BOX), 0, 0);
        EXPECT_EQ(image.memory, before) << fault;
    }
}

// Without the host's word on channels, 64-bit ones are found at 0, 2, 4 and 6 all the same.
TEST(CopyTextStringImageTest, KeepsToTheRowsWithTheDefaultPlacesOfDeepImages) {
    Picture picture(kTextImageXrgb32 | kTextImageTopDown);
    FakeImage image(3, 2, 64);
    image.procs.nSize = static_cast<std::uint32_t>(EPI_OFFSCREEN_FULL_SIZE - sizeof(void*));
    Blend(image, picture, Param(TEXT_BOX), 0, 0);
    EXPECT_THAT(image.Pixel(0, 1), ElementsAre(65535, 0, 10 * 257, 0));
    EXPECT_THAT(image.Pixel(2, 1), ElementsAre(65535, 0, 12 * 257, 0));
}

} // namespace
