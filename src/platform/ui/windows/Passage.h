// SPDX-License-Identifier: BSD-3-Clause
// An event of Qt's while the handlers of a chain have the event that was made of it. The chain's end
// gives it to the widget, from inside, so that a handler sees on return what the widget did.
#pragma once

#include <QPointer>
#include <QWidget>

#include "platform/Events.h"

class QEvent;

namespace platform {

class Passage {
public:
    Passage(QWidget& receiver, QEvent& event, EventRef made);
    Passage(const Passage&) = delete;
    Passage& operator=(const Passage&) = delete;
    ~Passage();

    // Null for an event that was not made of one of Qt's.
    static Passage* Of(EventRef made);
    // Whether a widget is just being given the event, or the copy of it that Qt makes for the widgets
    // around: it is not turned again.
    static bool IsFeeding(const QEvent& event);

    QWidget* Receiver() const { return m_receiver; } // null when gone
    QEvent& Event() const { return m_event; }
    // Gives it to the widget, and to those around it while they ignore it; once.
    void Feed();
    bool WasFed() const { return m_fed; }

private:
    QPointer<QWidget> m_receiver;
    QEvent& m_event;
    EventRef m_made;
    Passage* m_outer;
    bool m_fed = false;
    bool m_feeding = false;
};

} // namespace platform
