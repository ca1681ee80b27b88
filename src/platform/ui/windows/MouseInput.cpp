// SPDX-License-Identifier: BSD-3-Clause
// Mouse events for the handlers that want them. A mouse moves often, so that nothing is made where
// there are none.
#include <QMouseEvent>
#include <QWheelEvent>

#include "platform/ui/Windows.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/windows/Input.h"

namespace platform {

namespace {

std::uint32_t KindOf(const QMouseEvent& mouse) {
    switch (mouse.type()) {
    case QEvent::MouseButtonRelease:
        return kEventMouseUp;
    case QEvent::MouseMove:
        return mouse.buttons() == Qt::NoButton ? kEventMouseMoved : kEventMouseDragged;
    default:
        return kEventMouseDown;
    }
}

bool IsWanted(const Window& window, std::uint32_t kind) {
    // One is the standard handler.
    return CountEventHandlers(window.Target(), { kEventClassMouse, kind }) > 1;
}

HIPoint ToHIPoint(QPointF point) {
    return { static_cast<float>(point.x()), static_cast<float>(point.y()) };
}

void SetParameters(const MadeEvent& event, const Window& window, QPointF global,
                   Qt::KeyboardModifiers modifiers) {
    event.Set(kEventParamDirectObject, kTypeWindowRef, window.Ref());
    event.Set(kEventParamMouseLocation, kTypeHIPoint, ToHIPoint(global));
    event.Set(kEventParamWindowMouseLocation, kTypeHIPoint,
              ToHIPoint(window.Widget().mapFromGlobal(global)));
    event.Set(kEventParamKeyModifiers, kTypeUInt32, TranslateModifiers(modifiers));
}

void SendToChain(const Window& window, QWidget& receiver, QEvent& qtEvent, const MadeEvent& event) {
    const Passage passage(receiver, qtEvent, event.Get());
    SendEventToEventTarget(event.Get(), window.Target());
}

// The control under a mouse that moves may choose a cursor.
void SendSetCursor(const QWidget& receiver, const QMouseEvent& mouse) {
    const Control* const control = Control::Of(&receiver);
    if (!control)
        return;
    const HIPoint place = ToHIPoint(control->Widget().mapFromGlobal(mouse.globalPosition()));
    SendObjectEvent(*control, kEventClassControl, kEventControlSetCursor, kTypeControlRef,
                    [&place](const MadeEvent& event) {
                        event.Set(kEventParamMouseLocation, kTypeHIPoint, place);
                    });
}

// Notches up since the last whole one: fine wheels turn by parts of a notch.
std::int32_t TakeNotches(const QWheelEvent& wheel) {
    static int rest = 0;
    const int turned = wheel.angleDelta().y();
    rest = (rest < 0) == (turned < 0) ? rest + turned : turned;
    const int notches = rest / QWheelEvent::DefaultDeltasPerStep;
    rest -= notches * QWheelEvent::DefaultDeltasPerStep;
    return notches;
}

} // namespace

bool TurnMouse(Window& window, QWidget& receiver, QMouseEvent& mouse) {
    const std::uint32_t kind = KindOf(mouse);
    const QPointer<QWidget> alive(&receiver);
    const bool wanted = IsWanted(window, kind);
    if (wanted) {
        const MadeEvent event(kEventClassMouse, kind);
        SetParameters(event, window, mouse.globalPosition(), mouse.modifiers());
        SendToChain(window, receiver, mouse, event);
    }
    if (alive && kind == kEventMouseMoved)
        SendSetCursor(receiver, mouse);
    return wanted || !alive;
}

bool TurnWheel(Window& window, QWidget& receiver, QWheelEvent& wheel) {
    if (!IsWanted(window, kEventMouseWheelMoved))
        return false;
    const std::int32_t notches = TakeNotches(wheel);
    if (notches == 0)
        return false;
    const MadeEvent event(kEventClassMouse, kEventMouseWheelMoved);
    SetParameters(event, window, wheel.globalPosition(), wheel.modifiers());
    event.Set(kEventParamMouseWheelDelta, kTypeSInt32, notches);
    SendToChain(window, receiver, wheel, event);
    return true;
}

} // namespace platform
