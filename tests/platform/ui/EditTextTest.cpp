// SPDX-License-Identifier: BSD-3-Clause
// Edit fields of one line and of several, with keys, the clipboard and an input method.
#include <QPlainTextEdit>

#include "platform/ui/UIFixture.h"

namespace {

using namespace platform;
using namespace test;

enum class Lines { kOne, kSeveral };

std::function<void(ControlRef)> s_validate;

void Validate(ControlRef control) {
    const auto kept = s_validate; // which may end what it belongs to
    if (kept)
        kept(control);
}

// Both kinds of fields behave alike, so every test runs with both.
class EditTextTest : public UIFixture, public testing::WithParamInterface<Lines> {
protected:
    void SetUp() override {
        UIFixture::SetUp();
        field = GetParam() == Lines::kOne ? Make<QLineEdit>() : Make<QPlainTextEdit>();
        edit = WidgetOf(field);
        Activate(window);
        edit->setFocus();
        Edit().validation = ::Validate;
        s_validate = [this](ControlRef) { ++validations; };
    }
    void TearDown() override {
        UIFixture::TearDown();
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
        PasteInto(*edit, text);
        QCoreApplication::processEvents();
    }
    void Undo() {
        QTest::keySequence(edit, QKeySequence::Undo);
        QCoreApplication::processEvents();
    }
    void Compose(const char* preedit, const char* commit) {
        UIFixture::Compose(*edit, preedit, commit);
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

    ControlRef field = nullptr;
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

TEST_P(EditTextTest, ValidatesEveryOtherChangeOnce) {
    const struct {
        const char* what;
        int selected; // characters at the beginning
        std::function<void()> act;
        std::string text;
    } rows[] = {
        { "set by call", 0, [&] { SetText("one"); }, "one" },
        { "set to the same", 0, [&] { SetText("one"); }, "" },
        { "pasted", 0, [&] { Paste("two"); }, "twoone" },
        { "undone", 0, [&] { Undo(); }, "one" },
        { "edit command", 0, [&] { Do(kHICommandPaste); }, "twoone" },
        { "undone by command", 0, [&] { Do(kHICommandUndo); }, "one" },
        { "redone by command", 0, [&] { Do(kHICommandRedo); }, "twoone" },
        { "cleared", 3, [&] { Do(kHICommandClear); }, "one" },
        { "a menu of the widget's own", 0, [&] { QMetaObject::invokeMethod(edit, "paste"); },
          "twoone" },
        { "committed", 0, [&] { Compose("", "\u65E5"); }, "\u65E5twoone" },
        { "looks", 0, [&] { edit->setFont(QFont("Liberation Serif", 20)); }, "" },
        { "copied", 3, [&] { Do(kHICommandCopy); }, "" },
    };
    for (const auto& row : rows) {
        Edit().Select({ 0, row.selected });
        validations = 0;
        row.act();
        QCoreApplication::processEvents();
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

TEST_P(EditTextTest, MayEndInItsOwnValidation) {
    s_validate = [](ControlRef control) { On(control).Dispose(); };
    Paste("text");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Control::Find(field), nullptr);
}

} // namespace
