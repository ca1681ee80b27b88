// SPDX-License-Identifier: BSD-3-Clause
// The words of a cue and who says them. Says while one types what will not do, and takes only what
// will.
#pragma once

#include <QDialog>

#include "host/document/Track.h"
#include "host/text/TokenText.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace studio {

class CueDialog : public QDialog {
public:
    // values: those of the cue's frame. The thread's encoding is that of the texts.
    CueDialog(const host::Cue& cue, host::TextKind kind, host::TokenValues values,
              QWidget* parent = nullptr);

    // With what is typed.
    host::Cue Cue() const;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    QLabel* AddNote();
    void Check();

    host::Cue m_cue;
    host::TextKind m_kind;
    host::TokenValues m_values;
    QPlainTextEdit* m_text;
    QLineEdit* m_character;
    QLabel* m_textNote;
    QLabel* m_characterNote;
    QPushButton* m_ok;
};

} // namespace studio
