// SPDX-License-Identifier: BSD-3-Clause
#include "platform/ui/cursors/NamedCursor.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include <QGuiApplication>
#include <QPixmap>

namespace platform {
namespace {

constexpr QRgb kWhite = 0xFFFFFFFF;
constexpr std::array kNeighbours { QPoint(-1, 0), QPoint(1, 0), QPoint(0, -1), QPoint(0, 1) };

// One flag for each pixel: reached from outside over white ones alone.
class Surround {
public:
    explicit Surround(const QImage& image)
        : m_image(image), m_reached(static_cast<std::size_t>(image.width()) * image.height()) {
        for (int x = 0; x < image.width(); ++x) {
            Reach({ x, 0 });
            Reach({ x, image.height() - 1 });
        }
        for (int y = 0; y < image.height(); ++y) {
            Reach({ 0, y });
            Reach({ image.width() - 1, y });
        }
        while (!m_open.empty()) {
            const QPoint pixel = m_open.back();
            m_open.pop_back();
            for (const QPoint step : kNeighbours)
                Reach(pixel + step);
        }
    }

    bool Has(QPoint pixel) const { return m_image.valid(pixel) && m_reached[Index(pixel)]; }
    bool Touches(QPoint pixel) const {
        return std::ranges::any_of(kNeighbours, [&](QPoint step) { return Has(pixel + step); });
    }

private:
    std::size_t Index(QPoint pixel) const {
        return static_cast<std::size_t>(pixel.y()) * m_image.width() + pixel.x();
    }
    void Reach(QPoint pixel) {
        if (!m_image.valid(pixel) || Has(pixel) || m_image.pixel(pixel) != kWhite)
            return;
        m_reached[Index(pixel)] = true;
        m_open.push_back(pixel);
    }

    const QImage& m_image;
    std::vector<bool> m_reached;
    std::vector<QPoint> m_open;
};

// The most transparent color that gives this one over white: color = own * alpha + 255 * (1 - alpha).
QRgb WithoutWhite(QRgb color) {
    const int white = std::min({ qRed(color), qGreen(color), qBlue(color) });
    const int alpha = 255 - white;
    if (alpha == 0)
        return 0;
    const auto own = [&](int channel) { return (channel - white) * 255 / alpha; };
    return qRgba(own(qRed(color)), own(qGreen(color)), own(qBlue(color)), alpha);
}

} // namespace

void ClearSurround(QImage& image) {
    const QImage before = image;
    const Surround surround(before);
    for (int y = 0; y < image.height(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            if (surround.Has({ x, y }))
                row[x] = 0;
            else if (surround.Touches({ x, y }))
                row[x] = WithoutWhite(row[x]);
    }
}

NamedCursor::NamedCursor(QImage base, QPoint hotSpot) : m_hotSpot(hotSpot) {
    m_images.push_back(std::move(base));
}

OSStatus NamedCursor::AddDensity(QImage image) {
    const QSize base = m_images.front().size();
    if (image.width() <= base.width() ||
        image.width() * base.height() != image.height() * base.width())
        return kParamErr;
    const auto place = std::ranges::upper_bound(m_images, image.width(), {}, &QImage::width);
    m_images.insert(place, std::move(image));
    m_made.clear();
    return kNoErr;
}

const QCursor& NamedCursor::At(double devicePixelRatio) {
    const auto known =
        std::ranges::find(m_made, devicePixelRatio, &decltype(m_made)::value_type::first);
    if (known != m_made.end())
        return known->second;
    return m_made.emplace_back(devicePixelRatio, Make(devicePixelRatio)).second;
}

QCursor NamedCursor::Make(double devicePixelRatio) const {
    const QSize size = (QSizeF(m_images.front().size()) * devicePixelRatio).toSize();
    QImage image = DrawingFor(devicePixelRatio);
    if (image.size() != size)
        image = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QPixmap pixmap = QPixmap::fromImage(image);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    // On X11, Qt hands the hot spot on as it is, and there it counts in pixels of the screen.
    const bool inPixels = QGuiApplication::platformName() == QLatin1String("xcb");
    const QPointF hotSpot = QPointF(m_hotSpot) * (inPixels ? devicePixelRatio : 1);
    return QCursor(pixmap, static_cast<int>(hotSpot.x()), static_cast<int>(hotSpot.y()));
}

// The smallest one with enough pixels; reducing looks better than enlarging.
const QImage& NamedCursor::DrawingFor(double devicePixelRatio) const {
    const int width = static_cast<int>(std::ceil(m_images.front().width() * devicePixelRatio));
    const auto fit = std::ranges::lower_bound(m_images, width, {}, &QImage::width);
    return fit == m_images.end() ? m_images.back() : *fit;
}

} // namespace platform
