// SPDX-License-Identifier: BSD-3-Clause
// What can be typed, pasted and composed, what the owner is told, and numbers in and out.
#include "huxCommon/huxGUI/HuxEditText.h"

#include "huxCommon/HuxEditTextFixture.h"

using namespace platform;

namespace {

using HuxEditTextTest = test::HuxEditTextFixture;
using test::Drain;
using Type = HuxEditText::Type;

const std::string kAllKeys = "aZ0-.+,/\\;:\"*?<>| ";

TEST_F(HuxEditTextTest, EachTypeTakesItsOwnKeysAndCleansWhatIsPasted) {
    const char* const mixed = "a,b/;\"*?<>|\t\nc:\\";
    const struct {
        Type type;
        std::string typed, kept;
        const char *pasted, *cleaned;
    } rows[] = {
        { Type::kFreeText, kAllKeys, kAllKeys, "a\nb\t/", "a\rb\t/" },
        { Type::kFileName, kAllKeys, "aZ0-.+\\: ", mixed, "a,bc:\\" }, // the comma stays
        { Type::kPathlessName, kAllKeys, "aZ0-.+ ", mixed, "abc" },
        // A point may stand behind a sign.
        { Type::kSignedReal, ".-.1-.5.x", "-.15", " -1.5 px\n", "-1.5" },
        { Type::kUnsignedReal, ".-1.5.2x", "1.52", "-1.5e3", "1.53" },
        { Type::kSignedInteger, "--1-2.3x", "-123", "a-1.5", "-15" },
        { Type::kUnsignedInteger, "-+1.2x3", "123", "1a2-3", "123" },
        { Type::kUnsignedInteger, "x", "", "\uFF11\uFF12", "" }, // full-width digits
        { Type::kReserved, kAllKeys, kAllKeys, "a\nb\t", "ab\t" },
        { Type::kDigitsWithPlus, "+1-2.a+3", "+12+3", "+1a\n", "+1a" },
    };
    Focus(edit);
    for (const auto& row : rows) {
        field->SetType(row.type, false);
        edit->clear();
        Drain();
        QTest::keyClicks(edit, QString::fromStdString(row.typed));
        EXPECT_EQ(Text(), row.kept) << "type " << row.type;
        EXPECT_EQ(edit->inputMethodHints().testFlag(Qt::ImhLatinOnly),
                  row.type >= Type::kSignedReal);
        edit->clear();
        TakeLog();
        Paste(row.pasted);
        EXPECT_EQ(Text(), row.cleaned) << "type " << row.type << " pasted " << row.pasted;
        EXPECT_EQ(TakeLog(), "1 ");
        edit->clear();
        Drain();
        Compose(*edit, "\u306B", "");
        Compose(*edit, "", row.pasted);
        Drain();
        EXPECT_EQ(Text(), row.cleaned) << "type " << row.type << " composed " << row.pasted;
    }
    field->SetType(Type::kFreeText, true);
    edit->clear();
    Paste("a\nb");
    EXPECT_EQ(Text(), "ab") << "where Return is told";
}

TEST_F(HuxEditTextTest, LimitsHoldForKeysAndForEverythingElse) {
    field->SetType(Type::kPathlessName, false);
    Focus(edit);
    const std::string full(255, 'a');
    Paste((full + "bcd").c_str());
    EXPECT_EQ(Text(), full);
    const struct {
        const char* what;
        int key;
        long selected; // characters at the beginning
        std::size_t length;
        const char* told;
    } rows[] = {
        { "a letter", 'B', 0, 255, "" },
        { "an arrow", Qt::Key_Left, 0, 255, "1 " },
        { "Escape", Qt::Key_Escape, 0, 255, "1 3 " },
        { "a letter over a selection", 'B', 2, 254, "1 " },
        { "a letter that fits", 'C', 0, 255, "1 " },
        { "a bad letter over a selection", '/', 1, 255, "" },
        { "backspace", Qt::Key_Backspace, 1, 254, "1 " },
    };
    for (const auto& row : rows) {
        field->SetSelection(0, row.selected);
        TakeLog();
        QTest::keyClick(edit, static_cast<Qt::Key>(row.key));
        EXPECT_EQ(Text().size(), row.length) << row.what;
        EXPECT_EQ(TakeLog(), row.told) << row.what;
    }
    field->SetLimitText(4);
    field->SetText("ab\U0001F600\U0001F601");
    EXPECT_EQ(Text(), "ab\U0001F600");
    field->SetLimitText(5); // lies within the last character
    field->SetText("ab\U0001F600\U0001F601");
    EXPECT_EQ(Text(), "ab\U0001F600");
}

TEST_F(HuxEditTextTest, TellsOfReturnAndEscapeAndOfKeysThatTypeOrMove) {
    const struct {
        Type type;
        bool tellReturn;
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        const char* told;
    } rows[] = {
        { Type::kFreeText, false, Qt::Key_Return, {}, "1 " },
        { Type::kFreeText, true, Qt::Key_Return, {}, "2 " },
        { Type::kFreeText, true, Qt::Key_Enter, {}, "2 " },
        { Type::kFileName, false, Qt::Key_Enter, {}, "" },
        { Type::kUnsignedInteger, true, Qt::Key_Return, {}, "2 " },
        { Type::kUnsignedInteger, false, Qt::Key_Escape, {}, "1 3 " },
        { Type::kDigitsWithPlus, false, Qt::Key_Escape, {}, "3 " },
        { Type::kUnsignedInteger, false, Qt::Key_Left, {}, "1 " },
        { Type::kUnsignedInteger, false, Qt::Key_Right, Qt::ShiftModifier, "1 " },
        { Type::kUnsignedInteger, false, Qt::Key_Home, {}, "1 " },
        { Type::kUnsignedInteger, false, Qt::Key_End, {}, "1 " },
        { Type::kUnsignedInteger, false, Qt::Key_Delete, {}, "1 " },
        { Type::kDigitsWithPlus, false, Qt::Key_Left, {}, "" },
        // Commands of the program and of the window are not asked about.
        { Type::kFreeText, false, Qt::Key_A, Qt::ControlModifier, "" },
        { Type::kFreeText, false, Qt::Key_F5, {}, "" },
    };
    Focus(edit);
    for (const auto& row : rows) {
        field->SetType(row.type, row.tellReturn);
        TakeLog();
        QTest::keyClick(edit, row.key, row.modifiers);
        EXPECT_EQ(TakeLog(), row.told) << "type " << row.type << ", key " << row.key;
    }
    field->SetType(Type::kPathlessName, true);
    field->SetLimitText(2);
    field->SetText("ab");
    TakeLog();
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_EQ(TakeLog(), "2 ") << "full";
}

TEST_F(HuxEditTextTest, ShowsTheSuffixAndReadsTheValueBeforeIt) {
    field->SetType(false, 0, 0, 0, false);
    field->SetSuffix("px");
    field->SetInt(5);
    EXPECT_EQ(Text(), "5 px");
    char value[8];
    EXPECT_TRUE(field->GetText(value, sizeof value));
    EXPECT_STREQ(value, "5");
    EXPECT_FALSE(field->GetText(value, 0));
    const struct {
        const char *before, *pasted, *after;
        long start, end;
    } rows[] = {
        { "5", "1a2-3", "123 px", 0, -1 }, { "5", "1a", "15 px", 0, 0 },
        { "5", " 7 px", "7 px", 0, -1 },   { "5", "a", "5 px", 4, 4 },
        { "5", "7", "57 px", 4, 4 },       { "5", "x", " px", 0, -1 },
        { "5", "8", "8", 0, -1 }, // nothing to clean: the suffix comes when the focus leaves
    };
    Focus(edit);
    for (const auto& row : rows) {
        field->SetText(row.before);
        field->SetSelection(row.start, row.end);
        Paste(row.pasted);
        EXPECT_EQ(Text(), row.after) << row.pasted;
    }
    EXPECT_TRUE(field->CheckControlValue());
    EXPECT_EQ(Text(), "8 px");
}

TEST_F(HuxEditTextTest, CorrectsNumbersAndSaysSoOnce) {
    const struct {
        bool isReal;
        double max, min, def;
        const char *format, *text;
        bool valid;
        double value;
        const char *shown, *told;
    } rows[] = {
        { false, 100, 0, 0, "", "100", true, 100, "100", "" },
        { false, 100, 0, 0, "", "123", false, 100, "100", "beep 1 " },
        { false, 10, -5, 0, "", "-10", false, -5, "-5", "beep 1 " },
        { false, 99, 3, 36, "", "", false, 36, "36", "beep 1 " },
        // The default lies within the range.
        { false, 99, 3, 500, "", "", false, 99, "99", "beep 1 " },
        { false, 0, 0, 0, "", "4294967295", true, 4294967295, "4294967295", "" },
        { false, 0, 0, 0, "", "99999999999999999999", true, 4294967295, "99999999999999999999",
          "" },
        { false, 9, -1e300, 0, "", "-99999999999", true, -2147483648.0, "-99999999999", "" },
        { false, 1e300, -1, 0, "", "99999999999", true, 2147483647, "99999999999", "" },
        { true, 10, 0, 0, "", "3.14159", true, 3.1, "3.1", "1 " },
        { true, 10, 0, 0, "", "3.1", true, 3.1, "3.1", "" },
        { true, 10, 0, 0, "%.3f", "3.14159", true, 3.142, "3.142", "1 " },
        { true, 10, 0, 0, "%n%s", "3.14159", true, 3.1, "3.1", "1 " },
        { true, 10, -10, 0, "%.2f", "10.001", false, 10, "10.00", "beep 1 " },
        { true, 10, -10, 0, "", "-99", false, -10, "-10.0", "beep 1 " },
        { true, 10, 1, 2.5, "%g", "", false, 2.5, "2.5", "beep 1 " },
        // No range, no rounding.
        { true, 0, 0, 0, "", "1234567.891", true, 1234567.891, "1234567.891", "" },
    };
    for (const auto& row : rows) {
        field->SetType(row.isReal, row.max, row.min, row.def, false, row.format);
        field->SetText(row.text);
        TakeLog();
        double real = -7;
        long integer = -7;
        for (const bool report : { false, true }) {
            EXPECT_EQ(row.isReal ? field->GetDouble(real, report) : field->GetInt(integer, report),
                      row.valid)
                << row.text;
            EXPECT_EQ(Text(), report ? row.shown : row.text);
            EXPECT_EQ(TakeLog(), report ? row.told : "") << row.text;
        }
        const double given = row.valid || *row.text == '\0' ? row.value : -7;
        EXPECT_DOUBLE_EQ(row.isReal ? real : static_cast<double>(integer), given) << row.text;
        EXPECT_TRUE(!row.isReal || field->GetNumber(real)) << row.text;
        EXPECT_DOUBLE_EQ(row.isReal ? real : row.value, row.value) << row.text;
    }
}

TEST_F(HuxEditTextTest, MayEndInItsOwnNotices) {
    const struct {
        const char* what;
        std::function<void()> act;
    } rows[] = {
        { "pasted", [&] { Paste("1a"); } },
        { "set", [&] { field->SetText("5"); } },
        { "checked", [&] { field->CheckControlValue(); } },
        { "focus moved", [&] { otherEdit->setFocus(); } },
        { "disabled", [&] { field->Disable(); } },
        { "key", [&] { QTest::keyClick(edit, '5'); } },
    };
    for (const auto& row : rows) {
        field->SetType(false, 9, 3, 4, false);
        Focus(edit);
        edit->setText("1");
        Drain();
        const ControlRef control = field->GetControlRef();
        onNotice = [&](std::uint32_t commandID, long) {
            if (commandID == 70)
                Control::Find(control)->Dispose();
        };
        row.act();
        Drain();
        onNotice = nullptr;
        EXPECT_FALSE(Control::Find(control)) << row.what;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        field = NewField<HuxEditText>(&edit, 70);
    }
}

TEST_F(HuxEditTextTest, LetsGoOfTheControlWhenDetached) {
    const ControlRef control = field->GetControlRef();
    field->Detach();
    delete field;
    edit->setFocus();
    QTest::keyClicks(edit, "a/");
    Paste("b");
    EXPECT_EQ(edit->text(), "a/b");
    EXPECT_TRUE(Control::Find(control));
}

// The focus comes and goes, with values that may not stay ----------------------------------------

class HuxEditTextFocusTest : public test::HuxEditTextFixture {
protected:
    void SetUp() override {
        HuxEditTextFixture::SetUp();
        field->SetType(false, 100, 0, 50, false);
        other->SetType(true, 10, 0, 1, false);
        field->SetInt(1);
        other->SetDouble(1);
        Focus(edit);
    }
};

TEST_F(HuxEditTextFocusTest, ChecksTheValueWhenTheFocusLeaves) {
    const struct {
        const char *typed, *shown, *told;
    } rows[] = { { "123", "100", "beep 1 5 71:4 " },
                 { "", "50", "beep 1 5 71:4 " },
                 { "7", "7", "5 71:4 " },
                 { "007", "7", "1 5 71:4 " } };
    for (const auto& row : rows) {
        Enter(row.typed);
        TakeLog();
        QTest::keyClick(edit, Qt::Key_Tab);
        EXPECT_TRUE(otherEdit->hasFocus());
        EXPECT_EQ(Text(), row.shown) << row.typed;
        // The tab itself is a key that was passed, and its notice is posted.
        EXPECT_EQ(TakeLog(), std::string(row.told) + "1 ") << row.typed;
        edit->setFocus();
        EXPECT_EQ(TakeLog(), "71:5 4 ");
    }
}

TEST_F(HuxEditTextFocusTest, TwoInvalidFieldsDoNotFightForTheFocus) {
    // The owner answers every correction by going back to the field.
    int notices = 0;
    onNotice = [&](std::uint32_t commandID, long value) {
        if (++notices < 100 && value == kEditTextChanged)
            test::At(window).SetKeyboardFocus(
                Control::Find((commandID == 70 ? field : other)->GetControlRef()));
    };
    edit->setText("999");
    otherEdit->setText("999.9");
    otherEdit->setFocus();
    Drain();
    EXPECT_LT(notices, 20) << log;
    onNotice = nullptr;
    edit->setFocus();
    otherEdit->setFocus();
    Drain();
    EXPECT_EQ(Text(), "100");
    EXPECT_EQ(TextOf(*other), "10.0");
}

TEST_F(HuxEditTextFocusTest, IsLeftAloneWhileItMayNotBeChecked) {
    const struct {
        const char* what;
        std::function<void()> begin;
        std::function<void()> end;
    } rows[] = {
        { "unchecked", [&] { field->SetAutoCheck(false); }, [&] { field->SetAutoCheck(true); } },
        { "hidden", [&] { field->Hide(true); }, [&] { field->Show(true); } },
        { "disabled", [&] { field->Disable(); }, [&] { field->Enable(); } },
    };
    for (const auto& row : rows) {
        row.begin();
        edit->setText("999");
        EXPECT_TRUE(field->CheckControlValue()) << row.what;
        EXPECT_EQ(Text(), "999") << row.what;
        row.end();
    }
    Drain();
    EXPECT_FALSE(field->CheckControlValue());
    long start = 0, end = 0;
    EXPECT_TRUE(field->GetSelection(start, end));
    EXPECT_EQ(std::pair(start, end), std::pair(0L, 3L)) << "what was wrong is selected";
    Focus(edit);
    Enter("999");
    field->Disable();
    EXPECT_EQ(Text(), "100") << "it may be checked until then";
    EXPECT_FALSE(edit->hasFocus());
    field->Enable();
    Enter("5");
    EXPECT_EQ(Text(), "5");
}

TEST_F(HuxEditTextFocusTest, FollowsTheWindowsFocus) {
    Enter("999");
    TakeLog();
    const auto send = [&](std::uint32_t kind) {
        const HuxCarbonEvent event(kEventClassWindow, kind);
        SendEventToEventTarget(event.GetEventRef(), UIObject::TargetOf(window));
        return TakeLog();
    };
    EXPECT_EQ(send(kEventWindowFocusRelinquish), "beep 1 5 ");
    EXPECT_EQ(send(kEventWindowFocusAcquired), "4 ");
    test::At(window).SetKeyboardFocus(nullptr);
    EXPECT_EQ(TakeLog(), "5 ");
    EXPECT_EQ(send(kEventWindowFocusRelinquish), "");
}

} // namespace
