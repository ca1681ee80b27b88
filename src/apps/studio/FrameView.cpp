// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/FrameView.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include "apps/studio/Texts.h"

namespace studio {

namespace {

constexpr std::array kScales { 0.05, 0.1, 0.25, 0.333, 0.5,  0.667, 1.0,  1.5, 2.0,
                               3.0,  4.0, 6.0,  8.0,   12.0, 16.0,  24.0, 32.0 };
constexpr double kMargin = 16; // around a fitted frame
constexpr int kCheck = 8;      // side of a square of the checkerboard

QBrush Checkerboard() {
    static const QImage tile = [] {
        QImage image(2 * kCheck, 2 * kCheck, QImage::Format_RGB32);
        image.fill(QColor(150, 150, 150));
        QPainter painter(&image);
        painter.fillRect(0, 0, kCheck, kCheck, QColor(106, 106, 106));
        painter.fillRect(kCheck, kCheck, kCheck, kCheck, QColor(106, 106, 106));
        return image;
    }();
    return QBrush(tile);
}

// Neutral and darker than most frames, whatever the palette, so that colours are judged rightly.
constexpr QColor kSurround { 38, 38, 40 };

} // namespace

FrameView::FrameView(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAccessibleName(T("Frame"));
}

void FrameView::SetPicture(const QImage& picture, const QString& insteadOfIt) {
    const bool otherSize = picture.size() != m_picture.size();
    m_picture = picture;
    m_insteadOfIt = insteadOfIt;
    m_shrunk = {};
    if (otherSize)
        ScaleIsOther();
    update();
}

void FrameView::ScaleIsOther() {
    onScaleChanged();
    update();
}

void FrameView::Fit() {
    m_fits = true;
    m_center = { 0.5, 0.5 };
    ScaleIsOther();
}

double FrameView::FittingScale() const {
    if (m_picture.isNull())
        return 1;
    const auto room = (QSizeF(size()) - QSizeF(2 * kMargin, 2 * kMargin)) * devicePixelRatioF();
    const auto scale =
        std::min(room.width() / m_picture.width(), room.height() / m_picture.height());
    return std::max(scale, 0.01);
}

double FrameView::Scale() const {
    return m_fits ? FittingScale() : m_scale;
}

QRectF FrameView::Place() const {
    const auto view = QSizeF(size()) * devicePixelRatioF();
    // Whole device pixels, or a frame at 100 % would be smeared over its neighbours.
    const QSizeF shown(std::round(m_picture.width() * Scale()),
                       std::round(m_picture.height() * Scale()));
    return { std::round(view.width() / 2 - m_center.x() * shown.width()),
             std::round(view.height() / 2 - m_center.y() * shown.height()), shown.width(),
             shown.height() };
}

void FrameView::SetScale(double scale, QPointF around) {
    if (m_picture.isNull())
        return;
    const auto point = around * devicePixelRatioF();
    const auto before = Place();
    const QPointF held((point.x() - before.left()) / before.width(),
                       (point.y() - before.top()) / before.height());
    m_scale = std::clamp(scale, kScales.front(), kScales.back());
    m_fits = false;
    const auto view = QRectF(rect()).center() * devicePixelRatioF();
    m_center = held + QPointF((view.x() - point.x()) / (m_picture.width() * m_scale),
                              (view.y() - point.y()) / (m_picture.height() * m_scale));
    KeepInSight();
    ScaleIsOther();
}

void FrameView::ZoomBy(int step, QPointF around) {
    const auto* const larger = std::ranges::upper_bound(kScales, Scale() * 1.01);
    const auto* const same = std::ranges::lower_bound(kScales, Scale() * 0.99);
    if (step > 0)
        SetScale(larger == kScales.end() ? kScales.back() : *larger, around);
    else
        SetScale(same == kScales.begin() ? kScales.front() : *(same - 1), around);
}

void FrameView::Pan(QPointF by) {
    if (m_fits || m_picture.isNull())
        return;
    const auto moved = by * devicePixelRatioF();
    m_center -= QPointF(moved.x() / (m_picture.width() * m_scale),
                        moved.y() / (m_picture.height() * m_scale));
    KeepInSight();
    update();
}

void FrameView::KeepInSight() {
    m_center = { std::clamp(m_center.x(), 0.0, 1.0), std::clamp(m_center.y(), 0.0, 1.0) };
}

void FrameView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), kSurround);
    if (m_picture.isNull()) {
        painter.setPen(QColor(220, 220, 220));
        painter.drawText(rect().adjusted(24, 24, -24, -24), Qt::AlignCenter | Qt::TextWordWrap,
                         m_insteadOfIt);
        return;
    }
    const auto ratio = devicePixelRatioF();
    painter.scale(1 / ratio, 1 / ratio);
    const auto place = Place();
    if (m_picture.hasAlphaChannel()) {
        painter.setBrushOrigin(place.topLeft());
        painter.fillRect(place, Checkerboard());
    }
    const bool shrinks = Scale() < 1;
    const auto shown = place.size().toSize();
    if (shrinks && m_shrunk.size() != shown)
        m_shrunk = m_picture.scaled(shown, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    // Frame pixels of unequal sizes would look like a fault of the frame.
    painter.setRenderHint(QPainter::SmoothPixmapTransform, Scale() != std::round(Scale()));
    painter.drawImage(place, shrinks ? m_shrunk : m_picture);
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), ratio));
        painter.drawRect(QRectF(QPointF(), QSizeF(size()) * ratio)
                             .adjusted(ratio / 2, ratio / 2, -ratio / 2, -ratio / 2));
    }
}

void FrameView::resizeEvent(QResizeEvent*) {
    if (m_fits)
        ScaleIsOther();
}

void FrameView::wheelEvent(QWheelEvent* event) {
    // Touch pads give pixels, and two fingers on them pan; a wheel zooms.
    if (!event->pixelDelta().isNull() && !(event->modifiers() & Qt::ControlModifier))
        Pan(event->pixelDelta());
    else if (event->angleDelta().y() != 0)
        ZoomBy(event->angleDelta().y() > 0 ? 1 : -1, event->position());
    event->accept();
}

void FrameView::mousePressEvent(QMouseEvent* event) {
    m_grip = event->position();
    if (!m_fits)
        setCursor(Qt::ClosedHandCursor);
}

void FrameView::mouseMoveEvent(QMouseEvent* event) {
    Pan(event->position() - m_grip);
    m_grip = event->position();
}

void FrameView::mouseReleaseEvent(QMouseEvent*) {
    unsetCursor();
}

void FrameView::mouseDoubleClickEvent(QMouseEvent* event) {
    m_fits ? SetScale(1, event->position()) : Fit();
}

// Shift with an arrow pans; arrows alone go to the window, which steps through the frames with them.
void FrameView::keyPressEvent(QKeyEvent* event) {
    constexpr double kStep = 48;
    const auto way = [key = event->key()](Qt::Key back, Qt::Key on) {
        return key == back ? kStep : key == on ? -kStep : 0;
    };
    const QPointF by(way(Qt::Key_Left, Qt::Key_Right), way(Qt::Key_Up, Qt::Key_Down));
    if (m_fits || by.isNull() || !(event->modifiers() & Qt::ShiftModifier))
        return QWidget::keyPressEvent(event);
    Pan(by);
}

} // namespace studio
