// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Pixels.h"

#include <algorithm>

namespace studio {

namespace {

// Frames are read into one of these three layouts.
QImage::Format FormatOf(const host::PixelFormat& format) {
    if (format == host::kRgb24)
        return QImage::Format_RGB888;
    if (format == host::kRgba32)
        return QImage::Format_RGBA8888;
    return format == host::kRgba64 ? QImage::Format_RGBA64 : QImage::Format_Invalid;
}

} // namespace

QImage ToPicture(const host::Image& image) {
    auto const format = FormatOf(image.Format());
    if (format == QImage::Format_Invalid || image.Width() < 1)
        return {};
    QImage const lent(image.Bytes().data(), image.Width(), image.Height(), image.RowBytes(),
                      format);
    return lent.convertToFormat(format == QImage::Format_RGB888
                                    ? QImage::Format_RGB32
                                    : QImage::Format_ARGB32_Premultiplied);
}

bool ToFrame(const QImage& picture, host::Frame& frame) {
    auto const rgb = picture.convertToFormat(QImage::Format_RGB888);
    if (rgb.isNull() || !host::PrepareImage(frame, rgb.width(), rgb.height(), host::kRgb24))
        return false;
    frame.header = {};
    for (int y = 0; y < rgb.height(); ++y) {
        auto const row = frame.image->Row(y);
        std::copy_n(rgb.constScanLine(y), row.size(), row.data());
    }
    return true;
}

bool CopyFrame(const host::Frame& from, host::Frame& to) {
    auto const& image = *from.image;
    if (!host::PrepareImage(to, image.Width(), image.Height(), image.Format()))
        return false;
    to.header = from.header;
    for (int y = 0; y < image.Height(); ++y)
        std::ranges::copy(image.Row(y), to.image->Row(y).begin());
    return true;
}

} // namespace studio
