// SPDX-License-Identifier: BSD-3-Clause
// What stands behind a WindowRef: a widget with controls, default and cancel buttons and modal runs.
#pragma once

#include <memory>

#include <QEventLoop>
#include <QObject>
#include <QWidget>

#include "platform/ui/Windows.h"

namespace platform {

// A child of its widget, and ends with it, whoever deletes it.
class WidgetWindow final : public QObject, public Window {
public:
    explicit WidgetWindow(QWidget& widget);
    ~WidgetWindow() override;

    // Makes a window of the widget. They end together.
    static WidgetWindow& Adopt(std::unique_ptr<QWidget> widget) {
        return *new WidgetWindow(*widget.release());
    }
    // The window that the widget lies in, which may itself be embedded in another; null for none.
    static WidgetWindow* Of(const QWidget* widget);
    // The window of the widget itself alone.
    static WidgetWindow* At(const QWidget* widget);

    QWidget& Widget() const override { return *m_widget; }
    void Dispose() override;
    void Show() override;
    void Hide() override;
    bool IsVisible() const override { return m_widget->isVisible(); }
    void BringToFront() override;
    void MoveTo(std::int16_t left, std::int16_t top) override;
    void Resize(std::int16_t width, std::int16_t height) override;
    void CenterOnMainScreen() override;
    Rect ContentBounds() const override;
    Point ToLocal(Point global) const override;
    Point ToGlobal(Point local) const override;
    void SetTitle(std::string_view utf8) override;
    std::uint32_t Attributes() const override { return m_attributes; }
    void ChangeAttributes(std::uint32_t set, std::uint32_t clear) override;
    void SetActivationScope(std::uint32_t scope) override;
    void SetModality(std::uint32_t modality, const Window* over) override;
    void Invalidate(const Rect* part) override;
    void Flush() override;
    Control* DefaultButton() const override;
    Control* CancelButton() const override;
    void SetDefaultButton(Control* button) override;
    void SetCancelButton(Control* button) override;
    void TakeUserFocus() override;
    Control* KeyboardFocus() const override;
    bool SetKeyboardFocus(const Control* control) override;
    void RunModal() override;
    void QuitModal() override;
    MouseTracking TrackMouse(EventTime timeout, Point* where) override;

    // Sends an event of class 'wind'. The window may be gone afterwards.
    OSStatus Send(std::uint32_t kind) const;
    // It was moved or resized. The event follows when the widget is through with it: Qt does not
    // expect the widget to go in the middle.
    void NoticeBounds();
    void TellOfActivation(bool active);
    // Tells the controls that the focus moves to one of them (null: to none), where no widget says
    // so: in a window that is not active.
    void TellFocus(const Control* control);

    WindowGroup* group = nullptr;
    bool liesOverGroup = false;       // a child of the widget of its group's first window
    std::uint64_t lastActivation = 0; // counts up; 0: never
    ControlRef toldOfFocus = nullptr; // the control that was last told that it has the focus

private:
    void End();
    void SendBounds();
    void ApplyAttributes(std::uint32_t changed);
    void ShowWithModality(Qt::WindowModality modality);
    Qt::WindowModality OwnModality() const;

    QWidget* m_widget;
    ControlRef m_defaultButton = nullptr;
    ControlRef m_cancelButton = nullptr;
    QEventLoop* m_modalLoop = nullptr; // while it runs modally
    std::uint32_t m_attributes = kWindowCloseBoxAttribute | kWindowCollapseBoxAttribute;
    std::uint32_t m_modality = kWindowModalityNone;
    bool m_isQuiet = false; // being shown or hidden is not the user's doing now
    bool m_ending = false;
    bool m_boundsNoticed = false; // and not told yet
};

// The windows that lie over this one because of a group become hidden windows of their own.
void ReleaseWindowsOver(const Window& window);

} // namespace platform
