// SPDX-License-Identifier: BSD-3-Clause
// Modal runs. The other windows are kept out by Qt's own modality, which knows of popups, alerts and
// the window system; Qt reads it when a window is shown, so one that is visible is shown anew.
#include <QEventLoop>

#include "platform/ui/windows/Window.h"
#include "platform/ui/windows/WindowModality.h"

namespace platform {

namespace {

// Runs until the loop is quit; the window may be gone then.
void Run(Window& window) {
    QEventLoop loop;
    QPointer<Window> const alive(&window);
    window.modalLoop = &loop;
    loop.exec();
    if (alive)
        window.modalLoop = nullptr;
}

} // namespace

OSStatus RunAppModalLoopForWindow(WindowRef window) {
    Window* found = Window::Find(window);
    if (!found)
        return kErrInvalidWindow;
    if (found->modalLoop)
        return kErrUnsupportedModality;
    ShowWithModality(*found, Qt::ApplicationModal);
    Run(*found);
    found = Window::Find(window);
    if (!found)
        return kNoErr;
    // Whoever ran it mostly hides it now. One that stays lets go of the others when the loop gets to
    // it, and does not flicker in the first case.
    QMetaObject::invokeMethod(
        found,
        [found] {
            if (!found->modalLoop)
                ShowWithModality(*found, OwnModality(*found));
        },
        Qt::QueuedConnection);
    return kNoErr;
}

OSStatus QuitAppModalLoopForWindow(WindowRef window) {
    Window const* const found = Window::Find(window);
    if (!found)
        return kErrInvalidWindow;
    if (!found->modalLoop)
        return kParamErr;
    found->modalLoop->quit();
    return kNoErr;
}

} // namespace platform
