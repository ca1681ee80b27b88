// SPDX-License-Identifier: BSD-3-Clause
// Sorts the application's events: which window they are for, and what they are there.
#include "platform/ui/windows/EventSource.h"

#include <utility>

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

#include "platform/ui/windows/FocusChange.h"
#include "platform/ui/windows/Guarded.h"
#include "platform/ui/windows/KeyInput.h"
#include "platform/ui/windows/Keys.h"
#include "platform/ui/windows/MadeEvent.h"
#include "platform/ui/windows/MouseInput.h"
#include "platform/ui/windows/MouseTracker.h"
#include "platform/ui/windows/Passage.h"
#include "platform/ui/windows/Window.h"

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
    MadeEvent made(kEventClassWindow, kEventWindowClose);
    made.Set(kEventParamDirectObject, kTypeWindowRef, window.Ref());
    Passage const passage(window.Widget(), event, made.Get());
    SendEventToEventTarget(made.Get(), window.Target());
    // A dialog that has finished closes itself by way of this event, which nobody may ignore then.
    if (!passage.WasFed())
        event.ignore();
    return true;
}

void TellOfActivation(Window& window, bool active) {
    WindowRef const reference = window.Ref();
    if (active)
        window.NoteActivation();
    window.Send(active ? kEventWindowActivated : kEventWindowFocusRelinquish);
    if (Window const* const found = Window::Find(reference))
        found->Send(active ? kEventWindowFocusAcquired : kEventWindowDeactivated);
}

// What happens to the window's own widget.
bool TurnWindowChange(Window& window, QEvent& event) {
    QPointer<QWidget> const alive(&window.Widget());
    switch (event.type()) {
    case QEvent::Close:
        return TurnClose(window, event);
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
        if (!window.isQuiet)
            TellOfActivation(window, event.type() == QEvent::WindowActivate);
        return !alive;
    case QEvent::Show:
    case QEvent::Hide:
        if (!event.spontaneous())
            window.Notice(event.type() == QEvent::Show ? kEventWindowShown : kEventWindowHidden);
        return false;
    case QEvent::Move:
    case QEvent::Resize:
        window.Notice(kEventWindowBoundsChanged);
        return false;
    default:
        return false;
    }
}

} // namespace

bool EventSource::eventFilter(QObject* receiver, QEvent* event) {
    if (!receiver->isWidgetType())
        return false;
    bool done = false;
    Guarded([&] { done = Turn(static_cast<QWidget&>(*receiver), *event); });
    return done;
}

bool EventSource::Turn(QWidget& receiver, QEvent& event) {
    QEvent::Type const type = event.type();
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
    case QEvent::Show:
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
    bool const offered = WasOffered(receiver, event);
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
    Offered const before = std::exchange(m_offered, now);
    return before.next == &receiver && before.type == now.type &&
           before.timestamp == now.timestamp && before.key == now.key && before.place == now.place;
}

} // namespace platform
