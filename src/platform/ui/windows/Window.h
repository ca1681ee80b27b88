// SPDX-License-Identifier: BSD-3-Clause
// What stands behind a WindowRef: a widget with controls, default and cancel buttons and modal runs.
#pragma once

#include <QEventLoop>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include "platform/ui/UIObject.h"
#include "platform/ui/Windows.h"

namespace platform {

class Control;

// A child of its widget, so that it ends with it, whoever deletes it.
class Window : public QObject, public UIObject {
public:
    explicit Window(QWidget& widget);
    ~Window() override; // sends the closed event before anything of it is gone

    static Window* Find(WindowRef window) {
        return static_cast<Window*>(UIObject::Find(window, ObjectKind::kWindow));
    }
    // The window that the widget lies in, which may itself be embedded in another; null for none.
    static Window* Of(const QWidget* widget);
    WindowRef Ref() const { return As<WindowRef>(); }
    QWidget& Widget() const { return *m_widget; }

    // What the platform does with an event that no handler took: the end of the window's chain.
    OSStatus HandleUnhandled(EventRef event);

    QPointer<QObject> defaultButton; // Controls
    QPointer<QObject> cancelButton;
    QEventLoop* modalLoop = nullptr; // while it runs modally
    WindowGroupRef group = nullptr;
    std::uint32_t attributes = 0;

private:
    QWidget* m_widget;
};

} // namespace platform
