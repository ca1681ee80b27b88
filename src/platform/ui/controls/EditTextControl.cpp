// SPDX-License-Identifier: BSD-3-Clause
#include "platform/ui/controls/EditTextControl.h"

#include <algorithm>
#include <utility>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>

#include "platform/ui/QtValues.h"

namespace platform {
namespace {

using Span = EditField::Span;

// Where two texts differ: in the one span, the other has the replacement. Whole characters only.
struct Difference {
    Span span;
    QString replacement;

    // Where a position in the old text is in the new one.
    int Follow(int position) const {
        const int end = span.start + static_cast<int>(replacement.size());
        if (position <= span.start)
            return position;
        return position >= span.end ? position - span.end + end : end;
    }
};

bool SplitsPair(const QString& text, qsizetype position) {
    return position > 0 && position < text.size() && text[position].isLowSurrogate() &&
           text[position - 1].isHighSurrogate();
}

Difference DifferenceOf(const QString& before, const QString& after) {
    const qsizetype shorter = std::min(before.size(), after.size());
    qsizetype start = 0;
    while (start < shorter && before[start] == after[start])
        ++start;
    if (SplitsPair(before, start) || SplitsPair(after, start))
        --start;
    qsizetype tail = 0;
    while (tail < shorter - start &&
           before[before.size() - tail - 1] == after[after.size() - tail - 1])
        ++tail;
    if (SplitsPair(before, before.size() - tail) || SplitsPair(after, after.size() - tail))
        --tail;
    return { { static_cast<int>(start), static_cast<int>(before.size() - tail) },
             after.mid(start, after.size() - tail - start) };
}

} // namespace

EditTextControl::EditTextControl(QWidget& widget, Window& owner,
                                 std::unique_ptr<EditTextWidget> edit)
    : WidgetControl(widget, owner), m_edit(std::move(edit)), m_seen(m_edit->Text()) {
    widget.installEventFilter(this);
    m_edit->Watch(*this, [this] { NoteChange(); });
}

EditField* EditField::Find(ControlRef control) {
    return dynamic_cast<EditField*>(Control::Find(control));
}

// Text -------------------------------------------------------------------------------------------

std::optional<std::string> EditTextControl::Text() const {
    return ToUtf8(m_edit->Text());
}

OSStatus EditTextControl::SetText(std::string_view text) {
    if (m_composing)
        EndComposition();
    m_passed = false;
    if (const QString lines = FromUtf8(text); lines != m_edit->Text()) {
        ReplaceBy(lines);
        Validate();
    }
    return kNoErr;
}

// What the user did in the field can still be undone afterwards, and the selection stays with the text
// around it. A correction takes the place of what it corrects: undoing it alone would bring back what
// is corrected again at once, and no undo would ever lead further back.
void EditTextControl::ReplaceBy(const QString& text) {
    if (!Widget().hasFocus() && !m_edit->CanUndo())
        return m_edit->Reset(text);
    const Difference whole = DifferenceOf(m_edit->Text(), text);
    const Span selection = m_edit->Selection();
    if (m_validating && m_edit->CanUndo() && !m_edit->CanRedo())
        m_edit->Undo();
    const Difference rest = DifferenceOf(m_edit->Text(), text);
    m_edit->Replace(rest.span, rest.replacement);
    m_edit->Select({ whole.Follow(selection.start), whole.Follow(selection.end) });
}

// A half of a surrogate pair takes its other half with it.
void EditTextControl::Select(Span span) {
    const QString text = m_edit->Text();
    const int length = static_cast<int>(text.size());
    int start = std::clamp(span.start, 0, length);
    int end = span.end < 0 ? length : std::clamp(span.end, start, length);
    const bool caret = start == end;
    if (SplitsPair(text, start))
        --start;
    if (caret)
        end = start;
    else if (SplitsPair(text, end))
        ++end;
    m_edit->Select({ start, end });
}

void EditTextControl::SetRomanScript(bool roman) {
    Widget().setInputMethodHints(Widget().inputMethodHints().setFlag(Qt::ImhLatinOnly, roman));
}

// Keys and commands ------------------------------------------------------------------------------

ControlPartCode EditTextControl::FocusPart() const {
    return Widget().focusPolicy() == Qt::NoFocus ? kControlNoPart : kControlEditTextPart;
}

bool EditTextControl::BlocksKey(std::uint32_t keyCode, std::int16_t charCode,
                                std::uint32_t modifiers) {
    const Alive alive(*this);
    Validate(); // of what came before the key
    if (!alive)
        return true;
    m_passed = false;
    const bool command = modifiers & (kCmdKey | kOptionKey | kControlKey);
    if (!keyFilter || command || charCode == 0 || m_edit->IsReadOnly())
        return false;
    auto key = static_cast<std::int16_t>(keyCode);
    auto heldDown = static_cast<std::uint16_t>(modifiers);
    if (keyFilter(Ref(), &key, &charCode, &heldDown) == kControlKeyFilterBlockKey || !alive)
        return true;
    m_passed = true;
    // A key that only moves changes nothing, and must not answer for what comes next.
    QMetaObject::invokeMethod(
        this, [this] { m_passed = false; }, Qt::QueuedConnection);
    return false;
}

bool EditTextControl::DoEditCommand(std::uint32_t commandID) {
    static constexpr std::pair<std::uint32_t, void (EditTextWidget::*)()> kChanging[] = {
        { kHICommandUndo, &EditTextWidget::Undo },   { kHICommandRedo, &EditTextWidget::Redo },
        { kHICommandCut, &EditTextWidget::Cut },     { kHICommandPaste, &EditTextWidget::Paste },
        { kHICommandClear, &EditTextWidget::Clear },
    };
    m_passed = false;
    if (commandID == kHICommandCopy) {
        m_edit->Copy();
        return true;
    }
    if (commandID == kHICommandSelectAll) {
        m_edit->SelectAll();
        return true;
    }
    for (const auto& [command, act] : kChanging) {
        if (command != commandID)
            continue;
        if (!m_edit->IsReadOnly())
            (*m_edit.*act)();
        Validate();
        return true;
    }
    return false;
}

// Input methods ----------------------------------------------------------------------------------

bool EditTextControl::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::InputMethod)
        m_composing = !static_cast<const QInputMethodEvent&>(*event).preeditString().isEmpty();
    else if (event->type() == QEvent::FocusOut)
        m_composing = false; // the widget commits or drops what was composed
    else
        return WidgetControl::eventFilter(watched, event);
    m_passed = false;
    // What was committed while more was being composed.
    if (m_unvalidated && !m_composing)
        ValidateSoon();
    return WidgetControl::eventFilter(watched, event);
}

void EditTextControl::EndComposition() {
    QGuiApplication::inputMethod()->reset();
    // Where no input method answers, the widget still shows what was composed.
    QInputMethodEvent nothing;
    QCoreApplication::sendEvent(&Widget(), &nothing);
}

// Validation -------------------------------------------------------------------------------------

void EditTextControl::NoteChange() {
    QString text = m_edit->Text();
    if (text == m_seen)
        return;
    m_seen = std::move(text);
    if (std::exchange(m_passed, false) || m_validating || m_unvalidated)
        return;
    m_unvalidated = true;
    ValidateSoon();
}

// Not at once: the widget is in the middle of the change and goes on with it.
void EditTextControl::ValidateSoon() {
    QMetaObject::invokeMethod(
        this, [this] { Validate(); }, Qt::QueuedConnection);
}

void EditTextControl::Validate() {
    if (!m_unvalidated || m_validating || m_composing)
        return;
    m_unvalidated = false;
    if (!validation)
        return;
    const WhileSet validating(*this, m_validating, true);
    validation(Ref());
}

} // namespace platform
