// SPDX-License-Identifier: BSD-3-Clause
#include <QBuffer>
#include <QImage>
#include <gmock/gmock.h>

#include "platform/ui/Cursors.h"
#include "support/TestWorld.h"

namespace platform {
namespace {

QByteArray Png(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

QImage Plain(int width, int height, QColor color) {
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

PicHandle Make(const QByteArray& bytes) {
    return NewPicture({ reinterpret_cast<const std::uint8_t*>(bytes.data()),
                        static_cast<std::size_t>(bytes.size()) });
}

TEST(Pictures, BlendIntoThePortWithinItsSides) {
    const test::TestWorld world(3, 2);
    world.Erase();
    const PicHandle picture = Make(Png(Plain(2, 2, QColor(0, 0, 0, 51))));
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(GetPictureBounds(picture).right, 2);
    EXPECT_EQ(DrawPicture(picture, { -1, 1, 1, 9 }), kNoErr);
    EXPECT_EQ(DrawPicture(picture, { 1, 1, 1, 1 }), kNoErr);
    EXPECT_THAT(world.Pixels(), testing::ElementsAre(0xFFFFFF, 0xCCCCCC, 0xCCCCCC, //
                                                     0xFFFFFF, 0xFFFFFF, 0xFFFFFF));
    KillPicture(picture);
}

TEST(Pictures, GetSmallerByAveraging) {
    QImage stripes = Plain(8, 8, Qt::white);
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; x += 2)
            stripes.setPixelColor(x, y, Qt::black);
    const test::TestWorld world(1, 1);
    const PicHandle picture = Make(Png(stripes));
    EXPECT_EQ(DrawPicture(picture, { 0, 0, 1, 1 }), kNoErr);
    EXPECT_NEAR(world.Pixels()[0] & 0xFF, 127, 2);
    KillPicture(picture);
}

} // namespace
} // namespace platform
