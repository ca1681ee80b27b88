// SPDX-License-Identifier: BSD-3-Clause
// The two widgets that are edit fields: one line and several.
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <QTextDocument>

#include "platform/ui/controls/EditTextControl.h"

namespace platform {
namespace {

// What both call the same.
template <class Edit>
class EditTextOf : public EditTextWidget {
public:
    explicit EditTextOf(Edit& edit) : m_edit(&edit) {}

    void Watch(QObject& context, std::function<void()> changed) override {
        QObject::connect(m_edit, &Edit::textChanged, &context, std::move(changed));
    }
    bool IsReadOnly() const override { return m_edit->isReadOnly(); }
    void SetReadOnly(bool readOnly) override { m_edit->setReadOnly(readOnly); }
    void Undo() override { m_edit->undo(); }
    void Redo() override { m_edit->redo(); }
    void Cut() override { m_edit->cut(); }
    void Copy() override { m_edit->copy(); }
    void Paste() override { m_edit->paste(); }
    void SelectAll() override { m_edit->selectAll(); }

protected:
    Edit* m_edit;
};

class OneLine final : public EditTextOf<QLineEdit> {
public:
    using EditTextOf::EditTextOf;

    QString Text() const override { return m_edit->text(); }
    void Reset(const QString& text) override { m_edit->setText(text); }
    void Replace(Span span, const QString& text) override {
        Select(span);
        m_edit->insert(text);
    }
    Span Selection() const override {
        if (m_edit->hasSelectedText())
            return { m_edit->selectionStart(), m_edit->selectionEnd() };
        return { m_edit->cursorPosition(), m_edit->cursorPosition() };
    }
    void Select(Span span) override { m_edit->setSelection(span.start, span.end - span.start); }
    bool CanUndo() const override { return m_edit->isUndoAvailable(); }
    bool CanRedo() const override { return m_edit->isRedoAvailable(); }
};

class SeveralLines final : public EditTextOf<QPlainTextEdit> {
public:
    explicit SeveralLines(QPlainTextEdit& edit) : EditTextOf(edit) {
        edit.setTabChangesFocus(true); // a tab has no place in the texts, and the keyboard leads on
    }

    // The document's own text: the plain one has blanks for no-break spaces.
    QString Text() const override {
        QString text = m_edit->document()->toRawText();
        text.replace(QChar::ParagraphSeparator, QChar::LineFeed);
        return text.replace(QChar::LineSeparator, QChar::LineFeed);
    }
    void Reset(const QString& text) override { m_edit->setPlainText(text); }
    void Replace(Span span, const QString& text) override { CursorOver(span).insertText(text); }
    Span Selection() const override {
        const QTextCursor cursor = m_edit->textCursor();
        return { cursor.selectionStart(), cursor.selectionEnd() };
    }
    void Select(Span span) override { m_edit->setTextCursor(CursorOver(span)); }
    void SetWrap(bool wrap) override {
        m_edit->setLineWrapMode(wrap ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
    }
    bool CanUndo() const override { return m_edit->document()->isUndoAvailable(); }
    bool CanRedo() const override { return m_edit->document()->isRedoAvailable(); }

private:
    QTextCursor CursorOver(Span span) const {
        QTextCursor cursor(m_edit->document());
        cursor.setPosition(span.start);
        cursor.setPosition(span.end, QTextCursor::KeepAnchor);
        return cursor;
    }
};

} // namespace

Control* MakeEditControl(QWidget& widget, Window& owner) {
    if (auto* const line = qobject_cast<QLineEdit*>(&widget))
        return new EditTextControl(widget, owner, std::make_unique<OneLine>(*line));
    if (auto* const lines = qobject_cast<QPlainTextEdit*>(&widget))
        return new EditTextControl(widget, owner, std::make_unique<SeveralLines>(*lines));
    return nullptr;
}

} // namespace platform
