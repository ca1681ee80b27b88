// SPDX-License-Identifier: BSD-3-Clause
// One window: found from its widgets, shown and placed, and its end, which any of its own handlers may
// bring about.
#include "platform/ui/Windows.h"

#include <algorithm>
#include <utility>

#include <QAbstractButton>
#include <QApplication>
#include <QHash>
#include <QPointer>
#include <QPushButton>
#include <QScreen>

#include "platform/ui/QtValues.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/windows/Input.h"
#include "platform/ui/windows/MouseTracker.h"

namespace platform {

namespace {

QHash<const QWidget*, Window*>& Windows() {
    static auto& windows = *new QHash<const QWidget*, Window*>;
    return windows;
}

// A widget that a host's layout places stays where the layout puts it.
void MoveContentTo(QWidget& widget, QPoint global) {
    const QPoint place = widget.isWindow() ? global : widget.parentWidget()->mapFromGlobal(global);
    // move() would place the frame.
    widget.setGeometry({ place, widget.size() });
}

// Styles draw it with an accent.
void ShowAsDefault(const Control* control, bool isDefault) {
    if (auto* const button = control ? qobject_cast<QPushButton*>(&control->Widget()) : nullptr) {
        button->setAutoDefault(false);
        button->setDefault(isDefault);
    }
}

} // namespace

Window::Window(QWidget& widget)
    : UIObject(ObjectKind::kWindow, GetApplicationEventTarget()), m_widget(&widget) {
    Windows().insert(&widget, this);
    // The plug-in's windows do not decide when the host's process ends.
    widget.setAttribute(Qt::WA_QuitOnClose, false);
    // A widget says so before it deletes its children, so the controls are whole at that time.
    QObject::connect(&widget, &QObject::destroyed, [this, alive = Alive(*this)] {
        if (!alive)
            return;
        if (!m_ending)
            return End();
        // A handler deletes the widget while the window is ending, so that ends here.
        EndControls(*m_widget);
        if (alive)
            delete this;
    });
}

Window::~Window() {
    if (group)
        group->Remove(*this);
    MouseTracker::Of().Cancel(Ref());
    QuitModal();
    Windows().remove(m_widget);
}

WindowRef Window::Create(const Rect& contentBounds) {
    if (!EnsureUserInterface())
        return nullptr;
    auto* const widget = new QWidget; // the window's, and ends with it
    widget->setGeometry(ToQRect(contentBounds));
    return (new Window(*widget))->Ref();
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

// The end ----------------------------------------------------------------------------------------

void Window::Dispose() {
    const Alive alive(*this);
    const QPointer<QWidget> widget(m_widget);
    End();
    // One of the widget's own event functions may be running, and a handler of the closed event may
    // be what asks a second time.
    if (!widget || alive)
        return;
    widget->hide();
    if (widget)
        widget->deleteLater();
}

// Sends the closed event while all is whole, then ends the controls and the window itself. The widget
// stays.
void Window::End() {
    if (std::exchange(m_ending, true))
        return;
    const Alive alive(*this);
    Guarded([this] { Send(kEventWindowClosed); });
    if (!alive)
        return; // a handler deleted the widget, and this with it
    ReleaseWindowsOver();
    if (alive)
        EndControls(*m_widget);
    if (alive)
        delete this;
}

// Showing ----------------------------------------------------------------------------------------

void Window::Show() {
    const Alive alive(*this);
    m_widget->show();
    if (alive && !m_widget->isWindow())
        m_widget->raise();
    if (alive)
        SendBounds();
}

void Window::Hide() {
    const Alive alive(*this);
    m_widget->hide();
    if (alive) // its run may be over, which was what made it modal
        ApplyOwnModality();
}

bool Window::IsVisible() const {
    return m_widget->isVisible();
}

void Window::BringToFront() {
    m_widget->raise();
}

// Of the active window's, else the one that was active last.
Window* FrontWindow() {
    const auto rank = [](const Window& window) {
        return std::pair(window.Widget().isActiveWindow(), window.lastActivation);
    };
    Window* front = nullptr;
    for (UIObject* const object : UIObject::All(ObjectKind::kWindow)) {
        auto& window = static_cast<Window&>(*object);
        if (window.IsVisible() && (!front || rank(window) >= rank(*front)))
            front = &window;
    }
    return front;
}

// Places -----------------------------------------------------------------------------------------

void Window::MoveTo(std::int16_t left, std::int16_t top) {
    MoveContentTo(*m_widget, { left, top });
    SendBounds();
}

void Window::Resize(std::int16_t width, std::int16_t height) {
    m_widget->resize(std::max<int>(width, 0), std::max<int>(height, 0));
    SendBounds();
}

void Window::CenterOnMainScreen() {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    QRect centred(QPoint(), m_widget->size());
    centred.moveCenter(screen->availableGeometry().center());
    MoveContentTo(*m_widget, centred.topLeft());
    SendBounds();
}

Rect Window::ContentBounds() const {
    return ToRect({ m_widget->mapToGlobal(QPoint()), m_widget->size() });
}

Point Window::ToLocal(Point global) const {
    return ToPoint(m_widget->mapFromGlobal(ToQPoint(global)));
}

Point Window::ToGlobal(Point local) const {
    return ToPoint(m_widget->mapToGlobal(ToQPoint(local)));
}

void Window::SetTitle(std::string_view utf8) {
    m_widget->setWindowTitle(QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())));
}

// Drawing ----------------------------------------------------------------------------------------

// Widgets keep themselves fresh; what handlers draw alone, they cannot know to be stale. A window full
// of widgets takes longer to paint than its picture, so they are left alone.
void Window::Invalidate(const Rect* part) {
    const QRect stale = part ? ToQRect(*part) : m_widget->rect();
    for (UIObject* const object : UIObject::All(ObjectKind::kControl)) {
        const auto& control = static_cast<const Control&>(*object);
        // A control that is just being disposed of may outlive its window.
        if (&control.Owner() != this || !control.IsDrawnByHandlers())
            continue;
        QWidget& drawn = control.Widget();
        drawn.update(stale.translated(-drawn.mapTo(m_widget, QPoint())));
    }
}

// Drawing ends on the screen by itself, so what is left are updates that wait for the loop: the
// window's as a whole, as no part of them can be had alone.
void Window::Flush() {
    QCoreApplication::sendPostedEvents(m_widget->window(), QEvent::UpdateRequest);
}

// The default and the cancel button --------------------------------------------------------------
// They belong to the window, not to a dialog of Qt's that a host may have around it.

Control* Window::DefaultButton() const {
    return Control::Find(m_defaultButton);
}

Control* Window::CancelButton() const {
    return Control::Find(m_cancelButton);
}

void Window::SetDefaultButton(Control* button) {
    ShowAsDefault(DefaultButton(), false);
    m_defaultButton = button ? button->Ref() : nullptr;
    ShowAsDefault(button, true);
}

void Window::SetCancelButton(Control* button) {
    m_cancelButton = button ? button->Ref() : nullptr;
}

// Events -----------------------------------------------------------------------------------------

OSStatus Window::Send(std::uint32_t kind) const {
    return SendObjectEvent(*this, kEventClassWindow, kind, kTypeWindowRef);
}

void Window::NoticeBounds() {
    if (m_isQuiet || m_boundsNoticed ||
        CountEventHandlers(Target(), { kEventClassWindow, kEventWindowBoundsChanged }) == 0)
        return;
    m_boundsNoticed = true;
    Later(&Window::SendBounds);
}

void Window::Later(void (Window::*act)()) {
    const auto call = [this, act, alive = Alive(*this)] {
        if (alive)
            (this->*act)();
    };
    QMetaObject::invokeMethod(m_widget, call, Qt::QueuedConnection);
}

void Window::SendBounds() {
    if (std::exchange(m_boundsNoticed, false))
        Guarded([this] { Send(kEventWindowBoundsChanged); });
}

void Window::TellOfActivation(bool active) {
    static std::uint64_t count = 0;
    if (m_isQuiet)
        return;
    if (active)
        lastActivation = ++count;
    Send(active ? kEventWindowFocusAcquired : kEventWindowFocusRelinquish);
}

} // namespace platform
