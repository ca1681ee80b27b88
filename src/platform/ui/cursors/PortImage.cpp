// SPDX-License-Identifier: BSD-3-Clause
#include "platform/ui/cursors/PortImage.h"

#include <algorithm>
#include <cstddef>

#include <QPainter>

#include "platform/drawing/World.h"

namespace platform {
namespace {

// Keeps a world's pixels locked.
class Locked {
public:
    explicit Locked(GWorldPtr world) : m_pixels(GetGWorldPixMap(world)) {
        m_locked = LockPixels(m_pixels);
    }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
    ~Locked() {
        if (m_locked)
            UnlockPixels(m_pixels);
    }

    QSize Size() const { return { m_pixels->width, m_pixels->height }; }
    // Null without memory. For a row within the size.
    const std::uint8_t* Row(int y) const { return At(GetPixBaseAddr(m_pixels), y); }
    std::uint8_t* WritableRow(int y) const { return At(GetWritablePixBaseAddr(m_pixels), y); }

private:
    template <class Byte>
    Byte* At(Byte* base, int y) const {
        return base ? base + std::ptrdiff_t { GetPixRowBytes(m_pixels) } * y : nullptr;
    }

    PixMapHandle m_pixels;
    bool m_locked = false;
};

// The part of the image that shows when it fills target, premultiplied.
QImage LayerOf(const QImage& image, const QRect& target, const QRect& part) {
    // Reducing averages here; the painter, which would skip pixels, is left with enlarging.
    const QSize reduced = image.size().boundedTo(target.size());
    const QImage source = image.size() == reduced ? image
                                                  : image.scaled(reduced, Qt::IgnoreAspectRatio,
                                                                 Qt::SmoothTransformation);
    QImage layer(part.size(), QImage::Format_ARGB32_Premultiplied);
    if (layer.isNull() || source.isNull())
        return {};
    layer.fill(Qt::transparent);
    QPainter painter(&layer);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target.translated(-part.topLeft()), source);
    painter.end();
    return layer;
}

void BlendRow(std::uint8_t* pixels, const QRgb* row, int count) {
    for (int x = 0; x < count; ++x, pixels += 4) {
        const int rest = 255 - qAlpha(row[x]);
        const auto over = [&](std::uint8_t& below, int channel) {
            below = static_cast<std::uint8_t>(channel + (below * rest + 127) / 255);
        };
        over(pixels[1], qRed(row[x]));
        over(pixels[2], qGreen(row[x]));
        over(pixels[3], qBlue(row[x]));
    }
}

} // namespace

OSStatus DrawImageInPort(const QImage& image, const Rect& destination) {
    const CGrafPtr port = GetPort();
    if (!port || image.isNull())
        return kParamErr;
    const QRect target(destination.left, destination.top, destination.right - destination.left,
                       destination.bottom - destination.top);
    const QRect part = target & QRect(0, 0, port->pixels.width, port->pixels.height);
    if (part.isEmpty())
        return kNoErr;
    const QImage layer = LayerOf(image, target, part);
    const Locked pixels(port);
    if (layer.isNull() || !pixels.WritableRow(0))
        return kMemFullErr;
    for (int y = 0; y < part.height(); ++y) {
        const auto* const row = reinterpret_cast<const QRgb*>(layer.constScanLine(y));
        BlendRow(pixels.WritableRow(part.y() + y) + std::ptrdiff_t { 4 } * part.x(), row,
                 part.width());
    }
    return kNoErr;
}

QImage ImageOfWorld(GWorldPtr world) {
    if (!world)
        return {};
    const Locked pixels(world);
    QImage image(pixels.Size(), QImage::Format_ARGB32);
    if (image.isNull() || !pixels.Row(0))
        return {};
    for (int y = 0; y < image.height(); ++y) {
        const std::uint8_t* from = pixels.Row(y);
        auto* const to = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x, from += 4)
            to[x] = qRgb(from[1], from[2], from[3]);
    }
    return image;
}

} // namespace platform
