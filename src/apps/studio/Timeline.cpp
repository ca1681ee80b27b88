// SPDX-License-Identifier: BSD-3-Clause
// What is where in the timeline, and what mouse and keys do there; TimelinePaint.cpp draws it.
#include "apps/studio/Timeline.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>

#include "apps/studio/Texts.h"
#include "apps/studio/TrackEdits.h"

namespace studio {

namespace {

constexpr int kSide = 14; // left and right of the first and last frame
constexpr int kGrip = 6;  // how near to an edge it is taken
constexpr int kGap = 4;   // below the last row

// Keys that the timeline takes although the window has shortcuts with them.
bool IsOwnKey(int key) {
    return key == Qt::Key_Delete || key == Qt::Key_Backspace || key == Qt::Key_Insert ||
           key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Up ||
           key == Qt::Key_Down;
}

} // namespace

QString LabelOf(const host::Cue& cue) {
    const auto text = QString::fromStdString(cue.text).simplified();
    const auto character = QString::fromStdString(cue.character).simplified();
    return character.isEmpty() ? text
           : text.isEmpty()    ? character
                               : T("%1: %2").arg(character, text);
}

Timeline::Timeline(QWidget* parent) : QAbstractScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true);
    viewport()->setBackgroundRole(QPalette::Window);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    setAccessibleName(T("Timeline"));
    Describe();
}

void Timeline::SetFrames(std::vector<std::int64_t> numbers) {
    EndDrag(false);
    m_scale.SetFrames(std::move(numbers));
    m_current = 0;
    m_item.reset();
    UpdateBars();
    Describe();
}

void Timeline::SetCurrent(std::size_t index) {
    m_current = std::min(index, m_scale.Count() - 1);
    Reveal(m_current);
    Describe();
}

void Timeline::SetTracks(std::vector<host::Track> tracks, std::size_t selected) {
    if (tracks == m_tracks && selected == m_track && m_drag == Drag::kNone)
        return;
    EndDrag(false);
    const bool isOther = selected != m_track || tracks.size() != m_tracks.size();
    m_tracks = std::move(tracks);
    m_track = selected;
    const auto items = SelectedCues().empty() ? Spans().size() : SelectedCues().size();
    if (isOther || (m_item && *m_item >= items))
        m_item.reset();
    updateGeometry();
    UpdateBars();
    if (isOther)
        RevealRow();
    Describe();
}

OnSpans Timeline::SpansOfTrack(std::size_t track) const {
    return SpansOf(m_tracks[track].on, m_scale.Numbers());
}

OnSpans Timeline::Spans() const {
    return SpansOfTrack(m_track);
}

std::optional<std::size_t> Timeline::TheCue() const {
    if (SelectedCues().empty() || m_item)
        return SelectedCues().empty() ? std::nullopt : m_item;
    const auto* const here = m_tracks[m_track].CueAt(m_scale.Numbers()[m_current]);
    return here ? std::optional(static_cast<std::size_t>(here - SelectedCues().data()))
                : std::nullopt;
}

void Timeline::SelectCue(std::optional<std::size_t> cue) {
    m_item = cue;
    viewport()->update();
}

void Timeline::Describe() {
    const auto number = m_scale.Numbers()[m_current];
    const auto& track = m_tracks[m_track];
    const auto* const cue = track.CueAt(number);
    const bool on = track.on.Contains(number) && (track.cues.empty() || cue);
    auto text = (on ? T("Frame %1: the text is on") : T("Frame %1: the text is off")).arg(number);
    if (on && cue)
        text += QLatin1Char('\n') + LabelOf(*cue);
    setAccessibleDescription(text);
    viewport()->update();
}

// Places

int Timeline::HeightOf(std::size_t rows) const {
    const int bar = m_scale.IsFit() ? 0 : horizontalScrollBar()->sizeHint().height();
    return RulerHeight() + static_cast<int>(rows) * RowHeight() + kGap + bar;
}

// The frame above gets the most of the window.
QSize Timeline::sizeHint() const {
    const auto most = static_cast<std::size_t>(
        std::max((screen()->availableGeometry().height() / 4 - RulerHeight()) / RowHeight(), 2));
    return { 600, HeightOf(std::min({ m_tracks.size(), most, std::size_t { 8 } })) };
}

QSize Timeline::minimumSizeHint() const {
    return { NamesWidth() + 100, HeightOf(std::min<std::size_t>(m_tracks.size(), 2)) };
}

QRect Timeline::RowArea(std::size_t track) const {
    const int top = RulerHeight() + static_cast<int>(RowOf(track)) * RowHeight();
    return { 0, top - verticalScrollBar()->value(), viewport()->width(), RowHeight() };
}

QRect Timeline::FramesArea() const {
    return viewport()->rect().adjusted(NamesWidth(), RulerHeight(), 0, 0);
}

std::optional<std::size_t> Timeline::TrackAt(double y) const {
    const auto top = RulerHeight() - verticalScrollBar()->value();
    const auto row = std::floor((y - top) / RowHeight());
    if (y < RulerHeight() || row < 0 || row >= static_cast<double>(m_tracks.size()))
        return std::nullopt;
    return RowOf(static_cast<std::size_t>(row));
}

QRectF Timeline::SpanArea(std::size_t track, const OnSpan& span) const {
    const auto area = RowArea(track);
    const auto left = m_scale.EdgeAt(span.first);
    return { left, area.top() + 1.0, std::max(m_scale.EdgeAt(span.last + 1) - left, 2.0),
             area.height() - 2.0 };
}

QRectF Timeline::CueArea(std::size_t track, const host::Cue& cue) const {
    const auto [first, end] = m_scale.PartOf(cue.first, cue.last);
    return first < end ? SpanArea(track, { first, end - 1 }) : QRectF();
}

QPoint Timeline::RowPoint(std::size_t track, std::size_t index) const {
    return { static_cast<int>(m_scale.MiddleOf(index)), RowArea(track).center().y() };
}

FrameSpan Timeline::ShotSpan() const {
    return { m_scale.Numbers().front(), m_scale.Numbers().back() };
}

// Room, zoom and scrolling

void Timeline::UpdateBars() {
    m_scale.SetRoom(NamesWidth() + kSide, viewport()->width() - kSide);
    auto& rows = *verticalScrollBar();
    rows.setSingleStep(RowHeight());
    rows.setPageStep(viewport()->height() - RulerHeight());
    rows.setRange(0,
                  std::max(static_cast<int>(m_tracks.size()) * RowHeight() - rows.pageStep(), 0));
    auto& frames = *horizontalScrollBar();
    const auto scroll = m_scale.Scroll(); // the bar tells of each change
    frames.setPageStep(viewport()->width() - NamesWidth());
    frames.setSingleStep(std::max(static_cast<int>(m_scale.Cell()), 1));
    frames.setRange(0, static_cast<int>(std::ceil(m_scale.MostScroll())));
    frames.setValue(static_cast<int>(std::lround(scroll)));
    viewport()->update();
}

void Timeline::resizeEvent(QResizeEvent*) {
    UpdateBars();
}

void Timeline::scrollContentsBy(int, int) {
    m_scale.SetScroll(horizontalScrollBar()->value());
    viewport()->update();
}

void Timeline::ZoomAround(double x, double factor) {
    const bool wasFit = m_scale.IsFit();
    m_scale.ZoomAround(x, factor);
    if (m_scale.IsFit() != wasFit)
        updateGeometry(); // with the bar or without
    UpdateBars();
}

void Timeline::ZoomBy(double factor) {
    Reveal(m_current);
    ZoomAround(m_scale.MiddleOf(m_current), factor);
}

void Timeline::FitFrames() {
    ZoomAround(0, 0);
}

void Timeline::Reveal(std::size_t index) {
    m_scale.Reveal(index);
    horizontalScrollBar()->setValue(static_cast<int>(std::lround(m_scale.Scroll())));
}

void Timeline::RevealRow() {
    const auto top = static_cast<int>(RowOf(m_track)) * RowHeight();
    const auto room = viewport()->height() - RulerHeight();
    auto& bar = *verticalScrollBar();
    bar.setValue(std::min(std::max(bar.value(), top + RowHeight() - room), top));
}

void Timeline::wheelEvent(QWheelEvent* event) {
    const auto turn = event->angleDelta();
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        ZoomAround(event->position().x(), std::pow(1.2, turn.y() / 120.0));
        event->accept();
    } else if (event->modifiers().testFlag(Qt::ShiftModifier) && turn.y() != 0) {
        auto& bar = *horizontalScrollBar();
        bar.setValue(bar.value() - turn.y());
        event->accept();
    } else {
        QAbstractScrollArea::wheelEvent(event);
    }
}

// Mouse

Timeline::Hit Timeline::HitTest(std::size_t track, QPointF point) const {
    Hit found { Drag::kCreate, 0 };
    const auto look = [&, x = point.x()](const QRectF& area, std::size_t item) {
        const auto aside = kGrip / 2.0;
        const bool isIn = area.left() <= x && x < area.right();
        if (area.isEmpty() || x < area.left() - aside || x > area.right() + aside ||
            (!isIn && found.drag != Drag::kCreate))
            return;
        // Short stretches keep a middle by which they are moved.
        const auto inside = std::min<double>(kGrip, area.width() / 4);
        found = { x <= area.left() + inside    ? Drag::kStart
                  : x >= area.right() - inside ? Drag::kEnd
                                               : Drag::kMove,
                  item };
    };
    const auto& cues = m_tracks[track].cues;
    const auto spans = cues.empty() ? SpansOfTrack(track) : OnSpans();
    for (std::size_t i = 0; i < cues.size(); ++i)
        look(CueArea(track, cues[i]), i);
    for (std::size_t i = 0; i < spans.size(); ++i)
        look(SpanArea(track, spans[i]), i);
    return found;
}

void Timeline::SelectTrack(std::size_t track) {
    if (track == m_track)
        return;
    m_track = track;
    m_item.reset();
    RevealRow();
    Describe();
    onSelect(track);
}

bool Timeline::Press(QPointF point) {
    const auto row = TrackAt(point.y());
    if (!row)
        return false;
    SelectTrack(*row);
    m_item.reset();
    viewport()->update();
    if (point.x() < NamesWidth())
        return false;
    const auto hit = HitTest(m_track, point);
    m_drag = hit.drag;
    m_dragStart = m_scale.IndexAt(point.x());
    m_before = m_tracks[m_track];
    m_dragged = { m_dragStart, m_dragStart };
    m_rest = Spans();
    if (hit.drag == Drag::kCreate)
        return true;
    m_item = hit.item;
    if (m_before.cues.empty()) {
        m_dragged = m_rest[hit.item];
        m_rest.erase(m_rest.begin() + static_cast<std::ptrdiff_t>(hit.item));
    }
    return true;
}

void Timeline::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    EndDrag(false);
    if (event->position().y() < RulerHeight()) {
        m_drag = Drag::kScrub;
        onScrub(m_scale.IndexAt(event->position().x()));
    } else if (Press(event->position()) && m_before.isLocked) {
        m_drag = Drag::kNone;
    }
}

void Timeline::mouseMoveEvent(QMouseEvent* event) {
    if (m_drag != Drag::kNone)
        DragTo(m_scale.IndexAt(event->position().x()));
    else
        ShowCursor(event->position());
}

void Timeline::ShowCursor(QPointF point) {
    const auto row = TrackAt(point.y());
    auto shape = Qt::ArrowCursor;
    if (row && point.x() >= NamesWidth()) {
        const auto drag = HitTest(*row, point).drag;
        shape = m_tracks[*row].isLocked                      ? Qt::ForbiddenCursor
                : drag == Drag::kStart || drag == Drag::kEnd ? Qt::SizeHorCursor
                : drag == Drag::kMove                        ? Qt::OpenHandCursor
                                                             : Qt::ArrowCursor;
    }
    viewport()->setCursor(shape);
}

void Timeline::DragTo(std::size_t index) {
    if (m_drag == Drag::kScrub) {
        if (index != m_current)
            onScrub(index);
        return;
    }
    // A click that trembles is no drag.
    if (index == m_dragStart && !m_new && m_tracks[m_track] == m_before)
        return;
    m_before.cues.empty() ? DragSpan(index) : DragCue(index);
    Reveal(index);
    viewport()->update();
}

void Timeline::DragSpan(std::size_t index) {
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
        span.first = std::min(index - std::min(index, held), m_scale.Count() - 1 - length);
        span.last = span.first + length;
    }
    const auto spans = TurnOn(m_rest, span);
    m_tracks[m_track].on = RangesOf(spans, m_scale.Numbers());
    m_item = SpanAt(spans, span.first);
}

void Timeline::DragCue(std::size_t index) {
    const auto from = m_scale.Numbers()[m_dragStart];
    const auto to = m_scale.Numbers()[index];
    if (m_drag == Drag::kCreate) {
        if (const auto room = FreeAround(m_before.cues, from, ShotSpan()))
            m_new = FrameSpan { std::max(std::min(from, to), room->first),
                                std::min(std::max(from, to), room->last) };
        return;
    }
    const auto part = m_drag == Drag::kStart ? CuePart::kStart
                      : m_drag == Drag::kEnd ? CuePart::kEnd
                                             : CuePart::kWhole;
    const auto& before = m_before.cues[*m_item];
    const auto frames = Dragged({ before.first, before.last }, part, from, to,
                                RoomOf(m_before.cues, *m_item, ShotSpan()));
    auto& cue = m_tracks[m_track].cues[*m_item];
    cue.first = frames.first;
    cue.last = frames.last;
}

void Timeline::mouseReleaseEvent(QMouseEvent* event) {
    // A click into the empty row makes nothing: only a drag does.
    if (event->button() == Qt::LeftButton)
        EndDrag(true);
}

void Timeline::EndDrag(bool keep) {
    const auto drag = std::exchange(m_drag, Drag::kNone);
    const auto made = std::exchange(m_new, std::nullopt);
    viewport()->update();
    if (drag == Drag::kNone || drag == Drag::kScrub)
        return;
    // Whoever hears of it sets the tracks anew.
    const auto after = std::exchange(m_tracks[m_track], m_before);
    if (keep && made)
        return onNewCue(*made);
    if (!keep || after == m_before)
        return;
    const auto item = m_item;
    onChange(after.cues.empty()    ? T("Change Ranges")
             : drag == Drag::kMove ? T("Move Cue")
                                   : T("Trim Cue"),
             after);
    m_item = item;
}

void Timeline::mouseDoubleClickEvent(QMouseEvent* event) {
    const auto row = TrackAt(event->position().y());
    if (event->button() != Qt::LeftButton || !row || event->position().x() < NamesWidth())
        return mousePressEvent(event);
    Press(event->position());
    m_drag = Drag::kNone;
    if (m_item && !SelectedCues().empty())
        onEdit();
}

void Timeline::contextMenuEvent(QContextMenuEvent* event) {
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    EndDrag(false);
    if (byMouse)
        Press(event->pos());
    m_drag = Drag::kNone;
    const auto index = byMouse ? m_scale.IndexAt(event->pos().x()) : m_current;
    onMenu(index, byMouse ? event->globalPos() : viewport()->mapToGlobal(BarPoint(index)));
}

// Keys

bool Timeline::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (IsOwnKey(key.key()) && !key.modifiers().testFlag(Qt::ControlModifier)) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

void Timeline::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Escape:
        if (m_drag == Drag::kNone)
            break;
        return EndDrag(false);
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        return DeleteSelected();
    case Qt::Key_Insert:
        return onInsert();
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return onEdit();
    case Qt::Key_Down:
        return SelectTrack(m_track - std::min<std::size_t>(m_track, 1));
    case Qt::Key_Up:
        return SelectTrack(std::min(m_track + 1, m_tracks.size() - 1));
    default:
        break;
    }
    event->ignore();
}

void Timeline::DeleteSelected() {
    if (m_drag != Drag::kNone)
        return;
    auto track = m_tracks[m_track];
    const auto item = std::exchange(m_item, std::nullopt);
    viewport()->update();
    if (!item)
        return;
    if (track.cues.empty()) {
        const auto spans = Spans();
        track.on = RangesOf(TurnOff(spans, spans[*item]), m_scale.Numbers());
        return onChange(T("Change Ranges"), track);
    }
    track.cues.erase(track.cues.begin() + static_cast<std::ptrdiff_t>(*item));
    // The last one leaves a track that says nothing, not one that says its single text everywhere.
    if (track.cues.empty())
        track.on = RangesOf({}, m_scale.Numbers());
    onChange(T("Delete Cue"), track);
}

// Tool tips

QString Timeline::ToolTipAt(QPoint point) const {
    const auto row = TrackAt(point.y());
    if (!row)
        return {};
    const auto& track = m_tracks[*row];
    if (point.x() < NamesWidth()) {
        auto text = ShownName(track);
        if (!track.isShown)
            text += QLatin1Char('\n') + T("Hidden");
        if (track.isLocked)
            text += QLatin1Char('\n') + T("Locked");
        return text;
    }
    const auto hit = HitTest(*row, point);
    if (track.cues.empty() || hit.drag == Drag::kCreate)
        return {};
    const auto& cue = track.cues[hit.item];
    auto text = QStringLiteral("%1 – %2 (%3)")
                    .arg(cue.first)
                    .arg(cue.last)
                    .arg(FramesText(cue.last - cue.first + 1));
    if (!cue.character.empty())
        text += QLatin1Char('\n') + QString::fromStdString(cue.character);
    return text + QLatin1Char('\n') + QString::fromStdString(cue.text);
}

bool Timeline::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(event);
    const auto& help = *static_cast<QHelpEvent*>(event);
    const auto text = ToolTipAt(help.pos());
    QToolTip::showText(
        help.globalPos(),
        text.isEmpty()
            ? text
            : QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(text.toHtmlEscaped()),
        viewport());
    return true;
}

void Timeline::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        updateGeometry();
        UpdateBars();
    }
    QAbstractScrollArea::changeEvent(event);
}

} // namespace studio
