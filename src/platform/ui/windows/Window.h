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

// A child of its widget, and ends with it, whoever deletes it.
class Window : public QObject, public UIObject {
public:
    explicit Window(QWidget& widget);
    ~Window() override;

    static Window* Find(WindowRef window) {
        return static_cast<Window*>(UIObject::Find(window, ObjectKind::kWindow));
    }
    // The window that the widget lies in, which may itself be embedded in another; null for none.
    static Window* Of(const QWidget* widget);
    // The window of the widget itself alone.
    static Window* At(const QWidget* widget);
    WindowRef Ref() const { return As<WindowRef>(); }
    QWidget& Widget() const { return *m_widget; }

    // Sends an event of class 'wind'. The window may be gone afterwards.
    OSStatus Send(std::uint32_t kind) const;
    // Sends the closed event while all is whole, then ends the controls and the window itself. The
    // widget stays.
    void End();

    // A widget of the window that shows a list or a menu of its own is not asked: the window's own
    // default and cancel buttons. Null: none.
    Control* DefaultButton() const;
    Control* CancelButton() const;
    // The control that has the keyboard focus among those of the window, active or not.
    Control* FocusControl() const;

    QPointer<QObject> defaultButton; // Controls
    QPointer<QObject> cancelButton;
    QEventLoop* modalLoop = nullptr; // while it runs modally
    WindowGroupRef group = nullptr;
    bool liesOverGroup = false; // made a child of the widget of its group's first window
    std::uint32_t attributes = kWindowCloseBoxAttribute | kWindowCollapseBoxAttribute;
    std::uint32_t modality = kWindowModalityNone;
    std::uint64_t lastActivation = 0;    // counts up; 0: never
    ControlRef toldOfFocus = nullptr;    // the control that was last told that it has the focus
    bool isQuiet = false;                // shown and hidden events are not the user's business now

private:
    QWidget* m_widget;
    bool m_ending = false;
};

} // namespace platform
