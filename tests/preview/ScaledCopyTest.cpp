// SPDX-License-Identifier: BSD-3-Clause
#include "preview/ScaledCopy.h"

#include <algorithm>
#include <vector>

#include <gmock/gmock.h>

#include "host/Image.h"
#include "host/Tables.h"

namespace {

constexpr std::uint8_t kUntouched = 0xA5;
constexpr int kWorldWidth = 13;
constexpr int kWorldHeight = 9;
constexpr int kWorldRow = kWorldWidth * 4 + 8;
constexpr int kPictureHeight = 1000;

struct Row {
    const char* what;
    tagRECT to, from;
    render::ChannelOrder order;
    bool draws = true;
};

// The mean of the pixels from the first to the one behind, of which there is at least one.
std::uint8_t MeanOf(const render::LockedPixels& image, const Row& row, int x, int y, int place) {
    const auto at = [](long i, long to, long toEnd, long from, long fromEnd) {
        return static_cast<int>(from + (i - to) * (fromEnd - from) / (toEnd - to));
    };
    const auto [to, from] = std::pair(row.to, row.from);
    const int left = at(x, to.left, to.right, from.left, from.right);
    const int top = at(y, to.top, to.bottom, from.top, from.bottom);
    const int right = std::max(left + 1, at(x + 1, to.left, to.right, from.left, from.right));
    const int bottom = std::max(top + 1, at(y + 1, to.top, to.bottom, from.top, from.bottom));
    int sum = 0;
    for (int v = top; v < bottom; ++v)
        for (int u = left; u < right; ++u)
            sum += image.Row(v)[u * 4 + place];
    const int count = (right - left) * (bottom - top);
    return static_cast<std::uint8_t>((2 * sum + count) / (2 * count));
}

constexpr render::ChannelOrder kArgb { 0, 1, 2, 3 };
constexpr render::ChannelOrder kBgra { 3, 2, 1, 0 };
constexpr render::ChannelOrder kRgba { 3, 0, 1, 2 };
const Row kBoxes[] = {
    Row { "one to one", { 1, 1, 9, 7 }, { 2, 1, 10, 7 }, kArgb },
    Row { "one to one in another order", { 1, 1, 9, 7 }, { 2, 1, 10, 7 }, kBgra },
    Row { "one to one, alpha last", { 1, 0, 12, 8 }, { 0, 0, 11, 8 }, kRgba },
    Row { "as many columns, fewer rows", { 1, 0, 12, 3 }, { 0, 0, 11, 8 }, kRgba },
    Row { "one to one over every edge", { -3, -2, 19, 13 }, { 0, 0, 11, 8 }, kBgra },
    Row { "a third", { 0, 0, 4, 3 }, { 0, 0, 11, 8 }, kArgb },
    Row { "shrunk over the left and the top", { -2, -1, 4, 4 }, { 0, 0, 11, 8 }, kBgra },
    Row { "to a single pixel", { 12, 8, 13, 9 }, { 0, 0, 11, 8 }, kArgb },
    Row { "a tall column to one", { 0, 0, 1, 1 }, { 0, 0, 1, kPictureHeight }, kArgb },
    Row { "grown over the right and the bottom", { 5, 4, 38, 28 }, { 0, 0, 11, 8 }, kArgb },
    Row { "narrower and taller", { 2, 0, 7, 9 }, { 0, 3, 11, 6 }, kBgra },
    Row { "an empty image", { 0, 0, 4, 4 }, { 5, 5, 5, 8 }, kArgb, false },
    Row { "an empty place", { 4, 0, 4, 4 }, { 0, 0, 11, 8 }, kArgb, false },
    Row { "outside the world", { 40, 0, 44, 4 }, { 0, 0, 4, 4 }, kArgb },
    Row { "channels that lie in no pixel", { 0, 0, 4, 4 }, { 0, 0, 4, 4 }, { 0, 4, 2, 3 }, false },
    Row { "one pixel as large as all places",
          { -2000000000, -2000000000, 2000000000, 2000000000 },
          { 3, 3, 4, 4 },
          kArgb }
};

TEST(ScaledCopy, IsTheMeanWithinTheWorldAndNothingElse) {
    const auto picture = host::Image::Make(11, kPictureHeight, host::kArgb32, 12);
    for (std::size_t i = 0; i < kPictureHeight * std::size_t { 44 }; ++i)
        picture->Row(static_cast<int>(i / 44))[i % 44] = static_cast<std::uint8_t>(i * i + i / 3);
    const _EPIRECORD record = host::MakeRecord();
    PIOffscreen borrowed(record.pObjectProcs, record.pOffscreenProcs, picture->Ref());
    render::LockedPixels image(borrowed);
    for (const Row& row : kBoxes) {
        image.order = row.order;
        std::vector<std::uint8_t> world(std::size_t { kWorldRow } * kWorldHeight, kUntouched);
        std::vector<std::uint8_t> expected = world;
        for (int y = std::max(row.to.top, 0); y < std::min(row.to.bottom, kWorldHeight); ++y) {
            for (int x = std::max(row.to.left, 0);
                 row.draws && x < std::min(row.to.right, kWorldWidth); ++x) {
                auto* const pixel = &expected[static_cast<std::size_t>(y * kWorldRow + x * 4)];
                pixel[0] = 0;
                pixel[1] = MeanOf(image, row, x, y, row.order.red);
                pixel[2] = MeanOf(image, row, x, y, row.order.green);
                pixel[3] = MeanOf(image, row, x, y, row.order.blue);
            }
        }
        EXPECT_EQ(CopyScaled({ world.data(), kWorldRow, kWorldWidth, kWorldHeight }, row.to, image,
                             row.from),
                  row.draws)
            << row.what;
        EXPECT_EQ(world, expected) << row.what;
    }
}

} // namespace
