// SPDX-License-Identifier: BSD-3-Clause
// Holds a dialog that its parent widget may end first, as a window can that is disposed while a dialog
// of it runs.
#pragma once

#include <utility>

#include <QApplication>
#include <QPointer>
#include <QWidget>

#include "platform/ui/Windows.h"

namespace platform {

template <class Dialog>
class OwnedDialog {
public:
    template <class... Arguments>
    explicit OwnedDialog(Arguments&&... arguments)
        : m_dialog(new Dialog(std::forward<Arguments>(arguments)...)) {}
    OwnedDialog(const OwnedDialog&) = delete;
    OwnedDialog& operator=(const OwnedDialog&) = delete;
    ~OwnedDialog() { delete m_dialog.data(); }

    explicit operator bool() const { return !m_dialog.isNull(); }
    Dialog* operator->() const { return m_dialog.data(); }
    Dialog& operator*() const { return *m_dialog; }

private:
    QPointer<Dialog> m_dialog;
};

// What a dialog belongs to: the window, or, without one, the active one.
inline QWidget* DialogParent(WindowRef window = nullptr) {
    const Window* const found = Window::Find(window);
    return found ? found->Widget().window() : QApplication::activeWindow();
}

} // namespace platform
