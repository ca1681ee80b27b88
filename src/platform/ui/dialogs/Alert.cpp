// SPDX-License-Identifier: BSD-3-Clause
// Standard alerts: a message box that is also a window of this layer, its buttons controls, so that
// handlers work in it as in any window. Escape and closing are left to the box, which knows them.
#include <memory>
#include <unordered_map>

#include <QMessageBox>
#include <QPushButton>

#include "platform/ui/Dialogs.h"
#include "platform/ui/QtStrings.h"
#include "platform/ui/controls/Control.h"
#include "platform/ui/dialogs/OwnedDialog.h"
#include "platform/ui/windows/Window.h"

namespace platform {
namespace {

QMessageBox::Icon IconOf(AlertType type) {
    switch (type) {
    case AlertType::kStop:
        return QMessageBox::Critical;
    case AlertType::kNote:
        return QMessageBox::Information;
    case AlertType::kCaution:
        return QMessageBox::Warning;
    case AlertType::kPlain:
        break;
    }
    return QMessageBox::NoIcon;
}

class Alert final : public UIObject {
public:
    Alert(AlertType type, const QString& message, const QString& explanation,
          const AlertParam& param);

    static Alert* Find(DialogRef alert) {
        return static_cast<Alert*>(UIObject::Find(alert, ObjectKind::kAlert));
    }
    Window* BoxWindow() const { return m_window; } // null when its box is gone
    std::int16_t Run();

private:
    ControlRef AddButton(QMessageBox::StandardButton button, std::uint32_t commandID);

    OwnedDialog<QMessageBox> m_box;
    QPointer<Window> m_window;
};

Alert::Alert(AlertType type, const QString& message, const QString& explanation,
             const AlertParam& param)
    : UIObject(ObjectKind::kAlert, nullptr), m_box(DialogParent()), m_window(new Window(*m_box)) {
    m_box->setIcon(IconOf(type));
    m_box->setTextFormat(Qt::PlainText); // a message may quote what somebody typed
    m_box->setText(message);
    m_box->setInformativeText(explanation);
    if (param.helpButton)
        m_box->addButton(QMessageBox::Help);
    const ControlRef cancel =
        param.cancelButton ? AddButton(QMessageBox::Cancel, kHICommandCancel) : nullptr;
    // A box without any button could not be left.
    const ControlRef ok =
        param.okButton || !cancel ? AddButton(QMessageBox::Ok, kHICommandOK) : nullptr;
    m_window->defaultButton = ok ? ok : cancel;
    m_box->setDefaultButton(ok ? QMessageBox::Ok : QMessageBox::Cancel);
    m_box->setEscapeButton(cancel ? QMessageBox::Cancel : QMessageBox::Ok);
}

ControlRef Alert::AddButton(QMessageBox::StandardButton button, std::uint32_t commandID) {
    Control* const control = MakeControl(*m_box->addButton(button), *m_window);
    control->commandID = commandID;
    return control->Ref();
}

std::int16_t Alert::Run() {
    const int pressed = m_box ? m_box->exec() : QMessageBox::Cancel;
    return pressed == QMessageBox::Ok ? kAlertStdAlertOKButton : kAlertStdAlertCancelButton;
}

using Alerts = std::unordered_map<DialogRef, std::unique_ptr<Alert>>;

Alerts& AllAlerts() {
    // Never ended: what is left at the end of the process has no application to end in any more.
    static Alerts& alerts = *new Alerts;
    return alerts;
}

} // namespace

OSStatus CreateStandardAlert(AlertType type, CFStringRef message, CFStringRef explanation,
                             const AlertParam& param, DialogRef* alert) {
    if (!alert)
        return kParamErr;
    *alert = nullptr;
    if (!EnsureUserInterface())
        return kErrNoUserInterface;
    auto made =
        std::make_unique<Alert>(type, QStringFrom(message), QStringFrom(explanation), param);
    *alert = made->As<DialogRef>();
    AllAlerts().emplace(*alert, std::move(made));
    return kNoErr;
}

WindowRef GetDialogWindow(DialogRef alert) {
    const Alert* const found = Alert::Find(alert);
    const Window* const window = found ? found->BoxWindow() : nullptr;
    return window ? window->Ref() : nullptr;
}

EventTargetRef GetDialogEventTarget(DialogRef alert) {
    return GetWindowEventTarget(GetDialogWindow(alert));
}

OSStatus RunStandardAlert(DialogRef alert, std::int16_t* item) {
    // Out of the list while it runs, so that nothing ends it under its own feet; disposing its window
    // ends the run.
    const auto node = AllAlerts().extract(alert);
    if (!node)
        return kParamErr;
    const std::int16_t pressed = node.mapped()->Run();
    if (item)
        *item = pressed;
    return kNoErr;
}

void DisposeStandardAlert(DialogRef alert) {
    if (AllAlerts().erase(alert) == 0)
        DisposeWindow(GetDialogWindow(alert)); // it runs
}

} // namespace platform
