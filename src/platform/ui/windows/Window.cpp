// SPDX-License-Identifier: BSD-3-Clause
// One window: found from its widgets, and its end, which any of its own handlers may bring about.
#include "platform/ui/windows/Window.h"

#include <QHash>

#include "platform/ui/WindowWidget.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/windows/WindowGroups.h"

namespace platform {

namespace {

QHash<const QWidget*, Window*>& Windows() {
    static auto& windows = *new QHash<const QWidget*, Window*>;
    return windows;
}

} // namespace

Window::Window(QWidget& widget)
    : QObject(&widget), UIObject(ObjectKind::kWindow, GetApplicationEventTarget()),
      m_widget(&widget) {
    Windows().insert(&widget, this);
    // The plug-in's windows do not decide when the host's process ends.
    widget.setAttribute(Qt::WA_QuitOnClose, false);
    // A widget says so before it deletes its children, so the controls are whole at that time.
    connect(&widget, &QObject::destroyed, this, [this] { End(); });
}

Window::~Window() {
    LeaveWindowGroup(*this);
    if (modalLoop)
        modalLoop->quit();
    Windows().remove(m_widget);
}

Window* Window::At(const QWidget* widget) {
    return Windows().value(widget);
}

Window* Window::Of(const QWidget* widget) {
    while (widget) {
        if (Window* const window = At(widget))
            return window;
        // A popup or dialog belongs to itself, also when it was opened from one of our windows.
        widget = widget->isWindow() ? nullptr : widget->parentWidget();
    }
    return nullptr;
}

OSStatus Window::Send(std::uint32_t kind) const {
    return SendObjectEvent(*this, kEventClassWindow, kind, kTypeWindowRef, [](EventRef) {});
}

void Window::End() {
    if (m_ending)
        return;
    m_ending = true;
    QPointer<Window> const alive(this);
    Send(kEventWindowClosed);
    if (!alive)
        return; // a handler deleted the widget, and this with it
    ReleaseWindowsOver(*this);
    EndControls(*m_widget);
    if (alive)
        delete this;
}

QWidget* GetWindowWidget(WindowRef window) {
    Window const* const found = Window::Find(window);
    return found ? &found->Widget() : nullptr;
}

WindowRef GetWidgetWindow(const QWidget* widget) {
    Window const* const found = Window::Of(widget);
    return found ? found->Ref() : nullptr;
}

} // namespace platform
