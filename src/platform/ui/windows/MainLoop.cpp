// SPDX-License-Identifier: BSD-3-Clause
// Delivers the main queue and fires the timers from Qt's loop. A handler may run a loop of its own at
// any time, so whatever comes next is arranged before a handler is called, not after.
#include "platform/ui/windows/MainLoop.h"

#include <algorithm>
#include <cmath>

#include <QCoreApplication>
#include <QEvent>

#include "platform/Events.h"
#include "platform/ui/windows/Guarded.h"

namespace platform {

namespace {

// The queue got its first event. Posted by any thread, and never taken back.
const auto kWakeUp = static_cast<QEvent::Type>(QEvent::registerEventType());
// There may be more in the queue.
const auto kContinue = static_cast<QEvent::Type>(QEvent::registerEventType());

} // namespace

MainLoop::MainLoop(QObject& application) : QObject(&application) {
    SetMainQueueWakeUp([this] { QCoreApplication::postEvent(this, new QEvent(kWakeUp)); });
    SetTimerWakeUp([this] { ArmTimer(); });
    // What was posted and installed before there was a loop.
    QCoreApplication::postEvent(this, new QEvent(kWakeUp));
    ArmTimer();
}

MainLoop::~MainLoop() {
    SetMainQueueWakeUp({});
    SetTimerWakeUp({});
}

bool MainLoop::event(QEvent* event) {
    if (event->type() != kWakeUp && event->type() != kContinue)
        return QObject::event(event);
    if (event->type() == kContinue)
        m_continues = false;
    DeliverNext();
    return true;
}

void MainLoop::DeliverNext() {
    if (!m_continues) {
        m_continues = true;
        QCoreApplication::postEvent(this, new QEvent(kContinue));
    }
    bool delivered = true;
    Guarded([&delivered] { delivered = DeliverNextEvent(); });
    if (delivered)
        return;
    QCoreApplication::removePostedEvents(this, kContinue);
    m_continues = false;
}

void MainLoop::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_timer.timerId())
        return QObject::timerEvent(event);
    // A loop inside a timer's handler comes here again, and fires what else is due.
    m_timer.start(0, this);
    Guarded([] { FireTimers(GetCurrentEventTime()); });
    ArmTimer();
}

void MainLoop::ArmTimer() {
    EventTime const next = NextTimerTime();
    if (std::isinf(next))
        return m_timer.stop();
    constexpr double kLongest = 86'400'000; // further away: looked at once a day
    double const milliseconds = std::ceil((next - GetCurrentEventTime()) * 1000);
    m_timer.start(static_cast<int>(std::clamp(milliseconds, 0.0, kLongest)), Qt::PreciseTimer,
                  this);
}

} // namespace platform
