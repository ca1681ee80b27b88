// SPDX-License-Identifier: BSD-3-Clause
// What all controls share: finding them from widgets and ids, sending hits and commands, ending.
#include "platform/ui/controls/Control.h"

#include <memory>

#include <QHash>
#include <QPointer>

#include "platform/ui/QtStrings.h"
#include "platform/ui/windows/Window.h"

namespace platform {
namespace {

QHash<const QWidget*, Control*>& Registry() {
    static QHash<const QWidget*, Control*> registry;
    return registry;
}

struct EventReleaser {
    void operator()(EventRef event) const { ReleaseEvent(event); }
};

// The references of the controls in the widget, innermost first.
void Gather(const QWidget& widget, std::vector<ControlRef>* controls) {
    for (QObject* child : widget.children()) {
        if (child->isWidgetType())
            Gather(static_cast<const QWidget&>(*child), controls);
    }
    if (const Control* control = Control::At(&widget))
        controls->push_back(control->Ref());
}

// The controls nearest below the widget, in the order of its children.
void GatherSubs(const QWidget& widget, std::vector<Control*>* subs) {
    for (QObject* child : widget.children()) {
        if (!child->isWidgetType())
            continue;
        const auto& childWidget = static_cast<const QWidget&>(*child);
        if (Control* control = Control::At(&childWidget))
            subs->push_back(control);
        else
            GatherSubs(childWidget, subs);
    }
}

} // namespace

Control::Control(QWidget& widget, Window& owner)
    : QObject(&widget), UIObject(ObjectKind::kControl, owner.Target()),
      enabled(!widget.testAttribute(Qt::WA_ForceDisabled)), m_widget(&widget), m_owner(&owner) {
    Registry().insert(&widget, this);
}

Control::~Control() {
    SendDisposed();
    if (At(m_widget) == this)
        Registry().remove(m_widget);
}

// Finding ---------------------------------------------------------------------------------------

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

Control* Control::FindByID(const Window& owner, const ControlID& id) {
    Control* first = nullptr;
    for (Control* control : std::as_const(Registry())) {
        // References count up, so the lowest one is the oldest.
        if (control->hasID && control->id == id && &control->Owner() == &owner &&
            (!first || control->As<std::uintptr_t>() < first->As<std::uintptr_t>()))
            first = control;
    }
    return first;
}

// Embedding and drawing -------------------------------------------------------------------------

void Control::Embed(Control& sub) {
    QWidget& widget = sub.Widget();
    const bool shown = widget.isVisibleTo(widget.parentWidget());
    const QPoint place = widget.mapToGlobal(QPoint());
    widget.setParent(m_widget);
    widget.move(m_widget->mapFromGlobal(place));
    widget.setVisible(shown);
}

Control* Control::Super() const {
    return m_widget->isWindow() ? nullptr : Of(m_widget->parentWidget());
}

std::vector<Control*> Control::Subs() const {
    std::vector<Control*> subs;
    GatherSubs(*m_widget, &subs);
    return subs;
}

void Control::Draw() {
    m_widget->repaint();
}

// Events ----------------------------------------------------------------------------------------

void Control::SendHit(ControlPartCode part) {
    const QPointer<Control> alive(this);
    const auto withPart = [part](EventRef event) {
        SetEventParameter(event, kEventParamControlPart, kTypeControlPartCode, sizeof part, &part);
    };
    const OSStatus status =
        SendObjectEvent(*this, kEventClassControl, kEventControlHit, kTypeControlRef, withPart);
    if (status != kEventNotHandledErr || !alive)
        return;
    ApplyHit(part);
    SendCommand();
}

void Control::SendCommand() {
    if (commandID == 0)
        return;
    EventRef made = nullptr;
    if (CreateEvent(kEventClassCommand, kEventCommandProcess, GetCurrentEventTime(), &made))
        return;
    const std::unique_ptr<Event, EventReleaser> event(made);
    HICommandExtended command {};
    command.attributes = kHICommandFromControl;
    command.commandID = commandID;
    command.source.control = Ref();
    const std::uint32_t modifiers = GetCurrentEventKeyModifiers();
    SetEventParameter(made, kEventParamDirectObject, kTypeHICommand, sizeof command, &command);
    SetEventParameter(made, kEventParamKeyModifiers, kTypeUInt32, sizeof modifiers, &modifiers);
    SendEventToEventTarget(made, Target());
}

// Ending ----------------------------------------------------------------------------------------

void Control::SendDisposed() {
    if (m_disposedSent)
        return;
    m_disposedSent = true;
    SendObjectEvent(*this, kEventClassControl, kEventControlDisposed, kTypeControlRef,
                    [](EventRef) {});
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

// Data ------------------------------------------------------------------------------------------

OSStatus Control::SetData(OSType /*tag*/, std::span<const std::byte> /*data*/) {
    return kErrDataNotSupported;
}

OSStatus Control::GetData(OSType /*tag*/, std::span<std::byte> /*data*/,
                          std::uint32_t* /*actualSize*/) {
    return kErrDataNotSupported;
}

OSStatus ReadText(std::span<const std::byte> data, QString* text) {
    CFStringRef string = nullptr;
    if (const OSStatus status = ReadData(data, &string))
        return status;
    if (!string)
        return kParamErr;
    *text = WithLineFeeds(QStringFrom(string));
    return kNoErr;
}

OSStatus WriteText(const QString& text, std::span<std::byte> data, std::uint32_t* actualSize) {
    // A string is only made for a caller who has room to take it over.
    CFStringRef string = data.size() < sizeof string
                             ? nullptr
                             : CFStringCreateWithQString(WithCarriageReturns(text));
    return WriteData(string, data, actualSize);
}

} // namespace platform
