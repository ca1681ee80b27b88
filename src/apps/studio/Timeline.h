// SPDX-License-Identifier: BSD-3-Clause
// The frames from left to right: which one is shown, and in a row for each track on which of them it
// is on or, where it has cues, what they say. All of it is changed by hand here.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include <QAbstractScrollArea>

#include "apps/studio/CueEdits.h"
#include "apps/studio/OnSpans.h"
#include "apps/studio/TimelineScale.h"
#include "host/document/Track.h"

namespace studio {

class Timeline : public QAbstractScrollArea {
public:
    explicit Timeline(QWidget* parent = nullptr);

    // numbers: ascending, not empty.
    void SetFrames(std::vector<std::int64_t> numbers);
    void SetCurrent(std::size_t index);
    // tracks: not empty. What is being dragged is dropped where they differ.
    void SetTracks(std::vector<host::Track> tracks, std::size_t selected);
    // Of the selected track, with what is being dragged.
    OnSpans Spans() const;
    const Cues& SelectedCues() const { return m_tracks[m_track].cues; }
    // The cue that was clicked, else the one on the current frame.
    std::optional<std::size_t> TheCue() const;
    void SelectCue(std::optional<std::size_t> cue);

    void FitFrames();
    void ZoomBy(double factor); // around the current frame
    // The clicked cue, or stretch of frames, of the selected track.
    void DeleteSelected();

    // By the user.
    std::function<void(std::size_t index)> onScrub = [](std::size_t) {};
    std::function<void(std::size_t track)> onSelect = [](std::size_t) {};
    // The selected track, and what the step is called.
    std::function<void(const QString& step, const host::Track& track)> onChange = [](auto&, auto&) {
    };
    std::function<void(FrameSpan frames)> onNewCue = [](FrameSpan) {
    };                                      // in the selected track, where there is room
    std::function<void()> onInsert = [] {}; // a cue at the current frame
    std::function<void()> onEdit = [] {};   // the words of TheCue()
    std::function<void(std::size_t index, QPoint global)> onMenu = [](std::size_t, QPoint) {
    }; // of the selected track

    // The middle of a frame in the row of a track, and in the selected one's; of the viewport.
    QPoint RowPoint(std::size_t track, std::size_t index) const;
    QPoint BarPoint(std::size_t index) const { return RowPoint(m_track, index); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    enum class Drag { kNone, kScrub, kCreate, kStart, kEnd, kMove };
    struct Hit {
        Drag drag = Drag::kNone;
        std::size_t item = 0; // of kStart, kEnd and kMove: a cue or a stretch of frames
    };

    int RulerHeight() const { return fontMetrics().height() + 12; }
    int RowHeight() const { return std::max(fontMetrics().height() + 9, 25); }
    int NamesWidth() const { return fontMetrics().averageCharWidth() * 16; }
    int HeightOf(std::size_t rows) const;
    // The other way round too: the track that is drawn last is at the top, as in the list of tracks.
    std::size_t RowOf(std::size_t track) const { return m_tracks.size() - 1 - track; }
    QRect RowArea(std::size_t track) const; // as wide as the viewport
    // The part of the rows in which frames stand.
    QRect FramesArea() const;
    std::optional<std::size_t> TrackAt(double y) const;
    // Where a stretch of frames, or a cue, is drawn; empty when the shot has none of its frames.
    QRectF SpanArea(std::size_t track, const OnSpan& span) const;
    QRectF CueArea(std::size_t track, const host::Cue& cue) const;
    Hit HitTest(std::size_t track, QPointF point) const;
    FrameSpan ShotSpan() const;
    OnSpans SpansOfTrack(std::size_t track) const;
    QString ToolTipAt(QPoint point) const;

    void UpdateBars();
    void ZoomAround(double x, double factor);
    void Reveal(std::size_t index);
    void RevealRow();                    // of the selected track
    void SelectTrack(std::size_t track); // by the user
    void DragTo(std::size_t index);
    void DragSpan(std::size_t index);
    void DragCue(std::size_t index);
    void EndDrag(bool keep);
    bool Press(QPointF point); // false: on nothing that can be dragged
    void ShowCursor(QPointF point);
    void Describe();

    // TimelinePaint.cpp
    void PaintRuler(QPainter& painter) const;
    void PaintRow(QPainter& painter, std::size_t track) const;
    void PaintName(QPainter& painter, std::size_t track) const;
    void PaintSpans(QPainter& painter, std::size_t track) const;
    void PaintCues(QPainter& painter, std::size_t track) const;
    void PaintBlock(QPainter& painter, const QRectF& area, const QString& label,
                    bool selected) const;
    void PaintCurrent(QPainter& painter) const;

    TimelineScale m_scale;
    std::size_t m_current = 0;
    std::vector<host::Track> m_tracks { 1 };
    std::size_t m_track = 0;           // the selected one
    std::optional<std::size_t> m_item; // of its cues, or stretches of frames, the clicked one

    Drag m_drag = Drag::kNone;
    std::size_t m_dragStart = 0;    // the frame under the mouse when it began
    host::Track m_before;           // the track then
    OnSpan m_dragged {};            // the stretch then
    OnSpans m_rest;                 // the other ones
    std::optional<FrameSpan> m_new; // the cue that is being made
};

// The words with who says them before, in one line.
QString LabelOf(const host::Cue& cue);

} // namespace studio
