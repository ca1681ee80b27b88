// SPDX-License-Identifier: BSD-3-Clause
// What all controls share: making and finding them, sending hits and commands, ending.
#include "platform/ui/controls/Control.h"

#include <algorithm>

#include <QHash>
#include <QPointer>
#include <QPushButton>

#include "platform/ui/QtValues.h"
#include "platform/ui/Windows.h"

namespace platform {
namespace {

QHash<const QWidget*, Control*>& Registry() {
    static QHash<const QWidget*, Control*> registry;
    return registry;
}

// The references of the controls in the widget, innermost first.
void Gather(const QWidget& widget, std::vector<ControlRef>* controls) {
    for (QObject* child : widget.children())
        if (child->isWidgetType())
            Gather(static_cast<const QWidget&>(*child), controls);
    if (const Control* control = Control::At(&widget))
        controls->push_back(control->Ref());
}

} // namespace

Control::Control(QWidget& widget, Window& owner)
    : UIObject(ObjectKind::kControl, owner.Target()), m_widget(&widget), m_owner(&owner),
      m_enabled(!widget.testAttribute(Qt::WA_ForceDisabled)) {
    Registry().insert(&widget, this);
}

Control::~Control() {
    SendDisposed();
    if (At(m_widget) == this)
        Registry().remove(m_widget);
}

// Making and finding -----------------------------------------------------------------------------

Control* Control::Create(WindowRef window, const char* className, const Rect& bounds) {
    Window* const owner = Window::Find(window);
    if (!owner)
        return nullptr;
    const QLatin1String name(className);
    QWidget* const widget = name == QLatin1String("QPushButton")
                                ? new QPushButton(&owner->Widget())
                                : MakeCustomWidget(name, &owner->Widget());
    if (!widget)
        return nullptr;
    widget->setGeometry(ToQRect(bounds));
    Control* const control = MakeControl(*widget, *owner);
    // One that lies outside of its window is pressed by the keys of the window; the focus would stop
    // where nobody sees it.
    if (!owner->Widget().rect().intersects(widget->geometry()))
        widget->setFocusPolicy(Qt::NoFocus);
    widget->show();
    return control;
}

Control* Control::At(const QWidget* widget) {
    return Registry().value(widget);
}

Control* Control::Of(const QWidget* widget) {
    while (widget) {
        if (Control* control = At(widget))
            return control;
        widget = widget->isWindow() ? nullptr : widget->parentWidget();
    }
    return nullptr;
}

Control* Control::FindByID(WindowRef window, const ControlID& id) {
    for (UIObject* const object : All(ObjectKind::kControl)) {
        auto* const control = static_cast<Control*>(object);
        if (control->id == id && control->OwnerRef() == window)
            return control;
    }
    return nullptr;
}

WindowRef Control::OwnerRef() const {
    return m_owner->Ref();
}

// Events -----------------------------------------------------------------------------------------

void Control::SendHit(ControlPartCode part) {
    const ControlRef self = Ref();
    const auto withPart = [part](const MadeEvent& event) {
        event.Set(kEventParamControlPart, kTypeControlPartCode, part);
    };
    const OSStatus status =
        SendObjectEvent(*this, kEventClassControl, kEventControlHit, kTypeControlRef, withPart);
    if (status != kEventNotHandledErr || !Find(self))
        return;
    ApplyHit(part);
    SendCommand();
}

void Control::SendCommand() {
    if (commandID == 0)
        return;
    HICommandExtended command {};
    command.attributes = kHICommandFromControl;
    command.commandID = commandID;
    command.source.control = Ref();
    const MadeEvent event(kEventClassCommand, kEventCommandProcess);
    event.Set(kEventParamDirectObject, kTypeHICommand, command);
    event.Set(kEventParamKeyModifiers, kTypeUInt32, GetCurrentEventKeyModifiers());
    SendEventToEventTarget(event.Get(), Target());
}

// Ending -----------------------------------------------------------------------------------------

void Control::SendDisposed() {
    if (m_disposedSent)
        return;
    m_disposedSent = true;
    SendObjectEvent(*this, kEventClassControl, kEventControlDisposed, kTypeControlRef);
}

void EndControls(QWidget& root) {
    std::vector<ControlRef> controls;
    Gather(root, &controls);
    for (const ControlRef reference : controls) {
        // Handlers of the disposed event may end further ones.
        Control* control = Control::Find(reference);
        if (!control || control->m_disposedSent)
            continue;
        control->SendDisposed();
        delete Control::Find(reference);
    }
}

void Control::Dispose() {
    if (m_disposedSent)
        return;
    const QPointer<QWidget> widget(m_widget);
    EndControls(*m_widget); // this object is gone from here on
    if (!widget)
        return;
    widget->hide();
    if (widget)
        widget->deleteLater(); // one of its own event functions may be running
}

} // namespace platform
