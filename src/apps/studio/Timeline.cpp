// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Timeline.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "apps/studio/Texts.h"

namespace studio {

namespace {

constexpr int kSide = 14; // left and right of the first and last frame
constexpr int kGrip = 6;  // how near to an edge it is taken
constexpr int kBarHeight = 24;

} // namespace

Timeline::Timeline(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(T("Timeline"));
    Describe();
}

void Timeline::SetFrames(std::vector<std::int64_t> numbers) {
    EndDrag(false);
    m_numbers = std::move(numbers);
    m_current = 0;
    m_spans.clear();
    m_selected.reset();
    Describe();
    update();
}

void Timeline::SetCurrent(std::size_t index) {
    m_current = std::min(index, m_numbers.size() - 1);
    Describe();
    update();
}

void Timeline::SetSpans(OnSpans spans) {
    if (spans == m_spans && m_drag == Drag::kNone)
        return;
    EndDrag(false);
    m_spans = std::move(spans);
    if (m_selected && *m_selected >= m_spans.size())
        m_selected.reset();
    Describe();
    update();
}

void Timeline::Describe() {
    setAccessibleDescription(
        (IsOn(m_spans, m_current) ? T("Frame %1: the text is on") : T("Frame %1: the text is off"))
            .arg(m_numbers[m_current]));
}

void Timeline::ChangeSpans(OnSpans spans) {
    m_spans = std::move(spans);
    update();
    // A copy, as whoever hears of it sets the spans anew.
    onSpansChanged(OnSpans(m_spans));
}

// Places

QSize Timeline::sizeHint() const {
    return { 600, fontMetrics().height() + kBarHeight + 26 };
}

QSize Timeline::minimumSizeHint() const {
    return { 160, sizeHint().height() };
}

QRect Timeline::RulerArea() const {
    return { 0, 0, width(), fontMetrics().height() + 12 };
}

QRect Timeline::BarArea() const {
    return { 0, RulerArea().bottom() + 4, width(), kBarHeight };
}

double Timeline::EdgeAt(std::size_t index) const {
    return kSide + (width() - 2.0 * kSide) * static_cast<double>(index) /
                       static_cast<double>(m_numbers.size());
}

std::size_t Timeline::IndexAt(double x) const {
    const auto share = (x - kSide) / std::max(width() - 2.0 * kSide, 1.0);
    const auto count = static_cast<double>(m_numbers.size());
    return static_cast<std::size_t>(std::clamp(std::floor(share * count), 0.0, count - 1));
}

QRectF Timeline::SpanArea(const OnSpan& span) const {
    const auto area = BarArea();
    const auto left = EdgeAt(span.first);
    return { left, static_cast<double>(area.top()), std::max(EdgeAt(span.last + 1) - left, 2.0),
             static_cast<double>(area.height()) };
}

QPoint Timeline::BarPoint(std::size_t index) const {
    return { static_cast<int>(MiddleOf(index)), BarArea().center().y() };
}

// Input

Timeline::Hit Timeline::HitTest(QPointF point) const {
    if (point.y() < BarArea().top())
        return { Drag::kScrub, 0 };
    for (std::size_t i = 0; i < m_spans.size(); ++i) {
        const auto area = SpanArea(m_spans[i]);
        // Short stretches keep a middle by which they are moved.
        const auto inside = std::min<double>(kGrip, area.width() / 4);
        if (point.x() < area.left() - kGrip / 2.0 || point.x() > area.right() + kGrip / 2.0)
            continue;
        return { point.x() <= area.left() + inside    ? Drag::kStart
                 : point.x() >= area.right() - inside ? Drag::kEnd
                                                      : Drag::kMove,
                 i };
    }
    return { Drag::kCreate, 0 };
}

void Timeline::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    const auto hit = HitTest(event->position());
    m_drag = hit.drag;
    m_dragStart = IndexAt(event->position().x());
    m_spansBefore = m_rest = m_spans;
    if (m_drag == Drag::kScrub) {
        onScrub(m_dragStart);
        return;
    }
    m_selected.reset();
    m_dragged = { m_dragStart, m_dragStart };
    if (m_drag != Drag::kCreate) {
        m_selected = hit.span;
        m_dragged = m_spans[hit.span];
        m_rest.erase(m_rest.begin() + static_cast<std::ptrdiff_t>(hit.span));
    }
    update();
}

void Timeline::mouseMoveEvent(QMouseEvent* event) {
    if (m_drag != Drag::kNone)
        return DragTo(IndexAt(event->position().x()));
    switch (HitTest(event->position()).drag) {
    case Drag::kStart:
    case Drag::kEnd:
        return setCursor(Qt::SizeHorCursor);
    case Drag::kMove:
        return setCursor(Qt::OpenHandCursor);
    default:
        unsetCursor();
    }
}

void Timeline::DragTo(std::size_t index) {
    if (m_drag == Drag::kScrub) {
        if (index != m_current)
            onScrub(index);
        return;
    }
    // A click that trembles is no drag.
    if (index == m_dragStart && m_spans == m_spansBefore)
        return;
    auto span = m_dragged;
    if (m_drag == Drag::kCreate) {
        span = { std::min(m_dragStart, index), std::max(m_dragStart, index) };
    } else if (m_drag == Drag::kStart) {
        span.first = std::min(index, span.last);
    } else if (m_drag == Drag::kEnd) {
        span.last = std::max(index, span.first);
    } else {
        const auto length = span.last - span.first;
        const auto held = m_dragStart - std::min(m_dragStart, span.first);
        span.first = std::min(index - std::min(index, held), m_numbers.size() - 1 - length);
        span.last = span.first + length;
    }
    m_spans = TurnOn(m_rest, span);
    m_selected = SpanAt(m_spans, span.first);
    update();
}

void Timeline::mouseReleaseEvent(QMouseEvent* event) {
    // A click into the empty bar makes nothing: only a drag does.
    if (event->button() == Qt::LeftButton)
        EndDrag(true);
}

void Timeline::EndDrag(bool keep) {
    const auto drag = std::exchange(m_drag, Drag::kNone);
    if (drag == Drag::kNone || drag == Drag::kScrub)
        return;
    if (!keep)
        m_spans = m_spansBefore;
    update();
    if (m_spans != m_spansBefore)
        ChangeSpans(m_spans);
}

void Timeline::keyPressEvent(QKeyEvent* event) {
    const bool deletes = event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace;
    if (event->key() == Qt::Key_Escape && m_drag != Drag::kNone)
        EndDrag(false);
    else if (deletes && m_selected && m_drag == Drag::kNone)
        ChangeSpans(TurnOff(m_spans, m_spans[*std::exchange(m_selected, std::nullopt)]));
    else
        QWidget::keyPressEvent(event);
}

void Timeline::contextMenuEvent(QContextMenuEvent* event) {
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    const auto index = byMouse ? IndexAt(event->pos().x()) : m_current;
    onMenu(index, byMouse ? event->globalPos() : mapToGlobal(BarPoint(index)));
}

void Timeline::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange)
        updateGeometry();
    QWidget::changeEvent(event);
}

// Painting

void Timeline::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintRuler(painter);
    PaintSpans(painter);
    PaintCurrent(painter);
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    }
}

void Timeline::PaintRuler(QPainter& painter) const {
    const auto text = palette().color(QPalette::WindowText);
    auto faint = text;
    faint.setAlphaF(0.35F);
    const auto area = RulerArea();
    const auto cell = EdgeAt(1) - EdgeAt(0);
    const auto room = fontMetrics().horizontalAdvance(QString::number(m_numbers.back())) + 18.0;
    std::int64_t step = 1;
    for (int i = 0; static_cast<double>(step) * cell < room; ++i)
        step = step * (i % 3 == 1 ? 5 : 2) / (i % 3 == 1 ? 2 : 1);
    double free = 0; // where the last label ends
    for (std::size_t i = 0; i < m_numbers.size(); ++i) {
        const bool labelled = m_numbers[i] % step == 0 || i == 0;
        if (!labelled && cell < 4)
            continue;
        const auto x = MiddleOf(i);
        painter.setPen(faint);
        painter.drawLine(QPointF(x, area.bottom() - (labelled ? 6 : 3)), QPointF(x, area.bottom()));
        if (!labelled || x - room / 2 < free)
            continue;
        painter.setPen(text);
        painter.drawText(QRectF(x - room / 2, area.top() + 2, room, fontMetrics().height()),
                         Qt::AlignCenter, QString::number(m_numbers[i]));
        free = x + room / 2 - 10;
    }
}

void Timeline::PaintSpans(QPainter& painter) const {
    auto back = palette().color(QPalette::WindowText);
    back.setAlphaF(0.09F);
    painter.setPen(Qt::NoPen);
    painter.setBrush(back);
    painter.drawRoundedRect(QRectF(BarArea()).adjusted(kSide, 0, -kSide, 0), 4, 4);
    for (std::size_t i = 0; i < m_spans.size(); ++i) {
        const auto area = SpanArea(m_spans[i]);
        auto color = palette().color(QPalette::Highlight);
        const bool selected = m_selected == i;
        color.setAlphaF(selected ? 1.0F : 0.7F);
        painter.setPen(selected ? QPen(palette().color(QPalette::WindowText), 1.5)
                                : QPen(Qt::NoPen));
        painter.setBrush(color);
        painter.drawRoundedRect(area.adjusted(0.5, 1, -0.5, -1), 4, 4);
        const auto label = T("Text on");
        if (area.width() < fontMetrics().horizontalAdvance(label) + 24)
            continue;
        painter.setPen(palette().color(QPalette::HighlightedText));
        painter.drawText(area.adjusted(12, 0, -12, 0), Qt::AlignVCenter | Qt::AlignLeft, label);
    }
}

void Timeline::PaintCurrent(QPainter& painter) const {
    const QColor color(226, 74, 60);
    const auto label = QString::number(m_numbers[m_current]);
    const auto x = MiddleOf(m_current);
    const double wide = fontMetrics().horizontalAdvance(label) + 14;
    QRectF flag(x - wide / 2, 1, wide, fontMetrics().height() + 4);
    flag.moveLeft(std::clamp(flag.left(), 0.0, std::max(width() - wide, 0.0)));
    painter.setPen(QPen(color, 2));
    painter.drawLine(QPointF(x, flag.bottom() - 1), QPointF(x, BarArea().bottom() + 3));
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(flag, 4, 4);
    painter.setPen(Qt::white);
    painter.drawText(flag, Qt::AlignCenter, label);
}

} // namespace studio
