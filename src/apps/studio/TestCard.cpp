// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/TestCard.h"

#include <array>

#include <QFont>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPen>

namespace studio {

namespace {

constexpr QRect kFrame { 0, 0, kTestCardWidth, kTestCardHeight };
constexpr QRect kBars { 0, 0, kTestCardWidth, 720 };
constexpr QRect kRamp { 0, 720, kTestCardWidth, 120 };
constexpr QRect kBase { 0, 840, kTestCardWidth, 240 };
// Bars of 75 % amplitude, so that none of them clips anywhere.
constexpr int kAmplitude = 191;

void DrawBars(QPainter& painter) {
    // White, yellow, cyan, green, magenta, red, blue: falling brightness, one bit for each channel.
    constexpr std::array<int, 7> kBits { 7, 6, 3, 2, 5, 4, 1 };
    for (int i = 0; i < 7; ++i) {
        const int left = kTestCardWidth * i / 7;
        const int bits = kBits[static_cast<std::size_t>(i)];
        const auto level = [bits](int bit) { return bits & bit ? kAmplitude : 0; };
        painter.fillRect(left, kBars.top(), kTestCardWidth * (i + 1) / 7 - left, kBars.height(),
                         QColor(level(4), level(2), level(1)));
    }
}

void DrawRamp(QPainter& painter) {
    QLinearGradient ramp(kRamp.left(), 0, kRamp.right() + 1, 0);
    ramp.setColorAt(0, Qt::black);
    ramp.setColorAt(1, Qt::white);
    painter.fillRect(kRamp, ramp);
    painter.fillRect(kBase, QColor(24, 26, 30));
}

QRectF Inset(double share) {
    QRectF area(0, 0, kTestCardWidth * share, kTestCardHeight * share);
    area.moveCenter(QRectF(kFrame).center());
    return area;
}

void DrawGuides(QPainter& painter) {
    const auto center = QRectF(kFrame).center();
    QPainterPath lines;
    QPainterPath dashes;
    lines.addRect(Inset(0.93));
    dashes.addRect(Inset(0.85));
    for (const auto& arm : { QPointF(90, 0), QPointF(0, 90) }) {
        lines.moveTo(center - arm);
        lines.lineTo(center + arm);
    }
    lines.addEllipse(center, 330, 330);
    // Light on dark, so that it shows on every bar.
    for (const auto& path : { lines, dashes })
        painter.strokePath(path, QPen(QColor(0, 0, 0, 130), 6));
    painter.strokePath(lines, QPen(Qt::white, 2));
    painter.strokePath(dashes, QPen(Qt::white, 2, Qt::DashLine));
}

QImage DrawStill() {
    QImage picture(kFrame.size(), QImage::Format_RGB32);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawBars(painter);
    DrawRamp(painter);
    DrawGuides(painter);
    return picture;
}

QFont DigitFont(int pixels) {
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setStyleHint(QFont::Monospace);
    font.setPixelSize(pixels);
    font.setBold(true);
    return font;
}

void DrawNumber(QPainter& painter, std::int64_t number) {
    constexpr QRect kPlate { 780, 868, 360, 110 };
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawRoundedRect(kPlate, 14, 14);
    painter.setPen(Qt::white);
    painter.setFont(DigitFont(84));
    painter.drawText(kPlate, Qt::AlignCenter,
                     QStringLiteral("%1").arg(number, 4, 10, QLatin1Char('0')));
}

// A hand that goes round once in the whole card, so that playing shows.
void DrawHand(QPainter& painter, std::int64_t number) {
    painter.save();
    painter.translate(QRectF(kFrame).center());
    painter.rotate(360.0 * static_cast<double>(number - 1) / kTestCardFrames);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 130));
    painter.drawRoundedRect(QRectF(-9, -326, 18, 84), 9, 9);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(-5, -322, 10, 76), 5, 5);
    painter.restore();
}

} // namespace

QImage DrawTestCard(std::int64_t number) {
    static const QImage still = DrawStill();
    QImage picture = still;
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawHand(painter, number);
    DrawNumber(painter, number);
    return picture;
}

} // namespace studio
