// SPDX-License-Identifier: BSD-3-Clause
// Modality, attributes and activation: what the window system is told about a window.
#include "platform/ui/windows/WindowModality.h"

#include <array>

#include <QWidget>
#include <QWindow>

#include "platform/ui/windows/Window.h"

namespace platform {

namespace {

struct NamedFlag {
    std::uint32_t attribute;
    Qt::WindowType flag;
    bool whenClear; // the flag stands for the attribute's absence
};
constexpr std::array kFlags {
    NamedFlag { kWindowCloseBoxAttribute, Qt::WindowCloseButtonHint, false },
    NamedFlag { kWindowCollapseBoxAttribute, Qt::WindowMinimizeButtonHint, false },
    NamedFlag { kWindowHasNoTitleBarAttribute, Qt::WindowTitleHint, true },
    NamedFlag { kWindowHasNoTitleBarAttribute, Qt::FramelessWindowHint, false },
    NamedFlag { kWindowNoActivatesAttribute, Qt::WindowDoesNotAcceptFocus, false },
};

// A window that is visible stays so; the window system is told of the new flags.
void ApplyAttributes(const Window& window, std::uint32_t changed) {
    QWidget& widget = window.Widget();
    Qt::WindowFlags flags = widget.windowFlags() | Qt::CustomizeWindowHint;
    for (NamedFlag const& named : kFlags) {
        if (changed & named.attribute)
            flags.setFlag(named.flag,
                          ((window.attributes & named.attribute) != 0) != named.whenClear);
    }
    widget.overrideWindowFlags(flags);
    if (QWindow* const handle = widget.windowHandle())
        handle->setFlags(flags);
}

} // namespace

Qt::WindowModality OwnModality(const Window& window) {
    switch (window.modality) {
    case kWindowModalityNone:
        return Qt::NonModal;
    case kWindowModalityWindowModal:
        return Qt::WindowModal;
    default:
        return Qt::ApplicationModal;
    }
}

void ShowWithModality(Window& window, Qt::WindowModality modality) {
    QWidget& widget = window.Widget();
    if (!widget.isWindow() || widget.windowModality() == modality)
        return;
    bool const shown = widget.isVisible();
    bool const wasActive = widget.isActiveWindow();
    QRect const place = widget.geometry();
    window.isQuiet = true;
    QPointer<Window> const alive(&window);
    if (shown)
        widget.hide();
    widget.setWindowModality(modality);
    if (shown) {
        widget.setGeometry(place);
        widget.show();
        if (wasActive)
            widget.activateWindow();
    }
    if (alive)
        window.isQuiet = false;
}

OSStatus SetWindowModality(WindowRef window, std::uint32_t modality, WindowRef parent) {
    Window* const found = Window::Find(window);
    Window const* const over = Window::Find(parent);
    if (!found || (parent && !over))
        return kErrInvalidWindow;
    if (modality > kWindowModalityWindowModal)
        return kErrUnsupportedModality;
    found->modality = modality;
    QWidget& widget = found->Widget();
    if (over && widget.isWindow() && widget.window() != over->Widget().window()) {
        // A window of the screen has a window of the screen below it.
        widget.winId();
        over->Widget().window()->winId();
        widget.windowHandle()->setTransientParent(over->Widget().window()->windowHandle());
    }
    if (!found->modalLoop)
        ShowWithModality(*found, OwnModality(*found));
    return kNoErr;
}

OSStatus GetWindowAttributes(WindowRef window, std::uint32_t* attributes) {
    Window const* const found = Window::Find(window);
    if (!attributes)
        return kParamErr;
    *attributes = found ? found->attributes : 0;
    return found ? kNoErr : kErrInvalidWindow;
}

OSStatus ChangeWindowAttributes(WindowRef window, std::uint32_t set, std::uint32_t clear) {
    Window* const found = Window::Find(window);
    if (!found)
        return kErrInvalidWindow;
    std::uint32_t const before = found->attributes;
    found->attributes = (before | set) & ~clear;
    if (found->attributes != before && found->Widget().isWindow())
        ApplyAttributes(*found, before ^ found->attributes);
    return kNoErr;
}

// Scope 0: showing it does not activate it. 1 and 2: it may have the keyboard, or all of it.
OSStatus SetWindowActivationScope(WindowRef window, std::uint32_t scope) {
    Window const* const found = Window::Find(window);
    if (!found)
        return kErrInvalidWindow;
    if (scope > 2)
        return kParamErr;
    found->Widget().setAttribute(Qt::WA_ShowWithoutActivating, scope == 0);
    return kNoErr;
}

} // namespace platform
