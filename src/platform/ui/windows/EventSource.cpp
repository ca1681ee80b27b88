// SPDX-License-Identifier: BSD-3-Clause
// The one place where events of Qt's become events of class and kind: sorts the application's events,
// which window they are for and what they are there.
#include <utility>

#include <QCoreApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

#include "platform/ui/Windows.h"
#include "platform/ui/windows/Input.h"
#include "platform/ui/windows/MouseTracker.h"

namespace platform {

namespace {

bool IsKey(QEvent::Type type) {
    return type == QEvent::KeyPress || type == QEvent::KeyRelease;
}

bool IsMouse(QEvent::Type type) {
    return type == QEvent::MouseButtonPress || type == QEvent::MouseButtonRelease ||
           type == QEvent::MouseButtonDblClick || type == QEvent::MouseMove;
}

bool IsInput(QEvent::Type type) {
    return IsKey(type) || IsMouse(type) || type == QEvent::Wheel;
}

// The user wants the window closed. Qt does nothing further about it.
bool TurnClose(Window& window, QEvent& event) {
    const MadeEvent made(kEventClassWindow, kEventWindowClose);
    made.Set(kEventParamDirectObject, kTypeWindowRef, window.Ref());
    const Passage passage(window.Widget(), event, made.Get());
    SendEventToEventTarget(made.Get(), window.Target());
    // A dialog that has finished closes itself by way of this event, which nobody may ignore then.
    if (!passage.WasFed())
        event.ignore();
    return true;
}

// What happens to the window's own widget.
bool TurnWindowChange(Window& window, QEvent& event) {
    const QPointer<QWidget> alive(&window.Widget());
    switch (event.type()) {
    case QEvent::Close:
        return TurnClose(window, event);
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
        window.TellOfActivation(event.type() == QEvent::WindowActivate);
        return !alive;
    case QEvent::Hide:
        if (!event.spontaneous())
            MouseTracker::Of().Cancel(window.Ref());
        return false;
    case QEvent::Move:
    case QEvent::Resize:
        window.NoticeBounds();
        return false;
    default:
        return false;
    }
}

class EventSource : public QObject {
public:
    explicit EventSource(QObject& application) : QObject(&application) {}

    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    // An input event that a widget ignored comes again, for the widget around it. It was offered to
    // the window already, and is not the business of a window around that one.
    struct Offered {
        QEvent::Type type = QEvent::None;
        quint64 timestamp = 0;
        QPointF place; // of the mouse
        int key = 0;
        const QWidget* next = nullptr; // only compared
    };

    bool Turn(QWidget& receiver, QEvent& event);
    bool TurnInput(QWidget& receiver, QInputEvent& event);
    bool WasOffered(const QWidget& receiver, const QInputEvent& event);

    Offered m_offered;
};

} // namespace

QObject* MakeEventSource(QObject& application) {
    return new EventSource(application);
}

bool EventSource::eventFilter(QObject* receiver, QEvent* event) {
    if (!receiver->isWidgetType())
        return false;
    bool done = false;
    Guarded([&] { done = Turn(static_cast<QWidget&>(*receiver), *event); });
    return done;
}

bool EventSource::Turn(QWidget& receiver, QEvent& event) {
    const QEvent::Type type = event.type();
    if (IsInput(type))
        return TurnInput(receiver, static_cast<QInputEvent&>(event));
    switch (type) {
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        if (Window* const window = Passage::IsFeeding(event) ? nullptr : Window::Of(&receiver))
            return TurnFocus(*window, receiver, static_cast<QFocusEvent&>(event));
        return false;
    case QEvent::Close:
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
    case QEvent::Hide:
    case QEvent::Move:
    case QEvent::Resize:
        if (Window* const window = Passage::IsFeeding(event) ? nullptr : Window::At(&receiver))
            return TurnWindowChange(*window, event);
        return false;
    default:
        return false;
    }
}

// What was dealt with is accepted, or Qt would offer it to the widgets around as well.
bool EventSource::TurnInput(QWidget& receiver, QInputEvent& event) {
    if (Passage::IsFeeding(event))
        return false;
    SetCurrentEventKeyModifiers(TranslateModifiers(event.modifiers()));
    const bool offered = WasOffered(receiver, event);
    bool done = !offered && MouseTracker::Of().Takes(event);
    Window* const window = done || offered ? nullptr : Window::Of(&receiver);
    if (window && IsKey(event.type()))
        done = TurnKey(*window, receiver, static_cast<QKeyEvent&>(event));
    else if (window && event.type() == QEvent::Wheel)
        done = TurnWheel(*window, receiver, static_cast<QWheelEvent&>(event));
    else if (window)
        done = TurnMouse(*window, receiver, static_cast<QMouseEvent&>(event));
    if (done)
        event.accept();
    return done;
}

bool EventSource::WasOffered(const QWidget& receiver, const QInputEvent& event) {
    Offered now;
    now.type = event.type();
    now.timestamp = event.timestamp();
    if (IsKey(event.type()))
        now.key = static_cast<const QKeyEvent&>(event).key();
    else
        now.place = static_cast<const QSinglePointEvent&>(event).globalPosition();
    now.next = receiver.isWindow() ? nullptr : receiver.parentWidget();
    const Offered before = std::exchange(m_offered, now);
    return before.next == &receiver && before.type == now.type &&
           before.timestamp == now.timestamp && before.key == now.key && before.place == now.place;
}

// Events on their way ----------------------------------------------------------------------------

namespace {

Passage* s_innermost = nullptr; // of those on their way through chains now

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
    for (const Passage* passage = s_innermost; passage; passage = passage->m_outer)
        if (passage->m_feeding && IsSame(passage->m_event, event))
            return true;
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
