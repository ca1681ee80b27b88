// SPDX-License-Identifier: BSD-3-Clause
// An edit field: its text, the filter that its keys go through and the validation of every other
// change. Which widget it is, only EditTextWidget's two classes know.
#pragma once

#include <functional>
#include <memory>

#include <QString>

#include "platform/ui/controls/Control.h"

namespace platform {

// What an edit field's widget can do. Lines end with LF. Positions are in UTF-16 units, as in all of
// Qt, from 0 to the text's length.
class EditTextWidget {
public:
    using Span = EditField::Span;

    virtual ~EditTextWidget() = default;
    // Calls changed, for as long as context lives, when the text or only its looks have changed.
    virtual void Watch(QObject& context, std::function<void()> changed) = 0;
    virtual QString Text() const = 0;
    virtual void Reset(const QString& text) = 0; // forgets what could be undone
    // One step that the user can undo.
    virtual void Replace(Span span, const QString& text) = 0;
    virtual Span Selection() const = 0; // an empty one is the caret
    virtual void Select(Span span) = 0; // the caret goes to its end
    virtual bool IsReadOnly() const = 0;
    virtual void SetReadOnly(bool readOnly) = 0;
    virtual void SetWrap(bool /*wrap*/) {} // only several lines have any

    virtual bool CanUndo() const = 0;
    virtual bool CanRedo() const = 0;
    virtual void Undo() = 0;
    virtual void Redo() = 0;
    virtual void Cut() = 0;
    virtual void Copy() = 0;
    virtual void Paste() = 0;
    virtual void SelectAll() = 0;
    void Clear() { Replace(Selection(), {}); }
};

class EditTextControl final : public WidgetControl, public EditField {
public:
    EditTextControl(QWidget& widget, Window& owner, std::unique_ptr<EditTextWidget> edit);

    std::optional<std::string> Text() const override;
    OSStatus SetText(std::string_view text) override;
    Span Selection() const override { return m_edit->Selection(); }
    void Select(Span span) override;
    void SetRomanScript(bool roman) override;
    void SetReadOnly(bool readOnly) override { m_edit->SetReadOnly(readOnly); }
    void SetWrap(bool wrap) override { m_edit->SetWrap(wrap); }
    ControlPartCode FocusPart() const override;
    bool BlocksKey(std::uint32_t keyCode, std::int16_t charCode, std::uint32_t modifiers) override;
    bool DoEditCommand(std::uint32_t commandID) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void NoteChange(); // the widget says so
    void ReplaceBy(const QString& text);
    void EndComposition();
    void ValidateSoon();
    void Validate(); // the control may be gone afterwards

    std::unique_ptr<EditTextWidget> m_edit;
    // The text as last seen: the widget says it has changed when only its looks have, too.
    QString m_seen;
    bool m_passed = false;      // the filter let a key through; its change needs no validation
    bool m_composing = false;   // an input method shows text that is not committed
    bool m_unvalidated = false; // a change waits for its validation
    bool m_validating = false;
};

} // namespace platform
