// SPDX-License-Identifier: BSD-3-Clause
// Delivers the main queue and fires the timers from Qt's loop, whichever of its loops is running.
#pragma once

#include <QBasicTimer>
#include <QObject>

namespace platform {

// One for each application, which it ends with.
class MainLoop : public QObject {
public:
    explicit MainLoop(QObject& application);
    ~MainLoop() override;

protected:
    bool event(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void DeliverNext();
    void ArmTimer();

    QBasicTimer m_timer;
    bool m_continues = false; // a step to deliver the next event is posted
};

} // namespace platform
