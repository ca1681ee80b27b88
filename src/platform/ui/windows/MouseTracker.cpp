// SPDX-License-Identifier: BSD-3-Clause
// Tracking the mouse: a loop that ends with the next thing that the mouse does. Several may have come
// in by the time it has ended; they are kept for the next call.
#include "platform/ui/windows/MouseTracker.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>

#include "platform/ui/QtValues.h"
#include "platform/ui/Windows.h"
#include "platform/ui/windows/Input.h"

namespace platform {

MouseTracker& MouseTracker::Of() {
    static auto& tracker = *new MouseTracker;
    return tracker;
}

bool MouseTracker::Takes(const QInputEvent& event) {
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        return TakesMouse(static_cast<const QMouseEvent&>(event));
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        if (m_loop && IsModifierKey(static_cast<const QKeyEvent&>(event).key()))
            Report(MouseTracking::kKeyModifiersChanged, QCursor::pos());
        return false;
    default:
        return false;
    }
}

bool MouseTracker::TakesMouse(const QMouseEvent& mouse) {
    const bool moves = mouse.type() == QEvent::MouseMove;
    const bool presses = !moves && mouse.type() != QEvent::MouseButtonRelease;
    m_buttons = mouse.buttons();
    if (presses)
        m_releaseIsNews = true; // the one that will come
    if (!m_loop)
        return false;
    const QPoint where = mouse.globalPosition().toPoint();
    if (moves)
        Report(m_buttons == Qt::NoButton ? MouseTracking::kMouseMoved
                                         : MouseTracking::kMouseDragged,
               where);
    else if (presses)
        Report(MouseTracking::kMouseDown, where);
    else if (m_buttons == Qt::NoButton)
        Report(MouseTracking::kMouseUp, where);
    return true;
}

void MouseTracker::Report(MouseTracking what, QPoint where) {
    // Of several moves in a row the last one counts.
    const bool moves = what == MouseTracking::kMouseDragged || what == MouseTracking::kMouseMoved;
    if (moves && !m_steps.empty() && m_steps.back().what == what)
        m_steps.back().where = where;
    else
        m_steps.push_back({ what, where });
    if (m_loop)
        m_loop->quit();
}

MouseTracker::Step MouseTracker::Wait(WindowRef window, EventTime timeout) {
    if (m_steps.empty() && m_buttons == Qt::NoButton)
        m_steps.push_back({ m_releaseIsNews ? MouseTracking::kMouseUp // while nobody waited
                                            : MouseTracking::kUserCancelled,
                            QCursor::pos() });
    if (m_steps.empty())
        RunLoop(window, timeout);
    const Step step = m_steps.front();
    m_steps.pop_front();
    if (step.what == MouseTracking::kMouseUp)
        m_releaseIsNews = false;
    return step;
}

void MouseTracker::RunLoop(WindowRef window, EventTime timeout) {
    QEventLoop loop;
    constexpr double kLongest = 86'400; // a day
    if (timeout >= 0)
        QTimer::singleShot(static_cast<int>(std::ceil(std::min(timeout, kLongest) * 1000)),
                           Qt::PreciseTimer, &loop,
                           [this] { Report(MouseTracking::kTimedOut, QCursor::pos()); });
    QEventLoop* const outerLoop = std::exchange(m_loop, &loop);
    const WindowRef outerWindow = std::exchange(m_window, window);
    loop.exec();
    m_loop = outerLoop;
    m_window = outerWindow;
    if (m_steps.empty()) // the whole application is being quit
        m_steps.push_back({ MouseTracking::kUserCancelled, QCursor::pos() });
}

void MouseTracker::Cancel(WindowRef window) {
    if (!m_loop || window != m_window)
        return;
    Report(MouseTracking::kUserCancelled, QCursor::pos());
    // The release will come to somebody else; who goes on waiting is told that it is over.
    m_buttons = Qt::NoButton;
}

MouseTracking Window::TrackMouse(EventTime timeout, Point* where) {
    const MouseTracker::Step step = MouseTracker::Of().Wait(Ref(), timeout);
    *where = ToPoint(step.where);
    return step.what;
}

Point GetGlobalMouse() {
    return qGuiApp ? ToPoint(QCursor::pos()) : Point { 0, 0 };
}

bool Button() {
    return MouseTracker::Of().IsMainButtonDown();
}

} // namespace platform
