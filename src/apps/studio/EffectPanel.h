// SPDX-License-Identifier: BSD-3-Clause
// The plug-in's settings panel inside the window; when it cannot be opened, why not in its place.
#pragma once

#include <memory>
#include <string>

#include <QWidget>

#include "host/Dialog.h"

class QLabel;
class QVBoxLayout;

namespace studio {

class EffectPanel : public QWidget {
public:
    explicit EffectPanel(QWidget* parent = nullptr);
    ~EffectPanel() override;

    // Closes one that is open. The composite image must live until the panel is told of another.
    void Open(host::Effect& effect, const host::Dialog::Frame& frame);
    void Close();
    bool IsOpen() const { return m_dialog != nullptr; }
    void SetMessage(const QString& text);
    QString Message() const; // empty while the plug-in's panel is shown

    // There is another picture under the text, and perhaps other strings.
    void ShowFrame(const host::Dialog::Frame& frame);
    // The parameters or the strings changed without the plug-in's doing.
    void Update(const host::Dialog::Frame& frame);

private:
    void Embed();
    void Notify(const host::Dialog::Frame& frame, std::int32_t code);

    std::unique_ptr<host::Dialog> m_dialog;
    QVBoxLayout* m_column;
    QLabel* m_message;
};

} // namespace studio
