// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/EffectPanel.h"

#include <QLabel>
#include <QPointer>
#include <QVBoxLayout>

#include "apps/studio/Texts.h"
#include "platform/ui/WindowWidget.h"

namespace studio {

namespace {

platform::WindowRef WindowOf(const host::Dialog& dialog) {
    return reinterpret_cast<platform::WindowRef>(dialog.Window());
}

} // namespace

EffectPanel::EffectPanel(QWidget* parent)
    : QWidget(parent), m_column(new QVBoxLayout(this)), m_message(new QLabel(this)) {
    m_column->setContentsMargins(0, 0, 0, 0);
    m_message->setMargin(10);
    m_message->setWordWrap(true);
    m_message->setTextFormat(Qt::PlainText);
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_column->addWidget(m_message);
}

EffectPanel::~EffectPanel() {
    Close();
}

void EffectPanel::Open(host::Effect& effect, const host::Dialog::Frame& frame) {
    Close();
    std::string why;
    m_dialog = host::Dialog::Open(effect, host::DialogKind::kSettingsPanel, frame, why);
    if (m_dialog)
        Embed();
    else
        SetMessage(T("The effect's settings cannot be shown.") + QStringLiteral("\n\n") +
                   QString::fromStdString(why));
}

void EffectPanel::Embed() {
    QPointer<QWidget> const widget = platform::GetWindowWidget(WindowOf(*m_dialog));
    if (!widget)
        return SetMessage(T("The effect's settings cannot be shown."));
    m_message->hide();
    m_column->addWidget(widget, 1);
    platform::ShowWindow(WindowOf(*m_dialog));
}

void EffectPanel::Close() {
    m_dialog.reset();
    SetMessage({});
}

void EffectPanel::SetMessage(const QString& text) {
    m_message->setText(text);
    m_message->setVisible(!text.isEmpty());
}

QString EffectPanel::Message() const {
    return m_message->isHidden() ? QString() : m_message->text();
}

void EffectPanel::ShowFrame(const host::Dialog::Frame& frame) {
    Notify(frame, epiNotifyCompositeImage);
}

void EffectPanel::Update(const host::Dialog::Frame& frame) {
    Notify(frame, epiNotifyUpdate);
}

void EffectPanel::Notify(const host::Dialog::Frame& frame, std::int32_t code) {
    if (!m_dialog)
        return;
    m_dialog->SetFrame(frame);
    std::string why;
    m_dialog->Notify(code, why);
    SetMessage(QString::fromStdString(why)); // one that went well takes the last trouble away
}

} // namespace studio
