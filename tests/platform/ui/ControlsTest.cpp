// SPDX-License-Identifier: BSD-3-Clause
// Values, titles, commands, state, places and looks of controls.
#include <cstring>
#include <limits>

#include <QAccessible>
#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

#include "platform/ui/UIFixture.h"

namespace {

using namespace platform;
using namespace test;

constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

using ControlsTest = UIFixture;

TEST_F(ControlsTest, ValuesStayWithinTheirBounds) {
    Control& stepper = On(MakeCustom("Stepper"));
    Control& check = On(Make<QCheckBox>());
    Control& push = On(Make<QPushButton>());
    struct Row {
        const char* what;
        Control& control;
        std::int32_t minimum, maximum, value, expected;
    };
    for (const Row& row : {
             Row { "inside", stepper, -5, 5, 3, 3 },
             Row { "above", stepper, -5, 5, 6, 5 },
             Row { "below", stepper, -5, 5, -6, -5 },
             Row { "widest", stepper, kLeast, kMost, kMost, kMost },
             Row { "bounds that cross", stepper, 9, 4, 100, 4 },
             Row { "checked harder", check, 0, 1, 7, 1 },
             Row { "a push button has none", push, 0, 0, 1, 0 },
         }) {
        row.control.SetMinimum(row.minimum);
        row.control.SetMaximum(row.maximum);
        row.control.SetValue(row.value);
        EXPECT_EQ(row.control.Value(), row.expected) << row.what;
    }
    stepper.SetMinimum(-50);
    stepper.SetMaximum(50);
    stepper.SetValue(50);
    stepper.SetMaximum(20);
    EXPECT_EQ(stepper.Value(), 20); // moved along with its bound
    for (const double seconds : { 0.0, -1.0, std::numeric_limits<double>::quiet_NaN() })
        EXPECT_EQ(stepper.SetRepeatInterval(seconds), kParamErr);
}

TEST_F(ControlsTest, TitlesMeanWhatTheySay) {
    auto* const named = new QLabel(QStringLiteral("Si&ze"), widget);
    named->setBuddy(new QLineEdit(widget));
    auto* const fromForm = new QPushButton(QStringLiteral("&Save && Close"), widget);
    EXPECT_EQ(On(Make(named)).Title(), "Size");
    EXPECT_EQ(On(Make(fromForm)).Title(), "Save & Close");
    for (QWidget* const titled :
         std::vector<QWidget*> { named, fromForm, new QCheckBox(widget), new QLabel(widget) }) {
        Control& control = On(Make(titled));
        for (const char* text : { "A & B", "&&", "<b>5</b>", "題名 & co", "two\rlines", "" }) {
            control.SetTitle(text);
            EXPECT_EQ(control.Title(), text);
        }
    }
    named->setBuddy(nullptr);
    EXPECT_EQ(On(Make(named)).SetText("one\rtwo"), kNoErr);
    EXPECT_EQ(named->text(), QStringLiteral("one\ntwo"));
}

// Commands ---------------------------------------------------------------------------------------

TEST_F(ControlsTest, APressIsAHitAndThenACommandThatGoesUp) {
    struct Row {
        const char* what;
        std::uint32_t commandID;
        OSStatus hit;
        const char* log;
    };
    for (const Row& row :
         { Row { "goes up", 77, kEventNotHandledErr, "hit 11 with 1 control window 77 from it " },
           Row { "handled", 77, kNoErr, "hit 11 with 1 " },
           Row { "without a command", 0, kEventNotHandledErr, "hit 11 with 1 " } }) {
        log.clear();
        const ControlRef button = Make<QCheckBox>();
        On(button).commandID = row.commandID;
        const ChainHandler hit(On(button).Target(), { kHit }, [&](EventRef event) {
            log += "hit " + std::to_string(PartOf(event)) + " with " +
                   std::to_string(On(button).Value()) + " ";
            return row.hit;
        });
        const ChainHandler atControl(On(button).Target(), { kCommand }, Logs("control"));
        const ChainHandler atWindow(At(window).Target(), { kCommand }, [&](EventRef event) {
            const HICommandExtended command = CommandOf(event);
            log += "window " + std::to_string(command.commandID) + " ";
            if (command.attributes == kHICommandFromControl && command.source.control == button)
                log += "from it ";
            return kNoErr;
        });
        QTest::keyClick(WidgetOf(button), Qt::Key_Space);
        EXPECT_EQ(log, row.log) << row.what;
        On(button).Dispose();
    }
}

TEST_F(ControlsTest, AHitMayEndItsControl) {
    for (QWidget* made : { static_cast<QWidget*>(new QPushButton(widget)),
                           static_cast<QWidget*>(new QCheckBox(widget)),
                           static_cast<QWidget*>(new QRadioButton(widget)),
                           MakeCustomWidget(QStringLiteral("ColorButton"), widget),
                           MakeCustomWidget(QStringLiteral("Stepper"), widget) }) {
        const ControlRef control = Make(made);
        On(control).commandID = 5;
        log.clear();
        const ChainHandler hit(On(control).Target(), { kHit }, [&](EventRef) {
            log += "hit ";
            On(control).Dispose();
            return kEventNotHandledErr;
        });
        const ChainHandler disposed(On(control).Target(), { kDisposed }, [&](EventRef) {
            log += "disposed ";
            On(control).Dispose(); // whole until its handlers are through, and once is enough
            return kEventNotHandledErr;
        });
        const ChainHandler command(At(window).Target(), { kCommand }, Logs("command"));
        QTest::mouseClick(made, Qt::LeftButton, {}, QPoint(8, 20)); // on a box as well
        EXPECT_EQ(log, "hit disposed ");
        EXPECT_EQ(Control::Find(control), nullptr);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(ControlsTest, EndsFromTheInsideOut) {
    const ControlRef outer = MakeCustom("UserPane");
    const ControlRef inner = Make<QPushButton>();
    const ControlRef innermost = Make<QLabel>();
    ASSERT_EQ(On(inner).EmbedIn(On(outer)), kNoErr);
    ASSERT_EQ(On(innermost).EmbedIn(On(inner)), kNoErr);
    EXPECT_EQ(On(outer).EmbedIn(On(inner)), kParamErr) << "into what lies in it";
    const ChainHandler first(On(outer).Target(), { kDisposed }, Logs("outer"));
    const ChainHandler second(On(inner).Target(), { kDisposed }, Logs("inner"));
    const ChainHandler third(On(innermost).Target(), { kDisposed }, Logs("innermost"));
    On(outer).Dispose();
    EXPECT_EQ(log, "innermost inner outer ");
    EXPECT_EQ(Control::Find(innermost), nullptr);
}

TEST_F(ControlsTest, AWidgetThatItsHostDeletesEndsItsControl) {
    auto* const made = new QCheckBox(widget);
    const ControlRef check = Make(made);
    const ChainHandler handler(On(check).Target(), { kDisposed }, [&](EventRef) {
        log += "disposed ";
        EXPECT_EQ(On(check).Value(), 0); // asks what is no check box any more
        return kEventNotHandledErr;
    });
    On(check).SetValue(1);
    delete made;
    EXPECT_EQ(log, "disposed ");
    EXPECT_EQ(Control::Find(check), nullptr);
}

// State ------------------------------------------------------------------------------------------

TEST_F(ControlsTest, EnablingAndActivationAreTwoThings) {
    Control& pane = On(MakeCustom("UserPane"));
    Control& button = On(Make<QPushButton>());
    ASSERT_EQ(button.EmbedIn(pane), kNoErr);
    struct Row {
        const char* what;
        void (Control::*set)(bool);
        bool value;
        Control& control;
        bool enabled, active, reacts;
    };
    for (const Row& row : {
             Row { "disabled", &Control::SetEnabled, false, button, false, true, false },
             Row { "deactivated too", &Control::SetActive, false, button, false, false, false },
             Row { "enabled again", &Control::SetEnabled, true, button, true, false, false },
             Row { "active again", &Control::SetActive, true, button, true, true, true },
             Row { "in a disabled pane", &Control::SetEnabled, false, pane, false, true, false },
             Row { "in an inactive pane", &Control::SetActive, false, pane, false, false, false },
             Row { "in an enabled one", &Control::SetEnabled, true, pane, true, false, false },
             Row { "as before", &Control::SetActive, true, pane, true, true, true },
         }) {
        (row.control.*row.set)(row.value);
        EXPECT_EQ(button.IsEnabled(), row.enabled) << row.what;
        EXPECT_EQ(button.IsActive(), row.active) << row.what;
        EXPECT_EQ(button.Widget().isEnabled(), row.reacts) << row.what;
    }
    button.SetVisible(true);
    EXPECT_TRUE(button.IsVisible()) << "in a hidden window as well";
    button.SetVisible(false);
    EXPECT_FALSE(button.IsVisible());
}

TEST_F(ControlsTest, PlacesAreLocalToTheWindowAndWinOverItsLayout) {
    Control& pane = *Control::Create(window, "UserPane", { 50, 60, 150, 260 });
    Control& button = *Control::Create(window, "QPushButton", { 70, 80, 90, 180 });
    ASSERT_EQ(button.EmbedIn(pane), kNoErr);
    EXPECT_EQ(button.Bounds().top, 70); // embedding moves nothing on the screen
    EXPECT_EQ(button.Bounds().left, 80);
    button.Move(100, 110);
    button.Resize(33, 22);
    EXPECT_EQ(button.Widget().geometry(), QRect(40, 60, 33, 22));
    EXPECT_EQ(button.Bounds().bottom, 132);
    EXPECT_EQ(button.Bounds().right, 133);

    auto* const inner = new QHBoxLayout;
    (new QVBoxLayout(widget))->addLayout(inner);
    inner->addWidget(&pane.Widget());
    widget->show();
    pane.Resize(90, 20);
    pane.Move(7, 5);
    widget->resize(widget->size() + QSize(50, 50));
    QCoreApplication::processEvents();
    EXPECT_EQ(pane.Widget().geometry(), QRect(7, 5, 90, 20));
}

// Looks ------------------------------------------------------------------------------------------

TEST_F(ControlsTest, OnlyTheNamedFieldsOfAFontStyleCount) {
    Control& label = On(Make<QLabel>());
    QWidget& shown = label.Widget();
    const bool boldBefore = shown.font().bold();
    ControlFontStyleRec style {};
    style.size = 31;
    style.style = 1;
    style.foreColor = { 65535, 0, 0 };
    style.flags = kControlUseSizeMask;
    label.SetFontStyle(style);
    EXPECT_EQ(shown.font().pixelSize(), 31);
    EXPECT_EQ(shown.font().bold(), boldBefore);
    EXPECT_NE(shown.palette().color(QPalette::WindowText), QColor(Qt::red));
    style.flags = kControlUseForeColorMask | kControlUseFaceMask;
    label.SetFontStyle(style);
    EXPECT_TRUE(shown.font().bold());
    EXPECT_EQ(shown.palette().color(QPalette::Active, QPalette::WindowText), QColor(Qt::red));
    EXPECT_NE(shown.palette().color(QPalette::Disabled, QPalette::WindowText),
              QColor(Qt::red)); // the disabled look stays
    EXPECT_EQ(label.SetSizeVariant(9), kParamErr);
    EXPECT_EQ(label.SetSizeVariant(kControlSizeSmall), kNoErr);
    EXPECT_LT(shown.font().pointSizeF(), QApplication::font(&shown).pointSizeF());
}

TEST_F(ControlsTest, AStyleSetAsItWasReadChangesNothing) {
    for (const ControlRef control :
         { Make<QLabel>(), Make<QLineEdit>(), Make<QPushButton>(), MakeCustom("UserPane") }) {
        const QFont font = WidgetOf(control)->font();
        const QPalette palette = WidgetOf(control)->palette();
        ControlFontStyleRec style = On(control).FontStyle();
        style.flags = kControlUseAllMask;
        On(control).SetFontStyle(style);
        EXPECT_EQ(WidgetOf(control)->font(), font);
        EXPECT_EQ(WidgetOf(control)->palette(), palette);
        // Greyed as a disabled field is.
        ASSERT_EQ(GetThemeTextColor(kThemeTextColorDialogInactive, &style.foreColor), kNoErr);
        On(control).SetFontStyle(style);
        const RGBColor now = On(control).FontStyle().foreColor;
        EXPECT_EQ(std::memcmp(&now, &style.foreColor, sizeof now), 0);
        EXPECT_NE(WidgetOf(control)->palette(), palette);
    }
}

TEST_F(ControlsTest, ScreenReadersHearNamesRolesAndValues) {
    auto* const stepper = MakeCustomWidget(QStringLiteral("Stepper"), widget);
    stepper->setToolTip(QStringLiteral("Opacity"));
    On(Make(stepper)).SetValue(42);
    auto* const color = MakeCustomWidget(QStringLiteral("ColorButton"), widget);
    auto* const label = new QLabel(QStringLiteral("&Text colour"), widget);
    label->setBuddy(color);
    color->setToolTip(QStringLiteral("click to choose"));
    EXPECT_EQ(On(Make(color)).SetColor({ 65535, 0, 0 }), kNoErr);
    QAccessibleInterface* const stepperSays = QAccessible::queryAccessibleInterface(stepper);
    QAccessibleInterface* const colorSays = QAccessible::queryAccessibleInterface(color);
    ASSERT_TRUE(stepperSays && colorSays);
    EXPECT_EQ(stepperSays->text(QAccessible::Name), QStringLiteral("Opacity"));
    EXPECT_EQ(stepperSays->role(), QAccessible::SpinBox);
    ASSERT_NE(stepperSays->valueInterface(), nullptr);
    EXPECT_EQ(stepperSays->valueInterface()->currentValue().toInt(), 42);
    EXPECT_EQ(colorSays->text(QAccessible::Name), QStringLiteral("Text colour"));
    EXPECT_EQ(colorSays->text(QAccessible::Description), QStringLiteral("#ff0000"));
}

} // namespace
