// SPDX-License-Identifier: BSD-3-Clause
// A widget whose picture its control's handlers draw, into a world of its size.
#pragma once

#include <functional>
#include <memory>

#include <QImage>
#include <QWidget>

#include "platform/Lifetime.h"
#include "platform/ui/Windows.h"

namespace platform {

class UserPane : public QWidget, public Lifetime {
public:
    explicit UserPane(QWidget* parent);

    // Called before the picture is shown, with the current port set to the world.
    std::function<void()> onDraw;
    // The button went down there; gives whether the press was dealt with to its end.
    std::function<bool(QPoint place)> onPress;
    std::function<void()> onClick; // pressed without that, and released within

    void DrawNow();

    QSize sizeHint() const override { return { 64, 64 }; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    struct WorldDisposer {
        void operator()(GWorldPtr world) const { DisposeGWorld(world); }
    };

    bool FitWorld(); // false: there can be none of this size
    void DrawWorld();
    bool TakePicture(const QRect& part); // of the world; false: there is no memory

    std::unique_ptr<GWorld, WorldDisposer> m_world;
    QSize m_worldSize;
    QImage m_picture;       // of the world, as the screen wants it; kept, as panes are drawn often
    bool m_drawing = false; // within onDraw
    bool m_pressed = false;
};

} // namespace platform
