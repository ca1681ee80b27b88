// SPDX-License-Identifier: BSD-3-Clause
// Shows one frame: fitted or at a scale, panned by dragging, zoomed by the wheel, with a checkerboard
// where it is transparent.
#pragma once

#include <functional>

#include <QImage>
#include <QPointF>
#include <QWidget>

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

    std::function<void()> onScaleChanged = [] {};

    QSize sizeHint() const override { return { 960, 540 }; }
    QSize minimumSizeHint() const override { return { 240, 135 }; }

protected:
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

    QImage m_picture;
    QString m_insteadOfIt;
    QImage m_shrunk; // the picture at a size below its own, kept until one of both changes
    bool m_fits = true;
    double m_scale = 1;
    QPointF m_center { 0.5,
                       0.5 }; // what stands in the middle of the widget, in shares of the picture
    QPointF m_grip;           // where the mouse was last while it pans
};

} // namespace studio
