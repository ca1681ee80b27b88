// SPDX-License-Identifier: BSD-3-Clause
// What can be typed, pasted and composed, what the owner is told, and numbers in and out.
#include "huxCommon/huxGUI/HuxEditText.h"

#include "huxCommon/HuxEditTextFixture.h"

using namespace platform;

namespace {

using HuxEditTextTest = test::HuxEditTextFixture;
using Type = HuxEditText::Type;

const std::string kAllKeys = "aZ0-.+,/\\;:\"*?<>| ";

TEST_F(HuxEditTextTest, EachTypeTakesItsOwnKeys) {
    const struct {
        Type type;
        std::string typed, kept;
    } rows[] = {
        { Type::kFreeText, kAllKeys, kAllKeys },
        { Type::kFileName, kAllKeys, "aZ0-.+\\: " },
        { Type::kPathlessName, kAllKeys, "aZ0-.+ " },
        { Type::kSignedReal, ".-.1-.5.x", "-.15" }, // a point may stand behind a sign
        { Type::kUnsignedReal, ".-1.5.2x", "1.52" },
        { Type::kSignedInteger, "--1-2.3x", "-123" },
        { Type::kUnsignedInteger, "-+1.2x3", "123" },
        { Type::kReserved, kAllKeys, kAllKeys },
        { Type::kDigitsWithPlus, "+1-2.a+3", "+12+3" },
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
    }
}

TEST_F(HuxEditTextTest, EachTypeCleansWhatIsPasted) {
    const struct {
        Type type;
        bool tellReturn;
        const char *pasted, *kept;
    } rows[] = {
        { Type::kFreeText, false, "a\nb\t/", "a\rb\t/" },
        { Type::kFreeText, true, "a\nb\t/", "ab\t/" },
        { Type::kFileName, false, "a,b/;\"*?<>|\t\nc:\\", "a,bc:\\" }, // the comma stays
        { Type::kPathlessName, false, "a,b/;\"*?<>|\t\nc:\\", "abc" },
        { Type::kSignedReal, false, " -1.5 px\n", "-1.5" },
        { Type::kUnsignedReal, false, "-1.5e3", "1.53" },
        { Type::kSignedInteger, false, "a-1.5", "-15" },
        { Type::kUnsignedInteger, false, "1a2-3", "123" },
        { Type::kUnsignedInteger, false, "\uFF11\uFF12", "" }, // full-width digits
        { Type::kReserved, false, "a\nb\t", "ab\t" },
        { Type::kDigitsWithPlus, false, "+1a\n", "+1a" },
    };
    Focus(edit);
    for (const auto& row : rows) {
        field->SetType(row.type, row.tellReturn);
        edit->clear();
        TakeLog();
        Paste(row.pasted);
        EXPECT_EQ(Text(), row.kept) << "type " << row.type << " pasted " << row.pasted;
        EXPECT_EQ(TakeLog(), "1 ");
        edit->clear();
        Drain();
        Commit("\u306B", row.pasted);
        EXPECT_EQ(Text(), row.kept) << "type " << row.type << " composed " << row.pasted;
    }
}

TEST_F(HuxEditTextTest, LimitsHoldForKeysAndForEverythingElse) {
    field->SetType(Type::kPathlessName, false);
    Focus(edit);
    const std::string full(255, 'a');
    Paste((full + "bcd").c_str());
    EXPECT_EQ(Text(), full);
    const struct {
        const char* what;
        std::function<void()> act;
        std::size_t length;
        const char* told;
    } rows[] = {
        { "a letter", [&] { QTest::keyClick(edit, 'b'); }, 255, "" },
        { "an arrow", [&] { QTest::keyClick(edit, Qt::Key_Left); }, 255, "1 " },
        { "Escape", [&] { QTest::keyClick(edit, Qt::Key_Escape); }, 255, "1 3 " },
        { "a letter over a selection",
          [&] {
              field->SetSelection(0, 2);
              QTest::keyClick(edit, 'b');
          },
          254, "1 " },
        { "a letter that fits", [&] { QTest::keyClick(edit, 'c'); }, 255, "1 " },
        { "a bad letter over a selection",
          [&] {
              field->SetSelection(0, 1);
              QTest::keyClick(edit, '/');
          },
          255, "" },
        { "backspace", [&] { QTest::keyClick(edit, Qt::Key_Backspace); }, 254, "1 " },
    };
    TakeLog();
    for (const auto& row : rows) {
        row.act();
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

TEST_F(HuxEditTextTest, TellsOfReturnAndEscape) {
    const struct {
        Type type;
        bool tellReturn;
        Qt::Key key;
        const char* told;
    } rows[] = {
        { Type::kFreeText, false, Qt::Key_Return, "1 " },
        { Type::kFreeText, true, Qt::Key_Return, "2 " },
        { Type::kFreeText, true, Qt::Key_Enter, "2 " },
        { Type::kFileName, false, Qt::Key_Enter, "" },
        { Type::kUnsignedInteger, true, Qt::Key_Return, "2 " },
        { Type::kUnsignedInteger, false, Qt::Key_Escape, "1 3 " },
        { Type::kDigitsWithPlus, false, Qt::Key_Escape, "3 " },
        { Type::kUnsignedInteger, false, Qt::Key_Left, "1 " },
        { Type::kDigitsWithPlus, false, Qt::Key_Left, "" },
    };
    Focus(edit);
    for (const auto& row : rows) {
        field->SetType(row.type, row.tellReturn);
        TakeLog();
        QTest::keyClick(edit, row.key);
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
    unsigned char pascal[256];
    EXPECT_TRUE(field->GetText(pascal, true));
    EXPECT_EQ(std::string(pascal, pascal + 5), "\4"
                                               "5 px");
    CFStringRef string = nullptr;
    EXPECT_TRUE(field->GetText(&string));
    EXPECT_EQ(HuxString::Adopt(string), HuxString("5"));

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

TEST_F(HuxEditTextTest, CorrectsIntegersAndSaysSoOnce) {
    const struct {
        double max, min, def;
        const char* text;
        bool valid;
        long value;
        const char *shown, *told;
    } rows[] = {
        { 100, 0, 0, "100", true, 100, "100", "" },
        { 100, 0, 0, "123", false, -7, "100", "beep 1 " },
        { 10, -5, 0, "-10", false, -7, "-5", "beep 1 " },
        { 99, 3, 36, "", false, 36, "36", "beep 1 " },
        { 99, 3, 500, "", false, 99, "99", "beep 1 " }, // the default lies within the range
        { 0, 0, 0, "123456", true, 123456, "123456", "" },
        { 0, 0, 0, "4294967295", true, 4294967295, "4294967295", "" },
        { 0, 0, 0, "99999999999999999999", true, 4294967295, "99999999999999999999", "" },
        { 9, -1e300, 0, "-99999999999", true, -2147483648, "-99999999999", "" },
        { 1e300, -1, 0, "99999999999", true, 2147483647, "99999999999", "" },
    };
    for (const auto& row : rows) {
        field->SetType(false, row.max, row.min, row.def, false);
        field->SetText(row.text);
        TakeLog();
        long value = -7;
        EXPECT_EQ(field->GetInt(value, false), row.valid) << row.text;
        EXPECT_EQ(TakeLog(), "") << "without report";
        EXPECT_EQ(Text(), row.text) << "without report";
        EXPECT_EQ(field->GetInt(value, true), row.valid) << row.text;
        EXPECT_EQ(value, row.value) << row.text;
        EXPECT_EQ(Text(), row.shown) << row.text;
        EXPECT_EQ(TakeLog(), row.told) << row.text;
    }
}

TEST_F(HuxEditTextTest, CorrectsAndRoundsRealNumbers) {
    const struct {
        double max, min;
        const char *format, *text;
        bool valid;
        double value;
        const char *shown, *told;
    } rows[] = {
        { 10, 0, "", "3.14159", true, 3.1, "3.1 s", "1 " },
        { 10, 0, "", "3.1", true, 3.1, "3.1 s", "" },
        { 10, 0, "%.3f", "3.14159", true, 3.142, "3.142 s", "1 " },
        { 10, 0, "%n%s", "3.14159", true, 3.1, "3.1 s", "1 " },
        { 10, -10, "%.2f", "10.001", false, 10, "10.00 s", "beep 1 " },
        { 10, -10, "", "-99", false, -10, "-10.0 s", "beep 1 " },
        { 10, 1, "%g", "", false, 2.5, "2.5 s", "beep 1 " },
        { 0, 0, "", "1234567.891", true, 1234567.891, "1234567.891 s",
          "" }, // no range, no rounding
    };
    for (const auto& row : rows) {
        const double def = row.min == 1 ? 2.5 : 0;
        field->SetSuffix("s");
        field->SetType(true, row.max, row.min, def, false, row.format);
        field->SetText(row.text);
        TakeLog();
        double value = -7;
        EXPECT_EQ(field->GetDouble(value, true), row.valid) << row.text;
        EXPECT_EQ(Text(), row.shown) << row.text;
        EXPECT_EQ(TakeLog(), row.told) << row.text;
        if (row.valid || *row.text == '\0') {
            EXPECT_DOUBLE_EQ(value, row.value) << row.text;
        } else {
            EXPECT_EQ(value, -7) << row.text;
        }
        value = -7;
        EXPECT_TRUE(field->GetNumber(value));
        EXPECT_DOUBLE_EQ(value, row.value) << row.text;
    }
}

TEST_F(HuxEditTextTest, WritesNumbersByTheFormatOfItsType) {
    const struct {
        bool isReal;
        const char *own, *given, *shown;
    } rows[] = { { true, "%.2f", "%.5f", "1.50" }, // a field for real numbers goes by its own
                 { true, "", "%.5f", "1.5" },
                 { false, "%.2f", "%.0e", "2e+00" },
                 { false, "%.2f", nullptr, "1.5" } };
    for (const auto& row : rows) {
        field->SetType(row.isReal, 9, -9, 0, false, row.own);
        field->SetType(row.isReal ? Type::kSignedReal : Type::kFreeText, false);
        field->SetDouble(1.5, row.given);
        EXPECT_EQ(Text(), row.shown);
    }
    field->SetType(Type::kSignedInteger, false);
    field->SetSInt(-5);
    EXPECT_EQ(Text(), "-5");
    field->SetInt(3000000000UL);
    EXPECT_EQ(Text(), "3000000000");
}

TEST_F(HuxEditTextTest, MayEndInItsOwnNotices) {
    const struct {
        const char* what;
        std::function<void()> act;
    } rows[] = {
        { "pasted", [&] { Paste("1a"); } },
        { "set", [&] { field->SetText("5"); } },
        { "corrected",
          [&] {
              long value = 0;
              field->GetInt(value, true);
          } },
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
        ControlRef const control = field->GetControlRef();
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
        edit->show();
    }
}

TEST_F(HuxEditTextTest, LetsGoOfTheControlWhenDetached) {
    ControlRef const control = field->GetControlRef();
    field->Detach();
    delete field;
    edit->setFocus();
    QTest::keyClicks(edit, "a/");
    Paste("b");
    EXPECT_EQ(edit->text(), "a/b");
    EXPECT_TRUE(Control::Find(control));
}

} // namespace
