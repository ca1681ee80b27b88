// SPDX-License-Identifier: BSD-3-Clause
// How the timeline looks.
#include "apps/studio/Timeline.h"

#include <algorithm>
#include <utility>

#include <QPaintEvent>
#include <QPainter>

#include "apps/studio/Texts.h"
#include "apps/studio/TrackEdits.h"

namespace studio {

namespace {

constexpr float kHiddenOpacity = 0.4F;

QColor Faint(QColor color, float share) {
    color.setAlphaF(share);
    return color;
}

void PaintLock(QPainter& painter, QPointF middle, const QColor& color) {
    painter.setPen(QPen(color, 1.5));
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(QRectF(middle.x() - 2.5, middle.y() - 6, 5, 8), 0, 180 * 16);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(middle.x() - 4.5, middle.y() - 2, 9, 7), 1, 1);
}

} // namespace

void Timeline::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    const auto all = viewport()->rect();
    painter.setClipRect(all.adjusted(NamesWidth(), 0, 0, 0));
    PaintRuler(painter);
    for (std::size_t i = 0; i < m_tracks.size(); ++i)
        if (const auto row = RowArea(i); row.bottom() >= RulerHeight() && row.top() < all.bottom())
            PaintRow(painter, i);
    painter.setClipRect(all.adjusted(NamesWidth(), 0, 0, 0));
    PaintCurrent(painter);
    painter.setClipping(false);
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(all).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    }
}

void Timeline::PaintRuler(QPainter& painter) const {
    const auto text = palette().color(QPalette::WindowText);
    const auto faint = Faint(text, 0.35F);
    const auto numbers = m_scale.Numbers();
    const auto cell = m_scale.Cell();
    const double bottom = RulerHeight() - 2;
    const auto widest =
        std::max(QString::number(numbers.front()).size(), QString::number(numbers.back()).size());
    const auto room = fontMetrics().horizontalAdvance(QString(widest, QLatin1Char('0'))) + 18.0;
    std::int64_t step = 1;
    for (int i = 0; static_cast<double>(step) * cell < room; ++i)
        step = step * (i % 3 == 1 ? 5 : 2) / (i % 3 == 1 ? 2 : 1);
    double free = 0; // where the last label ends
    const auto begin = m_scale.IndexAt(NamesWidth() - room);
    const auto end = m_scale.IndexAt(viewport()->width() + room);
    for (auto i = begin; i <= end; ++i) {
        const bool labelled = numbers[i] % step == 0 || i == 0;
        if (!labelled && cell < 4)
            continue;
        const auto x = m_scale.MiddleOf(i);
        painter.setPen(faint);
        painter.drawLine(QPointF(x, bottom - (labelled ? 6 : 3)), QPointF(x, bottom));
        if (!labelled || x - room / 2 < free)
            continue;
        painter.setPen(text);
        painter.drawText(QRectF(x - room / 2, 2, room, fontMetrics().height()), Qt::AlignCenter,
                         QString::number(numbers[i]));
        free = x + room / 2 - 10;
    }
}

void Timeline::PaintRow(QPainter& painter, std::size_t track) const {
    const auto row = QRectF(RowArea(track));
    const auto& shown = m_tracks[track];
    const QRectF below(0, RulerHeight(), viewport()->width(), viewport()->height());
    painter.setClipRect(below);
    painter.setOpacity(1);
    if (track == m_track)
        painter.fillRect(row, Faint(palette().color(QPalette::Highlight), 0.22F));
    painter.setPen(Faint(palette().color(QPalette::WindowText), 0.12F));
    painter.drawLine(row.bottomLeft(), row.bottomRight());
    painter.setOpacity(shown.isShown ? 1.0 : kHiddenOpacity);
    PaintName(painter, track);
    painter.setClipRect(below.adjusted(NamesWidth(), 0, 0, 0));
    PaintSpans(painter, track);
    if (!shown.cues.empty() || (m_new && track == m_track))
        PaintCues(painter, track);
    painter.setOpacity(1);
}

void Timeline::PaintName(QPainter& painter, std::size_t track) const {
    const auto& shown = m_tracks[track];
    auto area = QRectF(RowArea(track));
    area.setRight(NamesWidth() - 4);
    const auto color = palette().color(QPalette::WindowText);
    if (shown.isLocked) {
        PaintLock(painter, { area.right() - 7, area.center().y() }, color);
        area.setRight(area.right() - 18);
    }
    area.setLeft(8);
    painter.setPen(color);
    painter.drawText(
        area, Qt::AlignVCenter | Qt::AlignLeft,
        fontMetrics().elidedText(ShownName(shown), Qt::ElideRight, static_cast<int>(area.width())));
}

// The stretches of a track without cues; of one with cues, only where it is not on at all.
void Timeline::PaintSpans(QPainter& painter, std::size_t track) const {
    const bool hasCues = !m_tracks[track].cues.empty();
    const auto spans = SpansOfTrack(track);
    const OnSpan all { 0, m_scale.Count() - 1 };
    painter.setPen(Qt::NoPen);
    painter.setBrush(Faint(palette().color(QPalette::WindowText), 0.07F));
    if (!hasCues)
        painter.drawRoundedRect(SpanArea(track, all).adjusted(0, 1, 0, -1), 4, 4);
    for (std::size_t i = 0; i < spans.size(); ++i)
        if (hasCues)
            painter.drawRect(SpanArea(track, spans[i]).adjusted(0, 1, 0, -1));
        else
            PaintBlock(painter, SpanArea(track, spans[i]), T("Text on"),
                       track == m_track && m_item == i);
}

void Timeline::PaintCues(QPainter& painter, std::size_t track) const {
    const auto& shown = m_tracks[track];
    const auto opacity = painter.opacity();
    const auto kind = host::KindOf(shown.settings);
    for (std::size_t i = 0; i < shown.cues.size(); ++i) {
        const auto& cue = shown.cues[i];
        const auto area = CueArea(track, cue);
        if (area.right() < NamesWidth() || area.left() > viewport()->width() || area.isEmpty())
            continue;
        const bool isOn = shown.on.Contains(cue.first) || shown.on.Contains(cue.last);
        painter.setOpacity(isOn ? opacity : opacity * kHiddenOpacity);
        // Without room for both, the words count.
        auto label = LabelOf(cue);
        if (fontMetrics().horizontalAdvance(label) > area.width() - 10)
            label = QString::fromStdString(host::CueText(cue, kind)).simplified();
        PaintBlock(painter, area, label, track == m_track && m_item == i);
    }
    painter.setOpacity(1);
    if (m_new && track == m_track)
        PaintBlock(painter, CueArea(track, { m_new->first, m_new->last, {}, {} }), {}, true);
}

void Timeline::PaintBlock(QPainter& painter, const QRectF& area, const QString& label,
                          bool selected) const {
    const auto color = palette().color(QPalette::Highlight);
    painter.setPen(selected ? QPen(palette().color(QPalette::WindowText), 1.5) : QPen(Qt::NoPen));
    painter.setBrush(Faint(color, selected ? 1.0F : 0.75F));
    const auto round = std::min(4.0, area.width() / 4);
    painter.drawRoundedRect(area.adjusted(0.5, 1, -0.5, -1), round, round);
    // What is scrolled out on the left leaves its words in sight.
    auto inside = area.adjusted(5, 0, -3, 0);
    inside.setLeft(std::max(inside.left(), NamesWidth() + 5.0));
    if (inside.width() < fontMetrics().averageCharWidth() * 3)
        return;
    painter.setPen(palette().color(QPalette::HighlightedText));
    painter.drawText(
        inside, Qt::AlignVCenter | Qt::AlignLeft,
        fontMetrics().elidedText(label, Qt::ElideRight, static_cast<int>(inside.width())));
}

void Timeline::PaintCurrent(QPainter& painter) const {
    const QColor color(226, 74, 60);
    const auto label = QString::number(m_scale.Numbers()[m_current]);
    const auto x = m_scale.MiddleOf(m_current);
    if (x < NamesWidth() || x > viewport()->width())
        return;
    const double wide = fontMetrics().horizontalAdvance(label) + 14;
    QRectF flag(x - wide / 2, 1, wide, fontMetrics().height() + 4);
    flag.moveLeft(std::clamp(flag.left(), NamesWidth() + 0.0,
                             std::max(viewport()->width() - wide, NamesWidth() + 0.0)));
    const auto bottom = std::min(RowArea(0).bottom() + 2, viewport()->height());
    painter.setPen(QPen(color, 2));
    painter.drawLine(QPointF(x, flag.bottom() - 1), QPointF(x, bottom));
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(flag, 4, 4);
    painter.setPen(Qt::white);
    painter.drawText(flag, Qt::AlignCenter, label);
}

} // namespace studio
