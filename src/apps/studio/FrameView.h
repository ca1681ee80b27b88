// SPDX-License-Identifier: BSD-3-Clause
// Shows one frame: fitted or at a scale, panned by dragging, zoomed by the wheel, with a checkerboard
// where it is transparent. Its texts are taken by a click and dragged; whose text it is has the arrow keys
// then. What helps to place them (outline, areas, lines of rest) is drawn over the frame, here alone.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include <QImage>
#include <QPointF>
#include <QWidget>

#include "apps/studio/TextGrip.h"

namespace studio {

class FrameView : public QWidget {
public:
    explicit FrameView(QWidget* parent = nullptr);

    // A null picture shows the text in its place.
    void SetPicture(const QImage& picture, const QString& insteadOfIt);
    const QImage& Picture() const { return m_picture; }

    // Whole frame, whatever the size of the window.
    void Fit();
    // Screen pixels for each frame pixel: 1 shows the frame's pixels as they are. The point (of the
    // widget) stays where it is.
    void SetScale(double scale, QPointF around);
    void SetScale(double scale) { SetScale(scale, QRectF(rect()).center()); }
    double Scale() const;
    // To the next of the usual scales: 1 makes it larger, -1 smaller.
    void ZoomBy(int step, QPointF around);
    void ZoomBy(int step) { ZoomBy(step, QRectF(rect()).center()); }

    // The texts in the picture, the last over the others.
    void SetTexts(std::vector<TextGrip::Text> texts);
    // That track's text is taken, as by a click.
    void Take(std::optional<std::size_t> track);
    // What was being dragged is dropped where it was.
    void EndDrag();
    // Action and title areas, and the middle.
    void SetShowsAreas(bool shows);

    std::function<void()> onScaleChanged = [] {};
    // By the user: nothing when it was beside all texts.
    std::function<void(std::optional<std::size_t> track)> onTaken = [](auto) {};
    // The taken text, from where it was: on its way, dropped (0, 0 where it was), by keys.
    std::function<void(QPoint by)> onDragged = [](QPoint) {};
    std::function<void(QPoint by)> onDropped = [](QPoint) {};
    std::function<void(QPoint by)> onNudged = [](QPoint) {};
    std::function<void()> onOpened = [] {}; // it was clicked twice

    QSize sizeHint() const override { return { 960, 540 }; }
    QSize minimumSizeHint() const override { return { 240, 135 }; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    double FittingScale() const;
    QRectF Place() const; // of the picture, in device pixels of the widget
    void Pan(QPointF by);
    void KeepInSight();
    void ScaleIsOther();
    QPointF ToFrame(QPointF point) const;      // of the widget
    QRectF OnScreen(const QRectF& rect) const; // of the frame, in device pixels
    TextGrip::Way WayOf(Qt::KeyboardModifiers modifiers) const;
    bool IsNudge(const QKeyEvent& event) const;
    void ShowCursor(QPointF point);
    void PaintHelp(QPainter& painter) const;

    QImage m_picture;
    QString m_insteadOfIt;
    QImage m_shrunk; // the picture at a size below its own, kept until one of both changes
    bool m_fits = true;
    double m_scale = 1;
    QPointF m_center { 0.5,
                       0.5 }; // what stands in the middle of the widget, in shares of the picture
    QPointF m_hand;           // where the mouse was last while it pans
    TextGrip m_texts;
    bool m_showsAreas = false;
};

} // namespace studio
