// SPDX-License-Identifier: BSD-3-Clause
// The frames from left to right: which one is shown, and on which of them the text is on. Both are
// changed by hand here.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include <QWidget>

#include "apps/studio/OnSpans.h"

namespace studio {

class Timeline : public QWidget {
public:
    explicit Timeline(QWidget* parent = nullptr);

    // numbers: ascending, not empty.
    void SetFrames(std::vector<std::int64_t> numbers);
    void SetCurrent(std::size_t index);
    void SetSpans(OnSpans spans);
    const OnSpans& Spans() const { return m_spans; }

    // By the user.
    std::function<void(std::size_t index)> onScrub = [](std::size_t) {};
    std::function<void(const OnSpans& spans)> onSpansChanged = [](const OnSpans&) {};
    std::function<void(std::size_t index, QPoint global)> onMenu = [](std::size_t, QPoint) {};

    // The middle of a frame in the bar of ranges.
    QPoint BarPoint(std::size_t index) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    enum class Drag { kNone, kScrub, kCreate, kStart, kEnd, kMove };
    struct Hit {
        Drag drag = Drag::kNone;
        std::size_t span = 0; // of kStart, kEnd and kMove
    };

    QRect RulerArea() const;
    QRect BarArea() const;
    double EdgeAt(std::size_t index) const; // left edge of the frame
    double MiddleOf(std::size_t index) const { return (EdgeAt(index) + EdgeAt(index + 1)) / 2; }
    std::size_t IndexAt(double x) const;
    QRectF SpanArea(const OnSpan& span) const;
    Hit HitTest(QPointF point) const;
    void DragTo(std::size_t index);
    void EndDrag(bool keep);
    void ChangeSpans(OnSpans spans); // by the user
    void Describe();

    void PaintRuler(QPainter& painter) const;
    void PaintSpans(QPainter& painter) const;
    void PaintCurrent(QPainter& painter) const;

    std::vector<std::int64_t> m_numbers { 1 };
    std::size_t m_current = 0;
    OnSpans m_spans;
    std::optional<std::size_t> m_selected; // the stretch that Delete turns off

    Drag m_drag = Drag::kNone;
    OnSpan m_dragged {};           // the stretch as it was when it was taken
    std::size_t m_dragStart = 0;   // the frame under the mouse then
    OnSpans m_spansBefore, m_rest; // all of them then, and those that are not dragged
};

} // namespace studio
