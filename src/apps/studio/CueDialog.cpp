// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/CueDialog.h"

#include <utility>

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "apps/studio/ShotStrings.h"
#include "apps/studio/Style.h"
#include "apps/studio/Texts.h"

namespace studio {

namespace {

// What is wrong with it, or what the frame makes of it; false when it is wrong.
bool ShowNote(QLabel& note, QWidget& field, const StringHere& here) {
    auto text = here.trouble;
    if (text.isEmpty() && here.hasTokens)
        text = T("This frame: %1").arg(QString::fromStdString(here.text));
    note.setText(text);
    field.setAccessibleDescription(text);
    here.trouble.isEmpty() ? SetFaint(note) : SetAlarming(note);
    return here.trouble.isEmpty();
}

} // namespace

CueDialog::CueDialog(const host::Cue& cue, host::TextKind kind, host::TokenValues values,
                     QWidget* parent)
    : QDialog(parent), m_cue(cue), m_kind(kind), m_values(std::move(values)),
      m_text(new QPlainTextEdit(QString::fromStdString(cue.text), this)),
      m_character(new QLineEdit(QString::fromStdString(cue.character), this)) {
    setWindowTitle(cue.first == cue.last
                       ? T("Cue on Frame %1").arg(cue.first)
                       : T("Cue on Frames %1 to %2").arg(cue.first).arg(cue.last));
    auto* const column = new QVBoxLayout(this);
    auto* const characterLabel = new QLabel(T("C&haracter:"), this);
    characterLabel->setBuddy(m_character);
    column->addWidget(characterLabel);
    column->addWidget(m_character);
    m_characterNote = AddNote();
    auto* const textLabel = new QLabel(T("&Words:"), this);
    textLabel->setBuddy(m_text);
    m_text->setTabChangesFocus(true);
    m_text->setMinimumHeight(4 * fontMetrics().lineSpacing());
    m_text->installEventFilter(this);
    column->addWidget(textLabel);
    column->addWidget(m_text, 1);
    m_textNote = AddNote();
    auto* const buttons = new QDialogButtonBox(this);
    m_ok = buttons->addButton(T("OK"), QDialogButtonBox::AcceptRole);
    buttons->addButton(T("Cancel"), QDialogButtonBox::RejectRole);
    m_ok->setDefault(true);
    column->addWidget(buttons);
    resize(460, sizeHint().height());
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { accept(); });
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
    connect(m_text, &QPlainTextEdit::textChanged, this, [this] { Check(); });
    connect(m_character, &QLineEdit::textChanged, this, [this] { Check(); });
    if (kind == host::TextKind::kCharacter) {
        m_character->selectAll();
        m_character->setFocus();
    } else {
        m_text->selectAll();
        m_text->setFocus();
    }
    Check();
}

QLabel* CueDialog::AddNote() {
    auto* const note = new QLabel(this);
    note->setWordWrap(true);
    note->setTextFormat(Qt::PlainText);
    note->setMinimumHeight(note->fontMetrics().lineSpacing());
    layout()->addWidget(note);
    return note;
}

host::Cue CueDialog::Cue() const {
    auto cue = m_cue;
    cue.text = m_text->toPlainText().toStdString();
    cue.character = m_character->text().toStdString();
    return cue;
}

// Control and the Enter key are done with several lines, Enter alone with one.
bool CueDialog::eventFilter(QObject* object, QEvent* event) {
    if (object != m_text || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(object, event);
    const auto& key = *static_cast<QKeyEvent*>(event);
    const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    const bool isDone = key.modifiers().testFlag(Qt::ControlModifier) ||
                        (m_kind != host::TextKind::kDialogue && key.modifiers() == Qt::NoModifier);
    if (!isEnter || !isDone)
        return false;
    m_ok->click();
    return true;
}

void CueDialog::Check() {
    const auto cue = Cue();
    // Words of a kind that is not drawn may be of any length, but their tokens are right.
    const auto room = m_kind == host::TextKind::kInfo ? sizeof(_TEXTPARAM::szInfoText) - 1
                                                      : sizeof(_TEXTPARAM::szDialogue) - 1;
    const auto text =
        Resolve(cue.text, m_values, { .room = room, .lines = m_kind != host::TextKind::kInfo });
    const auto character =
        Resolve(cue.character, m_values, { .room = sizeof(_TEXTPARAM::szCharacter) - 1 });
    const bool isTextRight = ShowNote(*m_textNote, *m_text, text);
    m_ok->setEnabled(ShowNote(*m_characterNote, *m_character, character) && isTextRight);
}

} // namespace studio
