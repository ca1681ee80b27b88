// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/FrameView.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include <QApplication>
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
constexpr QColor kAreaColor { 255, 255, 255, 190 };
constexpr QColor kRestColor { 255, 64, 160 };
constexpr double kReach = 6;  // pixels of the screen within which a dragged text comes to rest
constexpr int kFarNudge = 10; // pixels of the frame, with Shift

// How an arrow key moves; zero for others.
QPoint WayOfKey(int key) {
    return { (key == Qt::Key_Right) - (key == Qt::Key_Left),
             (key == Qt::Key_Down) - (key == Qt::Key_Up) };
}

// Seen on any picture: the line has a dark rim.
void DrawOver(QPainter& painter, const QColor& color, Qt::PenStyle style, const auto& draw) {
    const auto ratio = painter.device()->devicePixelRatioF();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0, 0, 0, 90), 3 * ratio));
    draw();
    painter.setPen(QPen(color, ratio, style));
    draw();
}

} // namespace

FrameView::FrameView(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAccessibleName(T("Frame"));
    setMouseTracking(true);
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
    PaintHelp(painter);
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

// Texts

QPointF FrameView::ToFrame(QPointF point) const {
    const auto place = Place();
    const auto inside = point * devicePixelRatioF() - place.topLeft();
    return { inside.x() * m_picture.width() / place.width(),
             inside.y() * m_picture.height() / place.height() };
}

QRectF FrameView::OnScreen(const QRectF& rect) const {
    const auto place = Place();
    const auto across = place.width() / m_picture.width();
    const auto down = place.height() / m_picture.height();
    return { place.left() + rect.left() * across, place.top() + rect.top() * down,
             rect.width() * across, rect.height() * down };
}

TextGrip::Way FrameView::WayOf(Qt::KeyboardModifiers modifiers) const {
    const auto inFrame = [this](double pixels) {
        return std::max(1, qRound(pixels * devicePixelRatioF() / Scale()));
    };
    return { inFrame(QApplication::startDragDistance()),
             modifiers & Qt::ControlModifier ? 0 : inFrame(kReach),
             (modifiers & Qt::ShiftModifier) != 0 };
}

void FrameView::SetTexts(std::vector<TextGrip::Text> texts) {
    m_texts.SetTexts(std::move(texts), m_picture.size());
    update();
}

void FrameView::Take(std::optional<std::size_t> track) {
    m_texts.Take(track);
    update();
}

void FrameView::EndDrag() {
    m_texts.LetGo();
    update();
}

void FrameView::SetShowsAreas(bool shows) {
    m_showsAreas = shows;
    update();
}

void FrameView::PaintHelp(QPainter& painter) const {
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    const QRectF frame(QPointF(), m_picture.size());
    if (m_showsAreas) {
        const auto middle = OnScreen({ frame.center(), QSizeF() }).topLeft();
        const auto all = OnScreen(frame);
        DrawOver(painter, kAreaColor, Qt::SolidLine, [&] {
            for (const auto area : { host::AnchorArea::kAction93, host::AnchorArea::kTitle90 })
                painter.drawRect(OnScreen(AreaIn(m_picture.size(), area)));
        });
        DrawOver(painter, kAreaColor, Qt::DashLine, [&] {
            painter.drawLine(QPointF(all.left(), middle.y()), { all.right(), middle.y() });
            painter.drawLine(QPointF(middle.x(), all.top()), { middle.x(), all.bottom() });
        });
    }
    if (const auto* const text = m_texts.Taken())
        DrawOver(painter, palette().color(QPalette::Highlight).lighter(130),
                 text->isLocked ? Qt::DashLine : Qt::SolidLine,
                 [&] { painter.drawRect(OnScreen(text->rect)); });
    const auto rest = m_texts.Rest();
    DrawOver(painter, kRestColor, Qt::SolidLine, [&] {
        const auto all = OnScreen(frame);
        const auto at = OnScreen(QRectF(rest.x.value_or(0), rest.y.value_or(0), 0, 0)).topLeft();
        if (rest.x)
            painter.drawLine(QPointF(at.x(), all.top()), { at.x(), all.bottom() });
        if (rest.y)
            painter.drawLine(QPointF(all.left(), at.y()), { all.right(), at.y() });
    });
    painter.restore();
}

// The mouse

void FrameView::ShowCursor(QPointF point) {
    const auto* const text = m_texts.At(ToFrame(point));
    if (text && !text->isLocked)
        setCursor(Qt::SizeAllCursor);
    else
        unsetCursor();
}

void FrameView::mousePressEvent(QMouseEvent* event) {
    m_hand = event->position();
    if (event->button() == Qt::LeftButton && !m_picture.isNull()) {
        const auto point = ToFrame(m_hand);
        const auto* const text = m_texts.At(point);
        const auto track = text ? std::optional(text->track) : std::nullopt;
        Take(track);
        onTaken(track);
        if (m_texts.Hold(point))
            return;
    }
    if (!m_fits)
        setCursor(Qt::ClosedHandCursor);
}

void FrameView::mouseMoveEvent(QMouseEvent* event) {
    const auto point = event->position();
    if (m_texts.IsHeld()) {
        const auto before = m_texts.Rest().by;
        const auto by = m_texts.MoveTo(ToFrame(point), WayOf(event->modifiers()));
        if (by != before)
            onDragged(by);
        update();
    } else if (event->buttons() != Qt::NoButton) {
        Pan(point - m_hand);
        m_hand = point;
    } else {
        ShowCursor(point);
    }
}

void FrameView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && m_texts.IsHeld()) {
        const auto by = m_texts.LetGo();
        if (!by.isNull())
            onDropped(by);
        update();
    }
    ShowCursor(event->position());
}

void FrameView::mouseDoubleClickEvent(QMouseEvent* event) {
    const auto* const text = m_texts.At(ToFrame(event->position()));
    if (!text)
        m_fits ? SetScale(1, event->position()) : Fit();
    else if (!text->isLocked)
        onOpened();
}

// Keys

bool FrameView::IsNudge(const QKeyEvent& event) const {
    const auto* const text = m_texts.Taken();
    const auto modifiers = event.modifiers() & ~Qt::KeypadModifier;
    return text && !text->isLocked && !WayOfKey(event.key()).isNull() &&
           (modifiers == Qt::NoModifier || modifiers == Qt::ShiftModifier);
}

// The arrows step through the frames while no text has them.
bool FrameView::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && IsNudge(static_cast<QKeyEvent&>(*event))) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

// Without a text Shift with an arrow pans; arrows alone go to the window.
void FrameView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && m_texts.IsHeld()) {
        EndDrag();
        onDropped({});
        return;
    }
    if (event->key() == Qt::Key_Escape && m_texts.Taken())
        return Take(std::nullopt);
    if (IsNudge(*event)) {
        const int far = event->modifiers() & Qt::ShiftModifier ? kFarNudge : 1;
        if (!m_texts.IsHeld())
            onNudged(WayOfKey(event->key()) * far);
        return;
    }
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
