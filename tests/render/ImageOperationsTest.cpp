// SPDX-License-Identifier: BSD-3-Clause
// The wrapper over one image, and the operations on whole images, on images in memory.
#include "render/ImageOperations.h"

#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/FakeImage.h"

namespace {

using testing::ElementsAre;

PIOffscreen Wrap(FakeImage& image) {
    return { nullptr, image.Procs(), image.Ref() };
}

// Without the two entries that came later.
void MakeOld(FakeImage& image) {
    image.procs.nSize = static_cast<std::uint32_t>(EPI_OFFSCREEN_FULL_SIZE - sizeof(void*));
}

TEST(PIOffscreenTest, AsksTheHostForChannelsElseGoesByDepth) {
    const auto channelsOf = [](FakeImage& image) {
        const PIOffscreen wrapper = Wrap(image);
        std::vector<long> index { 77, 77, 77, 77 };
        wrapper.GetChannelIndex(&index[0], &index[1], &index[2], &index[3]);
        return index;
    };
    FakeImage deep(1, 1, 64), middle(1, 1, 32), small(1, 1, 24);
    deep.order = { 3, 2, 1, 0 };
    middle.order.alpha = -1;
    EXPECT_THAT(channelsOf(deep), ElementsAre(3, 2, 1, 0));
    EXPECT_THAT(channelsOf(middle), ElementsAre(77, 1, 2, 3)); // told none
    deep.procs.ChannelIndices = nullptr;
    MakeOld(middle);
    MakeOld(small);
    EXPECT_THAT(channelsOf(deep), ElementsAre(0, 2, 4, 6));
    EXPECT_THAT(channelsOf(middle), ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(channelsOf(small), ElementsAre(77, 0, 1, 2));
}

TEST(PIOffscreenTest, DoesNothingWhereTheHostHasNothing) {
    FakeImage image(2, 2, 32);
    EPIOffscreenProcs none {};
    none.nSize = sizeof none;
    EPIOffscreenProcs tooShort = image.procs;
    tooShort.nSize = 0;
    EPIOffscreenProcs endsBehindLock = image.procs; // what it locked it could not unlock
    endsBehindLock.nSize = offsetof(EPIOffscreenProcs, Unlock);
    const EPIOffscreenProcs* const tables[] = { nullptr, &none, &tooShort, &endsBehindLock };
    for (const EPIOffscreenProcs* procs : tables) {
        PIOffscreen wrapper(nullptr, procs, image.Ref());
        PIOffscreen good = Wrap(image);
        EXPECT_FALSE(wrapper.Lock(PIOffscreen::Access::kWrite));
        EXPECT_EQ(wrapper.Width() + wrapper.Height() + wrapper.Depth() + wrapper.RowBytes(), 0);
        EXPECT_EQ(wrapper.BaseAddress(), nullptr);
        EXPECT_FALSE(wrapper.Stretch(good));
        wrapper.MoveTo(1, 1);
        wrapper.SetPixel(0xFFFFFF);
        ChangeResolution(wrapper, good);
        CopyAllOffscreen(wrapper, good);
        SetWhiteMat(wrapper, { 0, 0, 2, 2 });
    }
    EXPECT_EQ(image.Pixel(1, 1), (std::vector<std::uint32_t> { 0, 0, 0, 0 }));
    EXPECT_EQ(image.locks, 0);
}

void FillAtRandom(FakeImage& image) {
    std::mt19937 random(3);
    for (int y = 0; y < image.height; ++y)
        for (int i = 0; i < image.width * image.depth / 8; ++i)
            image.Base()[y * image.rowBytes + i] = static_cast<std::uint8_t>(random());
}

// The sums written out for one channel, with each pixel's weight instead of an order of sampling.
std::uint32_t ExpectedAverage(const FakeImage& src, int x, int y, int dw, int dh, int place) {
    const int x0 = x * src.width / dw, x1 = (x + 1) * src.width / dw;
    const int y0 = y * src.height / dh, y1 = (y + 1) * src.height / dh;
    std::uint32_t sum = src.Channel(x0, y0, place), count = 1;
    for (int sy = y0; sy < std::max(y1, y0 + 1); ++sy) {
        for (int sx = x0; sx < x1; ++sx) {
            const std::uint32_t weight =
                (sy == y0 && src.width > dw ? 1 : 0) + (src.height > dh && sy < y1 ? 1 : 0);
            sum += weight * src.Channel(sx, sy, place);
            count += weight;
        }
    }
    return sum / count;
}

// The first pixel and the first row weigh double where it shrinks; where it grows, pixels repeat.
TEST(ChangeResolutionTest, AveragesBlocksInEveryMixtureOfDirections) {
    FakeImage src(7, 5, 32);
    FillAtRandom(src);
    for (int dw = 1; dw <= 9; ++dw) {
        for (int dh = 1; dh <= 7; ++dh) {
            FakeImage dst(dw, dh, 32);
            PIOffscreen to = Wrap(dst), from = Wrap(src);
            ChangeResolution(to, from);
            if (dw == src.width && dh == src.height) {
                EXPECT_EQ(dst.copies, 1);
                continue;
            }
            for (int i = 0; i < dw * dh; ++i) {
                const int x = i % dw, y = i / dw;
                for (int place = 1; place < 4; ++place)
                    ASSERT_EQ(dst.Channel(x, y, place), ExpectedAverage(src, x, y, dw, dh, place))
                        << dw << 'x' << dh << " at " << x << ',' << y;
            }
        }
    }
}

TEST(StretchCopyTest, UsesTheHostsOperationElseTheNearestPixel) {
    FakeImage src(3, 2, 32), dst(5, 4, 32);
    FillAtRandom(src);
    PIOffscreen to = Wrap(dst), from = Wrap(src);
    StretchCopy(to, from);
    MakeOld(dst);
    StretchCopy(to, from);
    EXPECT_EQ(dst.stretches, 1);
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(dst.Pixel(i % 5, i / 5), src.Pixel(i % 5 * 3 / 5, i / 5 * 2 / 4)) << i;
    EXPECT_EQ(dst.locks + src.locks, 0);
    EXPECT_EQ(src.writableLocks, 0);
}

TEST(CopyAllOffscreenTest, CopiesRowsOfDifferentPaddingAndNothingElse) {
    for (const int depth : { 24, 32, 64 }) {
        FakeImage src(5, 3, depth, 2), dst(5, 3, depth, 11), other(4, 3, depth);
        FillAtRandom(src);
        PIOffscreen from = Wrap(src), to = Wrap(dst), wrong = Wrap(other);
        to.Lock(PIOffscreen::Access::kWrite);
        CopyAllOffscreen(to, from);
        for (int i = 0; i < 15; ++i)
            EXPECT_EQ(dst.Pixel(i % 5, i / 5), src.Pixel(i % 5, i / 5)) << depth;
        EXPECT_TRUE(dst.MarksAreWhole());
        EXPECT_EQ(dst.locks + src.locks, 0); // the lock from before has ended as well
        CopyAllOffscreen(wrong, from);
        EXPECT_EQ(other.writableLocks, 0);
    }
}

void Flatten(FakeImage& image, const tagRECT& rect) {
    PIOffscreen wrapper = Wrap(image);
    SetWhiteMat(wrapper, rect);
    EXPECT_TRUE(image.MarksAreWhole()) << image.depth;
}

TEST(SetWhiteMatTest, FlattensEveryAlphaAndTurnsDeepPartlyTransparentPixelsGrey) {
    FakeImage image(256, 3, 32);
    image.order = { 2, 0, 3, 1 };
    for (std::uint32_t x = 0; x < 256; ++x)
        image.SetPixel(static_cast<int>(x), 1, { 13, 200, x, 77 });
    Flatten(image, { -5, 1, 1000, 2 });
    for (std::uint32_t x = 0; x < 256; ++x)
        EXPECT_THAT(image.Pixel(static_cast<int>(x), 1),
                    ElementsAre(255 - 242 * x / 255, 255 - 55 * x / 255, 255, 255 - 178 * x / 255));
    EXPECT_THAT(image.Pixel(0, 0), ElementsAre(0, 0, 0, 0));
    EXPECT_THAT(image.Pixel(255, 2), ElementsAre(0, 0, 0, 0));

    const auto over = [](std::uint64_t c, std::uint64_t a) {
        return 65535 - (65535 - c) * a / 65535;
    };
    for (const std::uint32_t alpha : { 0u, 1u, 40000u, 65534u, 65535u }) {
        FakeImage deep(1, 1, 64);
        deep.SetPixel(0, 0, { alpha, 10000, 2, 3 });
        Flatten(deep, { -10, -10, 100, 100 });
        const auto red = over(10000, alpha), grey = alpha == 0 ? 65535 : over(red, alpha);
        const bool isOpaque = alpha == 65535;
        EXPECT_THAT(deep.Pixel(0, 0),
                    ElementsAre(65535, red, isOpaque ? 2 : grey, isOpaque ? 3 : grey))
            << alpha;
    }
}

TEST(SetWhiteMatTest, StaysInsideTheRowsWhateverTheHostTells) {
    for (const int depth : { 24, 32, 64 }) {
        for (const render::ChannelOrder& order :
             { render::ChannelOrder { 900, -7, 1 << 30, 6 }, { 3, 6, 6, 6 }, { 0, 2, 4, 6 } }) {
            FakeImage image(3, 2, depth);
            const std::vector<std::uint8_t> before = image.memory;
            image.order = order;
            Flatten(image, { -2147483647 - 1, 0, 2147483647, 2147483647 });
            EXPECT_TRUE(image.memory == before || (depth != 24 && order.alpha != 900)) << depth;
        }
    }
}

} // namespace
