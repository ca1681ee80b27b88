// SPDX-License-Identifier: BSD-3-Clause
#include "platform/ui/cursors/PortImage.h"

#include <bit>
#include <cstddef>
#include <cstring>

#include <QPainter>

#include "platform/StateSavers.h"
#include "platform/drawing/World.h"

namespace platform {
namespace {

// Bytes unused, red, green, blue of one pixel, as the word 0xffRRGGBB.
QRgb ToScreen(const std::uint8_t* pixel) {
    std::uint32_t word = 0;
    std::memcpy(&word, pixel, sizeof word);
    if constexpr (std::endian::native == std::endian::little)
        word = __builtin_bswap32(word);
    return word | 0xFF000000U;
}

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
    const XPixMapLocker locker(&port->pixels);
    std::uint8_t* const base = GetWritablePixBaseAddr(&port->pixels);
    if (layer.isNull() || !base)
        return kMemFullErr;
    const std::ptrdiff_t rowBytes = GetPixRowBytes(&port->pixels);
    for (int y = 0; y < part.height(); ++y)
        BlendRow(base + (part.y() + y) * rowBytes + std::ptrdiff_t { 4 } * part.x(),
                 reinterpret_cast<const QRgb*>(layer.constScanLine(y)), part.width());
    return kNoErr;
}

bool CopyToImage(GWorldPtr world, const QRect& part, QImage& image) {
    const XPixMapLocker locker(GetGWorldPixMap(world));
    const std::uint8_t* const base = GetPixBaseAddr(GetGWorldPixMap(world));
    if (image.isNull() || !base)
        return false;
    const std::ptrdiff_t rowBytes = GetPixRowBytes(GetGWorldPixMap(world));
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const std::uint8_t* const from = base + y * rowBytes;
        auto* const to = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = part.left(); x <= part.right(); ++x)
            to[x] = ToScreen(from + std::ptrdiff_t { 4 } * x);
    }
    return true;
}

QImage ImageOfWorld(GWorldPtr world) {
    if (!world)
        return {};
    QImage image(world->pixels.width, world->pixels.height, QImage::Format_ARGB32);
    return CopyToImage(world, image.rect(), image) ? image : QImage();
}

} // namespace platform
