// SPDX-License-Identifier: BSD-3-Clause
#include <QBuffer>
#include <QImage>
#include <gmock/gmock.h>

#include "platform/ui/Cursors.h"
#include "support/TestWorld.h"

namespace platform {
namespace {

void Draw(const QImage& image, const Rect& destination) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    const PicHandle picture = NewPicture({ reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                           static_cast<std::size_t>(bytes.size()) });
    EXPECT_EQ(GetPictureBounds(picture).right, image.width());
    EXPECT_EQ(DrawPicture(picture, destination), kNoErr);
    KillPicture(picture);
}

TEST(Pictures, BlendIntoThePortWithinItsSidesAndGetSmallerByAveraging) {
    const test::TestWorld world(3, 2);
    world.Erase();
    QImage image(2, 2, QImage::Format_ARGB32);
    image.fill(QColor(0, 0, 0, 51));
    Draw(image, { -1, 1, 1, 9 });
    Draw(image, { 1, 1, 1, 1 });
    EXPECT_THAT(world.Pixels(), testing::ElementsAre(0xFFFFFF, 0xCCCCCC, 0xCCCCCC, //
                                                     0xFFFFFF, 0xFFFFFF, 0xFFFFFF));
    QImage stripes(8, 8, QImage::Format_RGB32);
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x)
            stripes.setPixelColor(x, y, x % 2 == 0 ? Qt::black : Qt::white);
    Draw(stripes, { 0, 0, 1, 1 });
    EXPECT_NEAR(world.Pixels()[0] & 0xFF, 127, 2);
}

} // namespace
} // namespace platform
