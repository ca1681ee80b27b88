// SPDX-License-Identifier: BSD-3-Clause
// The events that are on their way through chains now, innermost first.
#include "platform/ui/windows/Passage.h"

#include <utility>

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWheelEvent>

namespace platform {

namespace {

Passage* s_innermost = nullptr;

bool IsSame(const QMouseEvent& a, const QMouseEvent& b) {
    return a.globalPosition() == b.globalPosition() && a.button() == b.button() &&
           a.buttons() == b.buttons() && a.timestamp() == b.timestamp();
}

bool IsSame(const QWheelEvent& a, const QWheelEvent& b) {
    return a.globalPosition() == b.globalPosition() && a.angleDelta() == b.angleDelta();
}

bool IsSame(const QEvent& a, const QEvent& b) {
    if (&a == &b)
        return true;
    if (a.type() != b.type())
        return false;
    switch (a.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        return IsSame(static_cast<const QMouseEvent&>(a), static_cast<const QMouseEvent&>(b));
    case QEvent::Wheel:
        return IsSame(static_cast<const QWheelEvent&>(a), static_cast<const QWheelEvent&>(b));
    default:
        return false;
    }
}

} // namespace

Passage::Passage(QWidget& receiver, QEvent& event, EventRef made)
    : m_receiver(&receiver), m_event(event), m_made(made),
      m_outer(std::exchange(s_innermost, this)) {}

Passage::~Passage() {
    s_innermost = m_outer;
}

Passage* Passage::Of(EventRef made) {
    Passage* passage = s_innermost;
    while (passage && passage->m_made != made)
        passage = passage->m_outer;
    return passage;
}

bool Passage::IsFeeding(const QEvent& event) {
    for (Passage const* passage = s_innermost; passage; passage = passage->m_outer) {
        if (passage->m_feeding && IsSame(passage->m_event, event))
            return true;
    }
    return false;
}

void Passage::Feed() {
    if (std::exchange(m_fed, true) || !m_receiver)
        return;
    m_feeding = true;
    QCoreApplication::sendEvent(m_receiver, &m_event);
    m_feeding = false;
}

} // namespace platform
