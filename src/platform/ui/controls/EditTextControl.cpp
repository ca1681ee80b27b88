// SPDX-License-Identifier: BSD-3-Clause
#include "platform/ui/controls/EditTextControl.h"

#include <algorithm>
#include <limits>
#include <utility>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QPointer>
#include <QScopeGuard>

namespace platform {
namespace {

using Span = EditTextWidget::Span;

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

// Runs use with data as a T; the status says whether its size is right.
template <class T, class Use>
OSStatus WithData(std::span<const std::byte> data, Use use) {
    T value {};
    const OSStatus status = ReadData(data, &value);
    if (!status)
        use(value);
    return status;
}

} // namespace

EditTextControl::EditTextControl(QWidget& widget, Window& owner,
                                 std::unique_ptr<EditTextWidget> edit)
    : Control(widget, owner), m_edit(std::move(edit)), m_seen(m_edit->Text()) {
    widget.installEventFilter(this);
    m_edit->Watch(*this, [this] { NoteChange(); });
}

// Data ------------------------------------------------------------------------------------------

OSStatus EditTextControl::SetData(OSType tag, std::span<const std::byte> data) {
    switch (tag) {
    case kControlTextCFString: {
        QString text;
        const OSStatus status = ReadText(data, &text);
        if (!status)
            SetText(text);
        return status;
    }
    case kControlEditTextSelection:
        return WithData<ControlEditTextSelectionRec>(
            data, [this](const auto& selection) { SetSelection(selection); });
    case kControlEditTextScript:
        return WithData<OSType>(data, [this](OSType script) { SetScript(script); });
    case kControlTextReadOnly:
        return WithData<std::uint8_t>(data, [this](auto set) { m_edit->SetReadOnly(set != 0); });
    case kControlTextWrap:
        if (!m_edit->HasWrap())
            break;
        return WithData<std::uint8_t>(data, [this](auto set) { m_edit->SetWrap(set != 0); });
    case kControlKeyFilter:
        return ReadData(data, &m_keyFilter);
    case kControlValidation:
        return ReadData(data, &m_validation);
    default:
        break;
    }
    return Control::SetData(tag, data);
}

OSStatus EditTextControl::GetData(OSType tag, std::span<std::byte> data,
                                  std::uint32_t* actualSize) {
    const auto byte = [](bool set) { return static_cast<std::uint8_t>(set ? 1 : 0); };
    switch (tag) {
    case kControlTextCFString:
        return WriteText(m_edit->Text(), data, actualSize);
    case kControlEditTextSelection:
        return WriteData(Selection(), data, actualSize);
    case kControlEditTextScript:
        return WriteData(m_script, data, actualSize);
    case kControlTextReadOnly:
        return WriteData(byte(m_edit->IsReadOnly()), data, actualSize);
    case kControlTextWrap:
        if (!m_edit->HasWrap())
            break;
        return WriteData(byte(m_edit->Wraps()), data, actualSize);
    case kControlKeyFilter:
        return WriteData(m_keyFilter, data, actualSize);
    case kControlValidation:
        return WriteData(m_validation, data, actualSize);
    default:
        break;
    }
    return Control::GetData(tag, data, actualSize);
}

// What the user did in the field can still be undone afterwards, and the selection stays with the text
// around it. A correction takes the place of what it corrects: undoing it alone would bring back what
// is corrected again at once, and no undo would ever lead further back.
void EditTextControl::SetText(const QString& text) {
    if (m_composing)
        EndComposition();
    m_passed = false;
    const QString before = m_edit->Text();
    if (text == before)
        return;
    if (!Widget().hasFocus() && !m_edit->CanUndo()) {
        m_edit->Reset(text);
    } else {
        const Difference whole = DifferenceOf(before, text);
        const Span selection = m_edit->Selection();
        if (m_validating && m_edit->CanUndo() && !m_edit->CanRedo())
            m_edit->Undo();
        const Difference rest = DifferenceOf(m_edit->Text(), text);
        m_edit->Replace(rest.span, rest.replacement);
        m_edit->Select({ whole.Follow(selection.start), whole.Follow(selection.end) });
    }
    Validate();
}

// A half of a surrogate pair takes its other half with it.
void EditTextControl::SetSelection(const ControlEditTextSelectionRec& selection) {
    const QString text = m_edit->Text();
    const int length = static_cast<int>(text.size());
    int start = std::clamp<int>(selection.start, 0, length);
    int end = selection.end < 0 ? length : std::clamp<int>(selection.end, start, length);
    const bool caret = start == end;
    if (SplitsPair(text, start))
        --start;
    if (caret)
        end = start;
    else if (SplitsPair(text, end))
        ++end;
    m_edit->Select({ start, end });
}

ControlEditTextSelectionRec EditTextControl::Selection() const {
    const auto narrow = [](int position) {
        return static_cast<std::int16_t>(
            std::min<int>(position, std::numeric_limits<std::int16_t>::max()));
    };
    const Span span = m_edit->Selection();
    return { narrow(span.start), narrow(span.end) };
}

// A hint for keyboards on the screen and input methods; any of them goes on working.
void EditTextControl::SetScript(OSType script) {
    m_script = script;
    Widget().setInputMethodHints(
        Widget().inputMethodHints().setFlag(Qt::ImhLatinOnly, script == kScriptRoman));
}

// Keys and commands -----------------------------------------------------------------------------

ControlPartCode EditTextControl::FocusPart() const {
    return Widget().focusPolicy() == Qt::NoFocus ? kControlNoPart : kControlEditTextPart;
}

bool EditTextControl::BlocksKey(std::uint32_t keyCode, std::int16_t charCode,
                                std::uint32_t modifiers) {
    const QPointer<EditTextControl> alive(this);
    Validate(); // of what came before the key
    if (!alive)
        return true;
    m_passed = false;
    const bool command = modifiers & (kCmdKey | kOptionKey | kControlKey);
    if (!m_keyFilter || command || charCode == 0 || m_edit->IsReadOnly())
        return false;
    auto key = static_cast<std::int16_t>(keyCode);
    auto heldDown = static_cast<std::uint16_t>(modifiers);
    if (m_keyFilter(Ref(), &key, &charCode, &heldDown) == kControlKeyFilterBlockKey || !alive)
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

// Input methods ---------------------------------------------------------------------------------

bool EditTextControl::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::InputMethod)
        m_composing = !static_cast<const QInputMethodEvent&>(*event).preeditString().isEmpty();
    else if (event->type() == QEvent::FocusOut)
        m_composing = false; // the widget commits or drops what was composed
    else
        return Control::eventFilter(watched, event);
    m_passed = false;
    // What was committed while more was being composed.
    if (m_unvalidated && !m_composing)
        ValidateSoon();
    return Control::eventFilter(watched, event);
}

void EditTextControl::EndComposition() {
    QGuiApplication::inputMethod()->reset();
    // Where no input method answers, the widget still shows what was composed.
    QInputMethodEvent nothing;
    QCoreApplication::sendEvent(&Widget(), &nothing);
}

// Validation ------------------------------------------------------------------------------------

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
    if (!m_validation)
        return;
    m_validating = true;
    const auto done = qScopeGuard([alive = QPointer<EditTextControl>(this)] {
        if (alive)
            alive->m_validating = false;
    });
    m_validation(Ref());
}

} // namespace platform
