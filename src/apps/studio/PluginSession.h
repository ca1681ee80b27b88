// SPDX-License-Identifier: BSD-3-Clause
// The plug-in in this window: its effect, its panel (or why there is none in its place), and this
// program's part in its dialogs as their host.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include <QTimer>
#include <QWidget>

#include "apps/studio/ErrorEvents.h"
#include "host/Dialog.h"
#include "host/Tables.h"
#include "host/frames/Frame.h"

class QLabel;

namespace studio {

class Project;

class PluginSession : public QWidget, private host::FrontEnd {
public:
    // Loads the plug-in. parent: of the panel.
    explicit PluginSession(QWidget* parent);
    ~PluginSession() override;

    // Null when there is no plug-in, for the reason in Trouble().
    host::Effect* Effect() { return m_effect.get(); }
    const std::string& Trouble() const { return m_trouble; }

    // Opens the panel on a project with this effect; both end before this does.
    void Open(Project& project);
    bool IsOpen() const { return m_dialog != nullptr; }
    // What stands in the panel's place; empty while the plug-in's own is shown.
    QString Message() const;
    // Presses the panel's button. Returns when the editor has ended.
    void OpenEditor();
    // While one of the plug-in's modal dialogs runs.
    bool IsModal() const { return m_modal != nullptr; }

    // The picture under the text (null: there is none, and the panel keeps the one that it has) and
    // the strings are those of another frame.
    void ShowFrame(const std::shared_ptr<host::Frame>& background);
    // The project changed without the plug-in's doing.
    void Update();

    std::function<void()> onModal;  // a modal dialog began or ended
    std::function<void()> onEdited; // one changed the live parameters
    std::function<void(const QString& what)> onError = [](const QString&) {}; // inside the plug-in

private:
    std::int32_t ParametersChanged(EPIHandleRef fixedParam) override;
    std::int32_t Option(double value) override;
    std::int32_t ModalOpens(EPIWindowRef window) override;
    std::int32_t ModalEnds(EPIWindowRef window) override;
    void FileFailed(const std::string& why) override;
    void FollowModal();
    void Embed();
    void Notify(std::int32_t code);
    host::Dialog::Frame DialogFrame();
    void SetMessage(const QString& text);

    ErrorEvents m_errors;
    std::string m_trouble;
    std::unique_ptr<host::Effect> m_effect;
    Project* m_project = nullptr;
    QLabel* m_message;
    std::shared_ptr<host::Frame> m_background; // lent to the dialog
    std::array<std::string, 4> m_strings;      // that the dialog has
    std::unique_ptr<host::Dialog> m_dialog;

    EPIWindowRef m_modal = nullptr; // null while none runs
    QTimer m_modalTimer;
    _TEXTPARAM m_modalShown {};
};

} // namespace studio
