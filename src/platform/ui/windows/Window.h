// SPDX-License-Identifier: BSD-3-Clause
// What stands behind a WindowRef: a widget with controls, default and cancel buttons and modal runs.
#pragma once

#include <memory>

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

    // Makes a window of the widget. They end together.
    static Window& Adopt(std::unique_ptr<QWidget> widget) { return *new Window(*widget.release()); }
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

    Control* DefaultButton() const; // null: none
    Control* CancelButton() const;
    // Clicks the control when it is a button and enabled; gives whether it was one.
    static bool PressButton(const Control* control);
    // The control that has the keyboard focus among those of the window, active or not.
    Control* FocusControl() const;
    // It was shown, hidden or moved. The event follows when the widget is through with it: Qt does
    // not expect the widget to go in the middle.
    void Notice(std::uint32_t kind);
    void SendNotices();
    void NoteActivation();

    ControlRef defaultButton = nullptr;
    ControlRef cancelButton = nullptr;
    QEventLoop* modalLoop = nullptr; // while it runs modally
    WindowGroupRef group = nullptr;
    bool liesOverGroup = false; // a child of the widget of its group's first window
    std::uint32_t attributes = kWindowCloseBoxAttribute | kWindowCollapseBoxAttribute;
    std::uint32_t modality = kWindowModalityNone;
    std::uint64_t lastActivation = 0; // counts up; 0: never
    ControlRef toldOfFocus = nullptr; // the control that was last told that it has the focus
    bool isQuiet = false;             // being shown or hidden is not the user's doing now

private:
    QWidget* m_widget;
    bool m_ending = false;
    std::vector<std::uint32_t> m_notices; // kinds of window events that are to be sent
};

} // namespace platform
