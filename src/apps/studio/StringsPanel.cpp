// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/StringsPanel.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "apps/studio/Style.h"
#include "apps/studio/Texts.h"

namespace studio {

StringsPanel::StringsPanel(QWidget* parent)
    : QWidget(parent), m_present(new QCheckBox(T("The shot has these &strings"), this)),
      m_body(new QWidget(this)) {
    auto* const explanation =
        new QLabel(T("They make up the score line. {frame} is the frame's number, {frame:04} with "
                     "four digits, {file} the name of its file."),
                   this);
    explanation->setWordWrap(true);
    SetFaint(*explanation);
    auto* const column = new QVBoxLayout(this);
    column->addWidget(explanation);
    column->addWidget(m_present);
    column->addWidget(m_body);
    column->addStretch(1);
    auto* const fields = new QVBoxLayout(m_body);
    fields->setContentsMargins(0, 0, 0, 0);
    fields->setSpacing(3);
    AddField(0, T("&1  Title"), T("Used as it is"));
    AddField(1, T("&2  Part"), T("A number at its start is written with three digits"));
    AddField(2, T("&3  Cut"), T("A number at its start is written with three digits"));
    AddField(3, T("&4  Number"), T("A number at its start is written with four digits"));
    connect(m_present, &QCheckBox::clicked, this, [this] { Change(-1); });
    SetStrings({});
}

void StringsPanel::AddField(std::size_t i, const QString& label, const QString& tip) {
    auto* const field = m_fields[i] = new QLineEdit(m_body);
    auto* const title = new QLabel(label, m_body);
    title->setBuddy(field);
    title->setContentsMargins(0, i > 0 ? 6 : 0, 0, 0);
    field->setToolTip(tip);
    field->setAccessibleName(QString(label).remove(QLatin1Char('&')).simplified());
    field->setClearButtonEnabled(true);
    auto* const note = m_notes[i] = new QLabel(m_body);
    note->setWordWrap(true);
    note->setTextFormat(Qt::PlainText);
    for (auto* const widget : std::initializer_list<QWidget*> { title, field, note })
        m_body->layout()->addWidget(widget);
    connect(field, &QLineEdit::textEdited, this, [this, i] { Change(static_cast<int>(i)); });
}

void StringsPanel::SetStrings(const ShotStrings& strings) {
    m_present->setChecked(strings.present);
    m_body->setEnabled(strings.present);
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        const auto text = QString::fromStdString(strings.texts[i]);
        if (m_fields[i]->text() != text)
            m_fields[i]->setText(text);
    }
    ShowNotes();
}

void StringsPanel::SetFrame(const host::TokenValues& values) {
    m_values = values;
    ShowNotes();
}

ShotStrings StringsPanel::Typed() const {
    ShotStrings strings { m_present->isChecked(), {} };
    for (std::size_t i = 0; i < m_fields.size(); ++i)
        strings.texts[i] = m_fields[i]->text().toStdString();
    return strings;
}

void StringsPanel::Change(int which) {
    m_body->setEnabled(m_present->isChecked());
    ShowNotes();
    onChanged(Typed(), which);
}

void StringsPanel::ShowNotes() {
    const auto typed = Typed();
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        const auto here = Resolve(typed.texts[i], m_values);
        auto note = here.trouble;
        if (note.isEmpty() && here.hasTokens)
            note = T("This frame: %1").arg(QString::fromStdString(here.text));
        m_notes[i]->setText(note);
        m_notes[i]->setVisible(!note.isEmpty());
        here.trouble.isEmpty() ? SetFaint(*m_notes[i]) : SetAlarming(*m_notes[i]);
        m_fields[i]->setAccessibleDescription(note);
    }
}

} // namespace studio
