// SPDX-License-Identifier: BSD-3-Clause
// Making, showing, moving and disposing windows.
#include <memory>
#include <utility>

#include <QApplication>
#include <QScreen>

#include "platform/ui/QtStrings.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/windows/Points.h"
#include "platform/ui/windows/Window.h"
#include "platform/ui/windows/WindowModality.h"

namespace platform {

namespace {

// Runs the call with the window's widget, then sends the events that came of it.
template <class Call>
OSStatus WithWidget(WindowRef window, Call call) {
    Window const* const found = Window::Find(window);
    if (!found)
        return kErrInvalidWindow;
    call(found->Widget());
    if (Window* const still = Window::Find(window))
        still->SendNotices();
    return kNoErr;
}

// A widget that a host's layout places stays where the layout puts it.
void MoveContentTo(QWidget& widget, QPoint global) {
    QPoint const place = widget.isWindow() ? global : widget.parentWidget()->mapFromGlobal(global);
    // move() would place the frame.
    widget.setGeometry({ place, widget.size() });
}

QRect ContentOf(const QWidget& widget) {
    return { widget.mapToGlobal(QPoint()), widget.size() };
}

} // namespace

OSStatus CreateNewWindow(const Rect& contentBounds, WindowRef* window) {
    if (!window)
        return kParamErr;
    *window = nullptr;
    if (!EnsureUserInterface())
        return kErrNoUserInterface;
    auto widget = std::make_unique<QWidget>();
    widget->setGeometry(ToQRect(contentBounds));
    *window = Window::Adopt(std::move(widget)).Ref();
    return kNoErr;
}

void DisposeWindow(WindowRef window) {
    Window* const found = Window::Find(window);
    if (!found)
        return;
    QPointer<QWidget> const widget(&found->Widget());
    found->End();
    // One of the widget's own event functions may be running, and a handler of the closed event may
    // be what asks a second time.
    if (!widget || Window::Find(window))
        return;
    widget->hide();
    if (widget)
        widget->deleteLater();
}

bool IsValidWindowPtr(WindowRef window) {
    return Window::Find(window);
}

EventTargetRef GetWindowEventTarget(WindowRef window) {
    Window const* const found = Window::Find(window);
    return found ? found->Target() : nullptr;
}

// Showing ---------------------------------------------------------------------------------------

OSStatus ShowWindow(WindowRef window) {
    return WithWidget(window, [](QWidget& widget) {
        widget.show();
        if (!widget.isWindow())
            widget.raise();
    });
}

OSStatus HideWindow(WindowRef window) {
    OSStatus const status = WithWidget(window, [](QWidget& widget) { widget.hide(); });
    Window* const found = Window::Find(window);
    if (found && !found->modalLoop) // its run is over, and was what made it modal
        ShowWithModality(*found, OwnModality(*found));
    return status;
}

bool IsWindowVisible(WindowRef window) {
    Window const* const found = Window::Find(window);
    return found && found->Widget().isVisible();
}

OSStatus SelectWindow(WindowRef window) {
    return WithWidget(window, [](QWidget& widget) {
        widget.raise();
        widget.window()->raise();
        widget.window()->activateWindow();
    });
}

OSStatus BringToFront(WindowRef window) {
    return WithWidget(window, [](QWidget& widget) { widget.raise(); });
}

bool IsWindowActive(WindowRef window) {
    Window const* const found = Window::Find(window);
    return found && found->Widget().isVisible() && found->Widget().isActiveWindow();
}

// Of the active window's, else the one that was active last.
WindowRef FrontNonFloatingWindow() {
    auto const rank = [](const Window& window) {
        return std::pair(window.Widget().isActiveWindow(), window.lastActivation);
    };
    Window const* front = nullptr;
    for (UIObject const* const object : UIObject::All(ObjectKind::kWindow)) {
        auto const& window = static_cast<const Window&>(*object);
        if (window.Widget().isVisible() && (!front || rank(window) >= rank(*front)))
            front = &window;
    }
    return front ? front->Ref() : nullptr;
}

// Places ----------------------------------------------------------------------------------------

OSStatus MoveWindow(WindowRef window, std::int16_t left, std::int16_t top, bool front) {
    OSStatus const status = WithWidget(window, [left, top](QWidget& widget) {
        MoveContentTo(widget, { left, top });
    });
    return status == kNoErr && front ? SelectWindow(window) : status;
}

OSStatus SizeWindow(WindowRef window, std::int16_t width, std::int16_t height) {
    if (width < 0 || height < 0)
        return kParamErr;
    return WithWidget(window, [width, height](QWidget& widget) { widget.resize(width, height); });
}

OSStatus GetWindowContentBounds(WindowRef window, Rect* global) {
    Window const* const found = Window::Find(window);
    if (!global)
        return kParamErr;
    *global = found ? ToRect(ContentOf(found->Widget())) : Rect {};
    return found ? kNoErr : kErrInvalidWindow;
}

OSStatus RepositionWindow(WindowRef window, WindowRef parent, std::uint32_t method) {
    Window const* const over = Window::Find(parent);
    if (parent && !over)
        return kErrInvalidWindow;
    if (method != kWindowCenterOnMainScreen)
        return kParamErr;
    return WithWidget(window, [over](QWidget& widget) {
        QScreen const* const screen = QGuiApplication::primaryScreen();
        QRect const around = over     ? ContentOf(over->Widget())
                             : screen ? screen->availableGeometry()
                                      : QRect();
        QRect centred(QPoint(), widget.size());
        centred.moveCenter(around.center());
        if (!around.isEmpty())
            MoveContentTo(widget, centred.topLeft());
    });
}

OSStatus GlobalToWindow(WindowRef window, Point* point) {
    Window const* const found = Window::Find(window);
    if (!point || !found)
        return point ? kErrInvalidWindow : kParamErr;
    *point = ToPoint(found->Widget().mapFromGlobal(ToQPoint(*point)));
    return kNoErr;
}

OSStatus WindowToGlobal(WindowRef window, Point* point) {
    Window const* const found = Window::Find(window);
    if (!point || !found)
        return point ? kErrInvalidWindow : kParamErr;
    *point = ToPoint(found->Widget().mapToGlobal(ToQPoint(*point)));
    return kNoErr;
}

// Titles and properties -------------------------------------------------------------------------

OSStatus SetWindowTitleWithCFString(WindowRef window, CFStringRef title) {
    return WithWidget(window,
                      [title](QWidget& widget) { widget.setWindowTitle(QStringFrom(title)); });
}

OSStatus CopyWindowTitleAsCFString(WindowRef window, CFStringRef* title) {
    if (!title)
        return kParamErr;
    *title = nullptr;
    return WithWidget(window, [title](const QWidget& widget) {
        *title = CFStringCreateWithQString(widget.windowTitle());
    });
}

void SetWindowProperty(WindowRef window, OSType creator, OSType tag, void* value) {
    if (Window* const found = Window::Find(window))
        found->SetProperty(creator, tag, value);
}

void* GetWindowProperty(WindowRef window, OSType creator, OSType tag) {
    Window const* const found = Window::Find(window);
    return found ? found->Property(creator, tag) : nullptr;
}

// Drawing ---------------------------------------------------------------------------------------

// Widgets keep themselves fresh; what handlers draw alone, they cannot know to be stale. A window full
// of widgets takes longer to paint than its picture, so they are left alone.
OSStatus InvalWindowRect(WindowRef window, const Rect* part) {
    return WithWidget(window, [window, part](const QWidget& widget) {
        QRect const stale = part ? ToQRect(*part) : widget.rect();
        Window const* const owner = Window::Find(window);
        for (UIObject* const object : UIObject::All(ObjectKind::kControl)) {
            auto const& control = static_cast<const Control&>(*object);
            // A control that is just being disposed of may outlive its window.
            if (&control.Owner() != owner || !control.IsDrawnByHandlers())
                continue;
            QWidget& drawn = control.Widget();
            drawn.update(stale.translated(-drawn.mapTo(&widget, QPoint())));
        }
    });
}

// What is drawn goes into a buffer first, which is shown as a whole.
bool IsWindowBuffered(WindowRef window) {
    return Window::Find(window);
}

// Drawing ends on the screen by itself, so what is left are updates that wait for the loop: the
// window's as a whole, as no part of them can be had alone.
OSStatus FlushWindowBuffer(WindowRef window, const Rect* /*part*/) {
    return WithWidget(window, [](QWidget& widget) {
        QCoreApplication::sendPostedEvents(widget.window(), QEvent::UpdateRequest);
    });
}

} // namespace platform
