// SPDX-License-Identifier: BSD-3-Clause
// Glyphs gathering in a plane: what overlaps, and what lies outside.
#include "platform/drawing/CoveragePlane.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

using namespace platform;

constexpr std::int32_t kWidth = 37;
constexpr std::int32_t kHeight = 11;
// Away from the origin, as the part of a picture that changed is.
constexpr std::int64_t kLeft = 3;
constexpr std::int64_t kTop = -2;
constexpr text::PixelBox kBox { kLeft, kTop, kLeft + kWidth, kTop + kHeight };

struct Bitmap {
    std::int64_t x, y, width, height, stride;
    std::vector<std::uint8_t> bytes;
};

Bitmap RandomBitmap(std::minstd_rand& random) {
    const auto upTo = [&random](int most) { return static_cast<std::int64_t>(random() % most); };
    Bitmap bitmap { upTo(60) - 20, upTo(30) - 12, 1 + upTo(30), 1 + upTo(20), 0, {} };
    bitmap.stride = (bitmap.width + 7) / 8 * 8;
    bitmap.bytes.resize(bitmap.stride * bitmap.height);
    for (std::int64_t i = 0; i < bitmap.stride * bitmap.height; ++i) {
        const bool inside = i % bitmap.stride < bitmap.width;
        const auto kind = random() % 4;
        bitmap.bytes[i] = !inside || kind < 2 ? 0 : kind == 2 ? 255 : random() % 256;
    }
    return bitmap;
}

TEST(CoveragePlaneTest, GathersWhatFallsInsideWhereverBitmapsLie) {
    std::minstd_rand random(5);
    for (int round = 0; round < 200; ++round) {
        CoveragePlane plane(kBox);
        std::vector<int> expected(kWidth * kHeight);
        for (int glyph = 0; glyph < 4; ++glyph) {
            const Bitmap bitmap = RandomBitmap(random);
            plane.PaintBitmap(kLeft + bitmap.x, kTop + bitmap.y,
                              { bitmap.bytes.data(), bitmap.stride, bitmap.width, bitmap.height });
            for (std::int64_t i = 0; i < bitmap.width * bitmap.height; ++i) {
                const std::int64_t x = bitmap.x + i % bitmap.width;
                const std::int64_t y = bitmap.y + i / bitmap.width;
                if (x >= 0 && x < kWidth && y >= 0 && y < kHeight) {
                    int& pixel = expected[y * kWidth + x];
                    pixel += bitmap.bytes[i / bitmap.width * bitmap.stride + i % bitmap.width];
                    pixel = std::min(pixel, 255);
                }
            }
        }
        for (std::int64_t y = 0; y < kHeight; ++y) {
            for (std::int64_t x = 0; x < kWidth; ++x) {
                ASSERT_EQ(plane.Row(kTop + y)[x], expected[y * kWidth + x])
                    << "round " << round << " at " << x << ", " << y;
            }
        }
    }
}

} // namespace
