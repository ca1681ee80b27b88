// SPDX-License-Identifier: BSD-3-Clause
// Two small arrows, one over the other, that step by mouse, wheel and keys for as long as they are
// held.
#pragma once

#include <cstdint>
#include <functional>

#include <QBasicTimer>
#include <QWidget>

#include "platform/Lifetime.h"

namespace platform {

class Stepper : public QWidget, public Lifetime {
public:
    enum class Arrow : std::uint8_t { kNone, kUp, kDown };

    explicit Stepper(QWidget* parent);

    // Called for each step; may end the stepper, or run a loop of its own.
    std::function<void(Arrow)> onStep;

    std::int32_t Value() const { return m_value; }
    std::int32_t Minimum() const { return m_minimum; }
    std::int32_t Maximum() const { return m_maximum; }
    // A value outside is moved to the nearer bound; a bound that passes the other one takes it along.
    void SetValue(std::int32_t value);
    void SetMinimum(std::int32_t minimum);
    void SetMaximum(std::int32_t maximum);
    // Steps once towards the value, if it is not there.
    void StepTowards(std::int32_t value);
    void SetRepeatInterval(double seconds);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool event(QEvent* event) override;

private:
    QRect RectOf(Arrow arrow) const;
    Arrow ArrowAt(QPoint place) const;
    void DrawArrow(QPainter& painter, Arrow arrow) const;
    void Step(Arrow arrow);
    void Release();

    std::int32_t m_value = 0, m_minimum = 0, m_maximum = 100;
    double m_repeatInterval;
    QBasicTimer m_timer;         // runs while an arrow is held
    Arrow m_held = Arrow::kNone; // pressed, and not released yet
    bool m_over = false;         // the mouse is over the held arrow
    Arrow m_hovered = Arrow::kNone;
    bool m_stepping = false; // onStep has not returned
    int m_wheelAngle = 0;    // turned, and not stepped yet
};

} // namespace platform
