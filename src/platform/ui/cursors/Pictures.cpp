// SPDX-License-Identifier: BSD-3-Clause
// Pictures, decoded once, when they are made.
#include <limits>
#include <memory>

#include <QBuffer>
#include <QImageReader>

#include "platform/ui/Cursors.h"
#include "platform/ui/cursors/PortImage.h"

namespace platform {

struct Picture {
    QImage image;
};

PicHandle NewPicture(std::span<const std::uint8_t> data) {
    constexpr int kMaxSide = std::numeric_limits<std::int16_t>::max();
    QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data.data()),
                                               static_cast<qsizetype>(data.size()));
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, "png");
    const QSize size = reader.canRead() ? reader.size() : QSize();
    if (!size.isValid() || size.width() > kMaxSide || size.height() > kMaxSide)
        return nullptr;
    auto picture = std::make_unique<Picture>(Picture { reader.read() });
    return picture->image.isNull() ? nullptr : picture.release();
}

void KillPicture(PicHandle picture) {
    delete picture;
}

Rect GetPictureBounds(PicHandle picture) {
    if (!picture)
        return {};
    return { 0, 0, static_cast<std::int16_t>(picture->image.height()),
             static_cast<std::int16_t>(picture->image.width()) };
}

OSStatus DrawPicture(PicHandle picture, const Rect& destination) {
    return picture ? DrawImageInPort(picture->image, destination) : kParamErr;
}

} // namespace platform
