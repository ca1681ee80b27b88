// SPDX-License-Identifier: BSD-3-Clause
// One window: found from its widgets, and its end, which any of its own handlers may bring about.
#include "platform/ui/windows/Window.h"

#include <algorithm>
#include <utility>

#include <QAbstractButton>
#include <QHash>

#include "platform/ui/WindowWidget.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/windows/Guarded.h"
#include "platform/ui/windows/MouseTracker.h"
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
    MouseTracker::Of().Cancel(Ref());
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
    Guarded([this] { Send(kEventWindowClosed); });
    if (!alive)
        return; // a handler deleted the widget, and this with it
    ReleaseWindowsOver(*this);
    EndControls(*m_widget);
    if (alive)
        delete this;
}

// Buttons and focus -----------------------------------------------------------------------------

Control* Window::DefaultButton() const {
    return Control::Find(defaultButton);
}

Control* Window::CancelButton() const {
    return Control::Find(cancelButton);
}

bool Window::PressButton(const Control* control) {
    auto* const button = control ? qobject_cast<QAbstractButton*>(&control->Widget()) : nullptr;
    if (!button || !button->isEnabled())
        return false;
    button->click();
    return true;
}

Control* Window::FocusControl() const {
    QWidget const* const widget = m_widget->window()->focusWidget();
    return widget && Of(widget) == this ? Control::Of(widget) : nullptr;
}

// Notices ---------------------------------------------------------------------------------------

void Window::Notice(std::uint32_t kind) {
    if (kind == kEventWindowHidden)
        MouseTracker::Of().Cancel(Ref());
    if (isQuiet || CountEventHandlers(Target(), { kEventClassWindow, kind }) == 0 ||
        std::ranges::find(m_notices, kind) != m_notices.end())
        return;
    if (m_notices.empty())
        QMetaObject::invokeMethod(
            this, [this] { SendNotices(); }, Qt::QueuedConnection);
    m_notices.push_back(kind);
}

void Window::SendNotices() {
    QPointer<Window> const alive(this);
    for (std::uint32_t const kind : std::exchange(m_notices, {})) {
        if (alive)
            Guarded([this, kind] { Send(kind); });
    }
}

void Window::NoteActivation() {
    static std::uint64_t count = 0;
    lastActivation = ++count;
}

// Widgets ---------------------------------------------------------------------------------------

QWidget* GetWindowWidget(WindowRef window) {
    Window const* const found = Window::Find(window);
    return found ? &found->Widget() : nullptr;
}

WindowRef GetWidgetWindow(const QWidget* widget) {
    Window const* const found = Window::Of(widget);
    return found ? found->Ref() : nullptr;
}

} // namespace platform
