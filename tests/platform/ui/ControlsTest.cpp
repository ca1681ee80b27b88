// SPDX-License-Identifier: BSD-3-Clause
// Values, titles, data, commands, state, places and looks of controls.
#include <limits>

#include <QAccessible>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QVBoxLayout>

#include "platform/ui/ControlsFixture.h"
#include "platform/ui/QtStrings.h"
#include "platform/ui/controls/ColorButton.h"

namespace {

using namespace platform;
using namespace test;

constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

using ControlsTest = ControlsFixture;

CFStringRef Text(const char* utf8) {
    return CFStringCreateWithUTF8(utf8);
}

std::string TakeUTF8(CFStringRef string) {
    const std::string text(CFStringGetUTF8(string));
    CFRelease(string);
    return text;
}

// Values and titles -----------------------------------------------------------------------------

TEST_F(ControlsTest, ValuesStayWithinTheirBounds) {
    const ControlRef stepper = MakeCustom("Stepper");
    const ControlRef check = Make<QCheckBox>();
    const ControlRef push = Make<QPushButton>();
    struct Row {
        const char* what;
        ControlRef control;
        std::int32_t minimum, maximum, value, expected;
    };
    for (const Row& row : {
             Row { "inside", stepper, -5, 5, 3, 3 },
             Row { "above", stepper, -5, 5, 6, 5 },
             Row { "below", stepper, -5, 5, -6, -5 },
             Row { "widest", stepper, kLeast, kMost, kMost, kMost },
             Row { "bounds that cross", stepper, 9, 4, 100, 4 },
             Row { "checked", check, 0, 1, 1, 1 },
             Row { "checked harder", check, 0, 1, 7, 1 },
             Row { "unchecked", check, 0, 1, -1, 0 },
             Row { "a push button has none", push, 0, 0, 1, 0 },
         }) {
        SetControl32BitMinimum(row.control, row.minimum);
        SetControl32BitMaximum(row.control, row.maximum);
        SetControl32BitValue(row.control, row.value);
        EXPECT_EQ(GetControl32BitValue(row.control), row.expected) << row.what;
    }
    SetControl32BitMinimum(stepper, -50);
    SetControl32BitMaximum(stepper, 50);
    SetControl32BitValue(stepper, 50);
    SetControl32BitMaximum(stepper, 20);
    EXPECT_EQ(GetControl32BitValue(stepper), 20); // moved along with its bound
}

TEST_F(ControlsTest, TitlesMeanWhatTheySay) {
    auto* const named = new QLabel(QStringLiteral("Si&ze"), widget);
    named->setBuddy(new QLineEdit(widget));
    auto* const fromForm = new QPushButton(QStringLiteral("&Save && Close"), widget);
    struct Row {
        ControlRef control;
        const char* before;
    };
    for (const Row& row : { Row { Make<QPushButton>(), "" }, Row { Make<QCheckBox>(), "" },
                            Row { Make<QLabel>(), "" }, Row { Make(named), "Size" },
                            Row { Make(fromForm), "Save & Close" } }) {
        CFStringRef title = nullptr;
        ASSERT_EQ(CopyControlTitleAsCFString(row.control, &title), kNoErr);
        EXPECT_EQ(TakeUTF8(title), row.before);
        for (const char* text : { "A & B", "&&", "<b>5</b>", "題名 & co", "two\rlines", "" }) {
            title = Text(text);
            EXPECT_EQ(SetControlTitleWithCFString(row.control, title), kNoErr);
            CFRelease(title);
            CopyControlTitleAsCFString(row.control, &title);
            EXPECT_EQ(TakeUTF8(title), text);
        }
    }
}

// Data ------------------------------------------------------------------------------------------

TEST_F(ControlsTest, DataOfTheWrongSizeOrTagAreRefused) {
    const ControlRef label = Make<QLabel>();
    const ControlRef color = MakeCustom("ColorButton");
    const ControlRef stepper = MakeCustom("Stepper");
    const ControlRef push = Make<QPushButton>();
    constexpr OSType kUnknown = 0x3F3F3F3F;
    struct Row {
        ControlRef control;
        OSType tag;
        std::uint32_t size;
        OSStatus status;
    };
    const double halfSecond = 0.5;
    std::uint8_t data[16] = {};
    std::memcpy(data, &halfSecond, sizeof halfSecond);
    for (const Row& row : {
             Row { label, kControlTextCFString, sizeof(void*) - 1, kErrDataSize },
             Row { label, kControlTextCFString, 0, kErrDataSize },
             Row { color, kControlColor, sizeof(RGBColor), kNoErr },
             Row { color, kControlColor, sizeof(RGBColor) + 1, kErrDataSize },
             Row { stepper, kControlRepeatInterval, sizeof(double), kNoErr },
             Row { stepper, kControlRepeatInterval, sizeof(float), kErrDataSize },
             Row { stepper, kControlColor, sizeof(RGBColor), kErrDataNotSupported },
             Row { push, kUnknown, 1, kErrDataNotSupported },
             Row { nullptr, kControlColor, sizeof(RGBColor), kErrInvalidControl },
         })
        EXPECT_EQ(SetControlData(row.control, 0, row.tag, row.size, data), row.status)
            << std::hex << row.tag << " of " << row.size;
    EXPECT_EQ(SetControlData(color, 0, kControlColor, sizeof(RGBColor), nullptr), kParamErr);
    const CFStringRef none = nullptr;
    EXPECT_EQ(SetControlData(label, 0, kControlTextCFString, sizeof none, &none), kParamErr);
    for (const double seconds : { 0.0, -1.0, std::numeric_limits<double>::quiet_NaN() })
        EXPECT_EQ(SetControlData(stepper, 0, kControlRepeatInterval, sizeof seconds, &seconds),
                  kParamErr);
}

TEST_F(ControlsTest, DataComeBackAsTheyWereSet) {
    const ControlRef color = MakeCustom("ColorButton");
    const RGBColor odd { 0x1234, 0xFFFF, 0x0001 };
    ASSERT_EQ(SetControlData(color, 0, kControlColor, sizeof odd, &odd), kNoErr);
    RGBColor got {};
    std::uint32_t size = 0;
    EXPECT_EQ(GetControlData(color, 0, kControlColor, sizeof got, &got, &size), kNoErr);
    EXPECT_EQ(std::memcmp(&got, &odd, sizeof odd), 0);
    EXPECT_EQ(size, sizeof odd);
    size = 0;
    EXPECT_EQ(GetControlData(color, 0, kControlColor, 0, nullptr, &size), kNoErr);
    EXPECT_EQ(size, sizeof odd);
    EXPECT_EQ(GetControlData(color, 0, kControlColor, sizeof odd - 1, &got, nullptr), kErrDataSize);
    EXPECT_EQ(GetControlData(color, 0, kControlColor, 0, &got, nullptr), kErrDataSize);

    const ControlRef label = Make<QLabel>();
    const CFStringRef lines = Text("one\rtwo");
    ASSERT_EQ(SetControlData(label, 0, kControlTextCFString, sizeof lines, &lines), kNoErr);
    CFRelease(lines);
    EXPECT_EQ(qobject_cast<QLabel*>(WidgetOf(label))->text(), QStringLiteral("one\ntwo"));
    CFStringRef back = nullptr;
    EXPECT_EQ(GetControlData(label, 0, kControlTextCFString, sizeof back, &back, nullptr), kNoErr);
    EXPECT_EQ(TakeUTF8(back), "one\rtwo");
}

TEST_F(ControlsTest, PropertiesAreKeptBytes) {
    const ControlRef push = Make<QPushButton>();
    std::uint32_t value = 7, size = 0;
    EXPECT_EQ(GetControlProperty(push, 1, 2, sizeof value, &size, &value), kParamErr);
    ASSERT_EQ(SetControlProperty(push, 1, 2, sizeof value, &value), kNoErr);
    value = 0;
    EXPECT_EQ(GetControlProperty(push, 1, 2, sizeof value, &size, &value), kNoErr);
    EXPECT_EQ(value, 7U);
    EXPECT_EQ(RemoveControlProperty(push, 1, 2), kNoErr);
    EXPECT_EQ(GetControlProperty(push, 1, 2, 0, &size, nullptr), kParamErr);
    EXPECT_EQ(SetControlProperty(push, 1, 2, 4, nullptr), kParamErr);
}

// Finding ---------------------------------------------------------------------------------------

TEST_F(ControlsTest, AreFoundByIdWithinTheirWindow) {
    const ControlRef first = Make<QPushButton>();
    const ControlRef second = Make<QPushButton>();
    constexpr ControlID kId { 0x56454C4D, 101 };
    ControlID got {};
    EXPECT_EQ(GetControlID(first, &got), kErrControlNotFound);
    SetControlID(second, kId);
    SetControlID(first, kId);
    ControlRef found = nullptr;
    EXPECT_EQ(GetControlByID(window, kId, &found), kNoErr);
    EXPECT_EQ(found, first); // the older one
    EXPECT_EQ(GetControlByID(window, { 0x56454C4D, 102 }, &found), kErrControlNotFound);
    EXPECT_EQ(found, nullptr);

    auto* const otherWidget = new QWidget;
    const WindowRef other = (new Window(*otherWidget))->Ref();
    EXPECT_EQ(GetControlByID(other, kId, &found), kErrControlNotFound);
    delete otherWidget;
    EXPECT_EQ(GetControlByID(other, kId, &found), kErrInvalidWindow);
}

TEST_F(ControlsTest, AControlThatIsGoneGivesAStatus) {
    const ControlRef gone = Make<QCheckBox>();
    ASSERT_EQ(DisposeControl(gone), kNoErr);
    EXPECT_FALSE(IsValidControlHandle(gone));
    EXPECT_EQ(DisposeControl(gone), kErrInvalidControl);
    EXPECT_EQ(EnableControl(gone), kErrInvalidControl);
    EXPECT_EQ(DrawOneControl(gone), kErrInvalidControl);
    EXPECT_EQ(MoveControl(gone, 1, 1), kErrInvalidControl);
    EXPECT_EQ(EmbedControl(gone, gone), kErrInvalidControl);
    EXPECT_EQ(SetControlTitleWithCFString(gone, nullptr), kErrInvalidControl);
    EXPECT_EQ(GetControlEventTarget(gone), nullptr);
    EXPECT_EQ(GetControl32BitValue(gone), 0);
    EXPECT_FALSE(IsControlVisible(gone) || IsControlEnabled(gone) || IsControlActive(gone));
    // A number that is none of a control's is as good as gone.
    EXPECT_EQ(EnableControl(reinterpret_cast<ControlRef>(window)), kErrInvalidControl);
}

// Commands --------------------------------------------------------------------------------------

TEST_F(ControlsTest, APressIsAHitAndThenACommandThatGoesUp) {
    const ControlRef button = Make<QPushButton>();
    SetControlCommandID(button, 77);
    std::string log;
    const Handler hit(GetControlEventTarget(button), { kHit }, [&](EventRef event) {
        log += "hit " + std::to_string(PartOf(event)) + ", ";
        return kEventNotHandledErr;
    });
    HICommandExtended command {};
    std::uint32_t modifiers = 0;
    const Handler atControl(GetControlEventTarget(button), { kCommand }, [&](EventRef) {
        log += "control, ";
        return kEventNotHandledErr;
    });
    const Handler atWindow(GetWindowEventTarget(window), { kCommand }, [&](EventRef event) {
        log += "window";
        command = CommandOf(event);
        EXPECT_EQ(GetEventParameter(event, kEventParamKeyModifiers, kTypeUInt32, nullptr,
                                    sizeof modifiers, nullptr, &modifiers),
                  kNoErr);
        return kNoErr;
    });
    QTest::mouseClick(WidgetOf(button), Qt::LeftButton);
    EXPECT_EQ(log, "hit 10, control, window");
    EXPECT_EQ(command.attributes, kHICommandFromControl);
    EXPECT_EQ(command.commandID, 77U);
    EXPECT_EQ(command.source.control, button);
}

TEST_F(ControlsTest, NoCommandFollowsWithoutOneOrAfterAHandledHit) {
    for (const bool handled : { true, false }) {
        const ControlRef button = Make<QCheckBox>();
        SetControlCommandID(button, handled ? 5 : 0);
        int commands = 0;
        std::int32_t valueAtHit = -1;
        const Handler hit(GetControlEventTarget(button), { kHit }, [&](EventRef) {
            valueAtHit = GetControl32BitValue(button);
            return handled ? kNoErr : kEventNotHandledErr;
        });
        const Handler command(GetWindowEventTarget(window), { kCommand }, [&](EventRef) {
            ++commands;
            return kNoErr;
        });
        QTest::keyClick(WidgetOf(button), Qt::Key_Space);
        EXPECT_EQ(valueAtHit, 1) << "the value has changed by then";
        EXPECT_EQ(commands, 0);
        DisposeControl(button);
    }
}

TEST_F(ControlsTest, AHitMayEndItsControl) {
    for (QWidget* made : { static_cast<QWidget*>(new QPushButton(widget)),
                           static_cast<QWidget*>(new QCheckBox(widget)),
                           static_cast<QWidget*>(new QRadioButton(widget)),
                           MakeCustomWidget(QStringLiteral("ColorButton"), widget),
                           MakeCustomWidget(QStringLiteral("Stepper"), widget) }) {
        const ControlRef control = Make(made);
        SetControlCommandID(control, 5);
        std::string log;
        const Handler hit(GetControlEventTarget(control), { kHit }, [&](EventRef) {
            log += "hit ";
            DisposeControl(control);
            return kEventNotHandledErr;
        });
        const Handler disposed(GetControlEventTarget(control), { kDisposed }, [&](EventRef) {
            log += "disposed ";
            EXPECT_TRUE(IsValidControlHandle(control)); // whole until its handlers are through
            DisposeControl(control);                    // once is enough
            return kEventNotHandledErr;
        });
        const Handler command(GetWindowEventTarget(window), { kCommand }, [&](EventRef) {
            log += "command ";
            return kNoErr;
        });
        QTest::mouseClick(made, Qt::LeftButton, {}, QPoint(8, 20)); // on a box as well
        EXPECT_EQ(log, "hit disposed ");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(ControlsTest, EndsFromTheInsideOut) {
    const ControlRef outer = MakeCustom("UserPane");
    const ControlRef inner = Make<QPushButton>();
    const ControlRef innermost = Make<QLabel>();
    ASSERT_EQ(EmbedControl(inner, outer), kNoErr);
    ASSERT_EQ(EmbedControl(innermost, inner), kNoErr);
    std::string log;
    std::vector<std::unique_ptr<Handler>> handlers;
    const auto watch = [&](const char* name, ControlRef control) {
        handlers.push_back(std::make_unique<Handler>(
            GetControlEventTarget(control), std::vector { kDisposed }, [&log, name](EventRef) {
                log += name;
                return kEventNotHandledErr;
            }));
    };
    watch("outer", outer);
    watch("inner ", inner);
    watch("innermost ", innermost);
    DisposeControl(outer);
    EXPECT_EQ(log, "innermost inner outer");
    EXPECT_FALSE(IsValidControlHandle(innermost));
}

TEST_F(ControlsTest, AWidgetThatItsHostDeletesEndsItsControl) {
    auto* const made = new QCheckBox(widget);
    const ControlRef check = Make(made);
    bool disposed = false;
    const Handler handler(GetControlEventTarget(check), { kDisposed }, [&](EventRef) {
        disposed = true;
        EXPECT_EQ(GetControl32BitValue(check), 0); // asks what is no check box any more
        return kEventNotHandledErr;
    });
    SetControl32BitValue(check, 1);
    delete made;
    EXPECT_TRUE(disposed);
    EXPECT_FALSE(IsValidControlHandle(check));
}

// State -----------------------------------------------------------------------------------------

TEST_F(ControlsTest, EnablingAndActivationAreTwoThings) {
    const ControlRef pane = MakeCustom("UserPane");
    const ControlRef button = Make<QPushButton>();
    ASSERT_EQ(EmbedControl(button, pane), kNoErr);
    struct Row {
        const char* what;
        OSStatus (*call)(ControlRef);
        ControlRef control;
        bool enabled, active, reacts;
    };
    for (const Row& row : {
             Row { "disabled", DisableControl, button, false, true, false },
             Row { "deactivated too", DeactivateControl, button, false, false, false },
             Row { "enabled again", EnableControl, button, true, false, false },
             Row { "active again", ActivateControl, button, true, true, true },
             Row { "in a disabled pane", DisableControl, pane, false, true, false },
             Row { "in an inactive pane", DeactivateControl, pane, false, false, false },
             Row { "in an enabled one", EnableControl, pane, true, false, false },
             Row { "as before", ActivateControl, pane, true, true, true },
         }) {
        ASSERT_EQ(row.call(row.control), kNoErr);
        EXPECT_EQ(IsControlEnabled(button), row.enabled) << row.what;
        EXPECT_EQ(IsControlActive(button), row.active) << row.what;
        EXPECT_EQ(WidgetOf(button)->isEnabled(), row.reacts) << row.what;
    }
}

TEST_F(ControlsTest, AreVisibleInAHiddenWindow) {
    const ControlRef button = Make<QPushButton>();
    SetControlVisibility(button, true, false);
    EXPECT_TRUE(IsControlVisible(button));
    SetControlVisibility(button, false, true);
    EXPECT_FALSE(IsControlVisible(button));
}

TEST_F(ControlsTest, PlacesAreLocalToTheWindow) {
    const ControlRef pane = MakeCustom("UserPane");
    const ControlRef button = Make<QPushButton>();
    ASSERT_EQ(SetControlBounds(pane, { 50, 60, 150, 260 }), kNoErr);
    ASSERT_EQ(SetControlBounds(button, { 70, 80, 90, 180 }), kNoErr);
    ASSERT_EQ(EmbedControl(button, pane), kNoErr);
    Rect bounds {};
    GetControlBounds(button, &bounds);
    EXPECT_EQ(bounds.top, 70); // embedding moves nothing on the screen
    EXPECT_EQ(bounds.left, 80);
    ASSERT_EQ(MoveControl(button, 100, 110), kNoErr);
    ASSERT_EQ(SizeControl(button, 33, 22), kNoErr);
    EXPECT_EQ(WidgetOf(button)->geometry(), QRect(40, 60, 33, 22));
    const Rect* const got = GetControlBounds(button, &bounds);
    EXPECT_EQ(got, &bounds);
    EXPECT_EQ(bounds.bottom - bounds.top, 22);
    EXPECT_EQ(bounds.right, 133);
    EXPECT_EQ(EmbedControl(pane, button), kParamErr); // into what lies in it
}

TEST_F(ControlsTest, APlaceSetByCallWinsOverTheLayout) {
    auto* const layout = new QVBoxLayout(widget);
    auto* const made = new QPushButton(widget);
    auto* const inner = new QHBoxLayout;
    layout->addLayout(inner);
    inner->addWidget(made);
    Control* const control = MakeControl(*made, Owner());
    widget->show();
    ASSERT_EQ(SetControlBounds(control->Ref(), { 5, 7, 25, 97 }), kNoErr);
    widget->resize(widget->size() + QSize(50, 50));
    QCoreApplication::processEvents();
    EXPECT_EQ(made->geometry(), QRect(7, 5, 90, 20));
}

TEST_F(ControlsTest, CreatedControlsLieWhereTheyAreAsked) {
    ControlRef button = nullptr, field = nullptr, group = nullptr;
    const CFStringRef text = Text("OK");
    ASSERT_EQ(CreatePushButtonControl(window, { -100, -100, -90, -90 }, text, &button), kNoErr);
    ASSERT_EQ(CreateEditTextControl(window, { 10, 10, 30, 90 }, text, true, &field), kNoErr);
    ASSERT_EQ(CreateRadioGroupControl(window, { 0, 0, 0, 0 }, &group), kNoErr);
    CFRelease(text);
    EXPECT_EQ(WidgetOf(button)->geometry(), QRect(-100, -100, 10, 10));
    EXPECT_TRUE(IsControlVisible(button) && IsControlEnabled(button));
    CFStringRef got = nullptr;
    ASSERT_EQ(GetControlData(field, 0, kControlTextCFString, sizeof got, &got, nullptr), kNoErr);
    EXPECT_EQ(TakeUTF8(got), "OK");
    EXPECT_EQ(GetControlOwner(field), window);
    const Rect bounds {};
    EXPECT_EQ(CreatePushButtonControl(nullptr, bounds, nullptr, &button), kErrInvalidWindow);
    EXPECT_EQ(button, nullptr);
}

// Looks -----------------------------------------------------------------------------------------

TEST_F(ControlsTest, OnlyTheNamedFieldsOfAFontStyleCount) {
    const ControlRef label = Make<QLabel>();
    const QFont fontBefore = WidgetOf(label)->font();
    ControlFontStyleRec style {};
    style.size = 31;
    style.style = 1;
    style.foreColor = { 65535, 0, 0 };
    style.flags = kControlUseSizeMask;
    ASSERT_EQ(SetControlFontStyle(label, style), kNoErr);
    EXPECT_EQ(WidgetOf(label)->font().pixelSize(), 31);
    EXPECT_EQ(WidgetOf(label)->font().bold(), fontBefore.bold());
    EXPECT_NE(WidgetOf(label)->palette().color(QPalette::WindowText), QColor(Qt::red));
    style.flags = kControlUseForeColorMask | kControlUseFaceMask;
    ASSERT_EQ(SetControlFontStyle(label, style), kNoErr);
    EXPECT_TRUE(WidgetOf(label)->font().bold());
    EXPECT_EQ(WidgetOf(label)->palette().color(QPalette::Active, QPalette::WindowText),
              QColor(Qt::red));
    EXPECT_NE(WidgetOf(label)->palette().color(QPalette::Disabled, QPalette::WindowText),
              QColor(Qt::red)); // the disabled look stays
    EXPECT_EQ(GetControlFontStyle(label, &style), kNoErr);
    EXPECT_EQ(style.size, 31);
    EXPECT_EQ(style.flags, kControlUseSizeMask | kControlUseForeColorMask | kControlUseFaceMask);
}

TEST_F(ControlsTest, AStyleSetAsItWasReadChangesNothing) {
    for (const ControlRef control :
         { Make<QLabel>(), Make<QLineEdit>(), Make<QPushButton>(), MakeCustom("UserPane") }) {
        const QFont font = WidgetOf(control)->font();
        const QPalette palette = WidgetOf(control)->palette();
        ControlFontStyleRec style {};
        ASSERT_EQ(GetControlFontStyle(control, &style), kNoErr);
        style.flags = kControlUseAllMask;
        ASSERT_EQ(SetControlFontStyle(control, style), kNoErr);
        EXPECT_EQ(WidgetOf(control)->font(), font);
        EXPECT_EQ(WidgetOf(control)->palette(), palette);
        // Greyed as a disabled field is, and back.
        RGBColor active {}, inactive {};
        ASSERT_EQ(GetThemeTextColor(kThemeTextColorDialogActive, &active), kNoErr);
        ASSERT_EQ(GetThemeTextColor(kThemeTextColorDialogInactive, &inactive), kNoErr);
        EXPECT_NE(std::memcmp(&active, &inactive, sizeof active), 0);
        for (const RGBColor& color : { inactive, active }) {
            style.foreColor = color;
            SetControlFontStyle(control, style);
            ControlFontStyleRec now {};
            GetControlFontStyle(control, &now);
            EXPECT_EQ(std::memcmp(&now.foreColor, &color, sizeof color), 0);
        }
    }
    RGBColor color {};
    EXPECT_EQ(GetThemeTextColor(99, &color), kParamErr);
}

TEST_F(ControlsTest, ScreenReadersHearNamesRolesAndValues) {
    auto* const stepper = MakeCustomWidget(QStringLiteral("Stepper"), widget);
    stepper->setToolTip(QStringLiteral("Opacity"));
    SetControl32BitValue(Make(stepper), 42);
    auto* const color = MakeCustomWidget(QStringLiteral("ColorButton"), widget);
    auto* const label = new QLabel(QStringLiteral("&Text colour"), widget);
    label->setBuddy(color);
    color->setToolTip(QStringLiteral("click to choose"));
    const RGBColor red { 65535, 0, 0 };
    SetControlData(Make(color), 0, kControlColor, sizeof red, &red);
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
