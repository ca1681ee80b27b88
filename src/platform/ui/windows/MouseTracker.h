// SPDX-License-Identifier: BSD-3-Clause
// Which buttons of the mouse are down, and what the mouse did while somebody waits for it.
#pragma once

#include <deque>

#include <QEventLoop>
#include <QPoint>

#include "platform/ui/Windows.h"

class QInputEvent;
class QMouseEvent;

namespace platform {

class MouseTracker {
public:
    static MouseTracker& Of();

    struct Step {
        MouseTracking what;
        QPoint where; // global
    };
    // Gives whether the event is for whoever waits, and for nobody else.
    bool Takes(const QInputEvent& event);
    Step Wait(WindowRef window, EventTime timeout);
    void Cancel(WindowRef window); // it is gone or hidden
    bool IsMainButtonDown() const { return m_buttons.testFlag(Qt::LeftButton); }

private:
    bool TakesMouse(const QMouseEvent& mouse);
    void Report(MouseTracking what, QPoint where);
    void RunLoop(WindowRef window, EventTime timeout);

    Qt::MouseButtons m_buttons;
    bool m_releaseIsNews = false; // nobody who waits heard of it yet
    std::deque<Step> m_steps;     // what happened and was not taken yet
    QEventLoop* m_loop = nullptr; // of whoever waits
    WindowRef m_window = nullptr; // for which it does
};

} // namespace platform
