// SPDX-License-Identifier: BSD-3-Clause
// Edit fields of one line and of several, with keys, the clipboard and an input method.
#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTest>

#include "platform/ui/ControlsFixture.h"
#include "support/WindowRefs.h"

namespace {

using namespace platform;
using namespace test;

enum class Lines { kOne, kSeveral };

std::function<void(ControlRef)> s_validate;
std::string s_asked; // the codes that the filter was asked about

void Validate(ControlRef control) {
    const auto kept = s_validate; // which may end what it belongs to
    if (kept)
        kept(control);
}

ControlKeyFilterResult Filter(ControlRef, std::int16_t* keyCode, std::int16_t* charCode,
                              std::uint16_t*) {
    s_asked += std::to_string(*charCode);
    s_asked += *keyCode == static_cast<std::int16_t>(kVirtualKeyOther)
                   ? " "
                   : "@" + std::to_string(*keyCode) + " ";
    return *charCode == 'x' ? kControlKeyFilterBlockKey : kControlKeyFilterPassKey;
}

// Both kinds of fields behave alike, so every test runs with both.
class EditTextTest : public ControlsFixture, public testing::WithParamInterface<Lines> {
protected:
    void SetUp() override {
        ControlsFixture::SetUp();
        field = GetParam() == Lines::kOne ? Make<QLineEdit>() : Make<QPlainTextEdit>();
        other = Make<QLineEdit>();
        edit = WidgetOf(field);
        test::At(window).Show();
        test::At(window).Widget().window()->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(widget->window()));
        edit->setFocus();
        Edit().keyFilter = Filter;
        Edit().validation = ::Validate;
        s_asked.clear();
        s_validate = [this](ControlRef) { ++validations; };
    }
    void TearDown() override {
        ControlsFixture::TearDown();
        s_validate = nullptr;
    }

    // Letters go by the validation, as a field for digits has it.
    void WantDigits() {
        s_validate = [this](ControlRef control) {
            ++validations;
            std::string text = *On(control).Text();
            std::erase_if(text, [](char c) { return c < '0' || c > '9'; });
            On(control).SetText(text);
        };
    }
    void Type(const char* text) { QTest::keyClicks(edit, text); }
    void Paste(const char* text) {
        QApplication::clipboard()->setText(QString::fromUtf8(text));
        QTest::keySequence(edit, QKeySequence::Paste);
        QCoreApplication::processEvents();
    }
    void Undo() {
        QTest::keySequence(edit, QKeySequence::Undo);
        QCoreApplication::processEvents();
    }
    void Compose(const char* preedit, const char* commit) {
        QInputMethodEvent event(QString::fromUtf8(preedit), {});
        event.setCommitString(QString::fromUtf8(commit));
        QCoreApplication::sendEvent(edit, &event);
        QCoreApplication::processEvents();
    }
    EditField& Edit() { return *EditField::Find(field); }
    std::string Text() { return *On(field).Text(); }
    void SetText(const char* text) { EXPECT_EQ(On(field).SetText(text), kNoErr); }
    bool Do(std::uint32_t command) { return On(field).DoEditCommand(command); }
    std::pair<int, int> Selection() {
        const EditField::Span span = Edit().Selection();
        return { span.start, span.end };
    }

    ControlRef field = nullptr, other = nullptr;
    QWidget* edit = nullptr;
    int validations = 0;
};

INSTANTIATE_TEST_SUITE_P(Lines, EditTextTest, testing::Values(Lines::kOne, Lines::kSeveral),
                         [](const auto& lines) {
                             return lines.param == Lines::kOne ? "One" : "Several";
                         });

TEST_P(EditTextTest, GivesBackTheTextThatItWasGiven) {
    const struct {
        const char* set;
        const char* got;
    } rows[] = { { "", "" },
                 { "F.I.", "F.I." },
                 { "\u65E5\u672C\u8A9E \U0001F600", "\u65E5\u672C\u8A9E \U0001F600" },
                 { "a\rb\r", "a\rb\r" },
                 { "a\r\nb\nc", "a\rb\rc" },
                 { "no\u00A0break", "no\u00A0break" } };
    for (const auto& row : rows) {
        SetText(row.set);
        EXPECT_EQ(Text(), row.got) << row.set;
    }
}

TEST_P(EditTextTest, SelectsWholeCharacters) {
    SetText("a\U0001F600b"); // units 0, 1 with 2, 3
    const struct {
        int start, end;
        std::pair<int, int> selected;
    } rows[] = { { 0, -1, { 0, 4 } }, { 0, 1, { 0, 1 } },  { 1, 3, { 1, 3 } },
                 { 2, 2, { 1, 1 } },  { 2, 3, { 1, 3 } },  { 1, 2, { 1, 3 } },
                 { 9, 9, { 4, 4 } },  { -5, 1, { 0, 1 } }, { 3, 0, { 3, 3 } } };
    for (const auto& row : rows) {
        Edit().Select({ row.start, row.end });
        EXPECT_EQ(Selection(), row.selected) << row.start << " to " << row.end;
    }
}

TEST_P(EditTextTest, AsksTheFilterAboutKeysThatTypeOrMove) {
    const struct {
        int key;
        Qt::KeyboardModifiers modifiers;
        const char* text;
        const char* asked;
    } rows[] = { { Qt::Key_Q, Qt::NoModifier, "q", "113 " },
                 { Qt::Key_Q, Qt::ShiftModifier, "Q", "81 " },
                 { Qt::Key_Eacute, Qt::NoModifier, "\u00E9", "-1 " },
                 { Qt::Key_Home, Qt::NoModifier, "", "1@115 " },
                 { Qt::Key_End, Qt::NoModifier, "", "4@119 " },
                 { Qt::Key_Left, Qt::NoModifier, "", "28@123 " },
                 { Qt::Key_Right, Qt::ShiftModifier, "", "29@124 " },
                 { Qt::Key_Backspace, Qt::NoModifier, "\b", "8@51 " },
                 { Qt::Key_Delete, Qt::NoModifier, "\x7F", "127@117 " },
                 { Qt::Key_Return, Qt::NoModifier, "\r", "13@36 " },
                 { Qt::Key_Enter, Qt::NoModifier, "\r", "3@76 " },
                 { Qt::Key_Escape, Qt::NoModifier, "\x1B", "27@53 " },
                 { Qt::Key_A, Qt::ControlModifier, "", "" },
                 { Qt::Key_Q, Qt::AltModifier, "q", "" },
                 { Qt::Key_F5, Qt::NoModifier, "", "" } };
    for (const auto& row : rows) {
        s_asked.clear();
        QTest::sendKeyEvent(QTest::Click, edit, static_cast<Qt::Key>(row.key),
                            QString::fromUtf8(row.text), row.modifiers);
        EXPECT_EQ(s_asked, row.asked) << "key " << std::hex << row.key;
    }
}

TEST_P(EditTextTest, ValidatesEveryOtherChangeOnce) {
    const struct {
        const char* what;
        std::function<void()> act;
        std::string text;
    } rows[] = {
        { "set by call", [&] { SetText("one"); }, "one" },
        { "set to the same", [&] { SetText("one"); }, "" },
        { "pasted", [&] { Paste("two"); }, "twoone" },
        { "undone", [&] { Undo(); }, "one" },
        { "edit command", [&] { Do(kHICommandPaste); }, "twoone" },
        { "redone by command",
          [&] {
              Do(kHICommandUndo);
              validations = 0;
              Do(kHICommandRedo);
          },
          "twoone" },
        { "cleared",
          [&] {
              Edit().Select({ 0, 3 });
              Do(kHICommandClear);
          },
          "one" },
        { "a menu of the widget's own",
          [&] {
              QMetaObject::invokeMethod(edit, "paste");
              QCoreApplication::processEvents();
          },
          "twoone" },
        { "committed", [&] { Compose("", "\u65E5"); }, "\u65E5twoone" },
        { "looks",
          [&] {
              edit->setFont(QFont("Liberation Serif", 20));
              QCoreApplication::processEvents();
          },
          "" },
        { "copied",
          [&] {
              Do(kHICommandSelectAll);
              Do(kHICommandCopy);
          },
          "" },
    };
    for (const auto& row : rows) {
        Edit().Select({ 0, 0 });
        validations = 0;
        row.act();
        EXPECT_EQ(validations, row.text.empty() ? 0 : 1) << row.what;
        if (!row.text.empty())
            EXPECT_EQ(Text(), row.text) << row.what;
    }
    EXPECT_FALSE(Do(kHICommandOK));
}

TEST_P(EditTextTest, LetsTheUserUndoBehindACorrection) {
    WantDigits();
    Type("4");
    Paste("1a2-3");
    EXPECT_EQ(Text(), "4123");
    EXPECT_EQ(Selection(), std::pair(4, 4));
    Undo();
    EXPECT_EQ(Text(), "4");
    Undo();
    EXPECT_EQ(Text(), "");
    QTest::keySequence(edit, QKeySequence::Redo);
    QTest::keySequence(edit, QKeySequence::Redo);
    QCoreApplication::processEvents();
    EXPECT_EQ(Text(), "4123");
}

TEST_P(EditTextTest, KeepsUndoAndCaretWhenTheTextIsSet) {
    Type("4 cm");
    Edit().Select({ 1, 1 });
    SetText("15 cm");
    EXPECT_EQ(Selection(), std::pair(2, 2));
    SetText("15");
    EXPECT_EQ(Selection(), std::pair(2, 2));
    Undo();
    EXPECT_EQ(Text(), "15 cm");
    Undo();
    EXPECT_EQ(Text(), "4 cm");
    Edit().Select({ 0, -1 });
    SetText("\U0001F600");
    EXPECT_EQ(Selection(), std::pair(0, 2));
    SetText("\U0001F601"); // only the second halves differ
    EXPECT_EQ(Text(), "\U0001F601");
}

TEST_P(EditTextTest, LeavesACompositionAlone) {
    WantDigits();
    Type("1");
    Compose("\u306B", "");
    Compose("\u65E5\u672C", "");
    EXPECT_EQ(validations, 0);
    Compose("\u8A9E", "2\u65E5"); // the rest is still being composed
    EXPECT_EQ(validations, 0);
    EXPECT_EQ(Text(), "12\u65E5");
    Compose("", "");
    EXPECT_EQ(validations, 1);
    EXPECT_EQ(Text(), "12");
    Compose("\u306B", "");
    Compose("", ""); // given up: nothing has changed
    EXPECT_EQ(validations, 1);
    Compose("\u306B", "");
    SetText("7");
    Compose("", "8");
    EXPECT_EQ(Text(), "78");
}

TEST_P(EditTextTest, ChangesNothingWhenReadOnly) {
    SetText("text");
    Edit().SetReadOnly(true);
    Type("abc");
    Paste("more");
    Edit().Select({ 0, -1 });
    for (const std::uint32_t command :
         { kHICommandCut, kHICommandPaste, kHICommandClear, kHICommandUndo, kHICommandRedo })
        EXPECT_TRUE(Do(command));
    EXPECT_EQ(Text(), "text");
    SetText("by call");
    EXPECT_EQ(Text(), "by call");
}

TEST_P(EditTextTest, LetsTheTabKeyLeave) {
    QTest::keyClick(edit, Qt::Key_Tab);
    EXPECT_TRUE(WidgetOf(other)->hasFocus());
    EXPECT_EQ(Text(), "");
}

TEST_P(EditTextTest, MayEndInItsOwnValidation) {
    s_validate = [](ControlRef control) { On(control).Dispose(); };
    Paste("text");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Control::Find(field), nullptr);
}

} // namespace
