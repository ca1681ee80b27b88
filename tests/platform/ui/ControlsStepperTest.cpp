// SPDX-License-Identifier: BSD-3-Clause
// Steps by mouse, wheel and keys: what they change, how they repeat, and handlers that end things.
#include <limits>

#include <QTest>
#include <QWheelEvent>

#include "platform/ui/ControlsFixture.h"

namespace {

using namespace platform;
using namespace test;

constexpr QPoint kUpArrow { 5, 5 }, kDownArrow { 5, 35 };

class ControlsStepperTest : public ControlsFixture {
protected:
    void SetUp() override {
        ControlsFixture::SetUp();
        stepper = MakeCustom("Stepper");
        arrows = WidgetOf(stepper);
        SetControlCommandID(stepper, 9);
        const double soon = 0.005;
        SetControlData(stepper, 0, kControlRepeatInterval, sizeof soon, &soon);
    }
    void Turn(int angle) {
        QWheelEvent event(QPointF(5, 5), arrows->mapToGlobal(QPointF(5, 5)), {}, { 0, angle },
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(arrows, &event);
    }

    ControlRef stepper = nullptr;
    QWidget* arrows = nullptr;
};

TEST_F(ControlsStepperTest, StepsByOneWhenNobodyHandlesTheHit) {
    std::string log;
    const Handler hit(GetControlEventTarget(stepper), { kHit }, [&](EventRef event) {
        log += std::to_string(PartOf(event)) + " ";
        return kEventNotHandledErr;
    });
    const Handler command(GetWindowEventTarget(window), { kCommand }, [&](EventRef) {
        log += "-> " + std::to_string(GetControl32BitValue(stepper)) + ", ";
        return kNoErr;
    });
    QTest::mouseClick(arrows, Qt::LeftButton, {}, kUpArrow);
    QTest::mouseClick(arrows, Qt::LeftButton, {}, kUpArrow);
    QTest::mouseClick(arrows, Qt::LeftButton, {}, kDownArrow);
    QTest::keyClick(arrows, Qt::Key_Up);
    QTest::keyClick(arrows, Qt::Key_Down);
    QTest::mouseClick(arrows, Qt::RightButton, {}, kUpArrow);
    EXPECT_EQ(log, "20 -> 1, 20 -> 2, 21 -> 1, 20 -> 2, 21 -> 1, ");
    log.clear();
    Turn(240);
    Turn(-60); // half a notch waits for its other half
    Turn(-60);
    EXPECT_EQ(log, "20 -> 2, 20 -> 3, 21 -> 2, ");
}

TEST_F(ControlsStepperTest, LeavesTheValueToAHandlerThatTakesTheHit) {
    const Handler hit(GetControlEventTarget(stepper), { kHit }, [&](EventRef event) {
        const int step = PartOf(event) == kControlUpButtonPart ? 10 : -10;
        SetControl32BitValue(stepper, GetControl32BitValue(stepper) + step);
        return kNoErr;
    });
    QTest::keyClick(arrows, Qt::Key_Up);
    QTest::keyClick(arrows, Qt::Key_Up);
    QTest::keyClick(arrows, Qt::Key_Down);
    EXPECT_EQ(GetControl32BitValue(stepper), 10);
}

TEST_F(ControlsStepperTest, StopsAtItsBoundsAndSaysSoAnyway) {
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
    SetControl32BitMaximum(stepper, kMost);
    SetControl32BitMinimum(stepper, kLeast);
    int commands = 0;
    const Handler command(GetWindowEventTarget(window), { kCommand }, [&](EventRef) {
        ++commands;
        return kNoErr;
    });
    for (const auto& [value, key] : { std::pair { kMost, Qt::Key_Up }, { kLeast, Qt::Key_Down } }) {
        SetControl32BitValue(stepper, value);
        QTest::keyClick(arrows, key);
        EXPECT_EQ(GetControl32BitValue(stepper), value);
    }
    EXPECT_EQ(commands, 2);
}

TEST_F(ControlsStepperTest, RepeatsWhileTheMouseIsHeldOverTheArrow) {
    const auto value = [&] { return GetControl32BitValue(stepper); };
    QTest::mousePress(arrows, Qt::LeftButton, {}, kUpArrow);
    EXPECT_EQ(value(), 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return value() >= 4; }));
    QTest::mouseMove(arrows, kDownArrow); // still held, not over the arrow
    const std::int32_t away = value();
    QTest::qWait(50);
    EXPECT_EQ(value(), away);
    QTest::mouseMove(arrows, kUpArrow);
    EXPECT_TRUE(QTest::qWaitFor([&] { return value() > away; }));
    QTest::mouseRelease(arrows, Qt::LeftButton, {}, kUpArrow);
    const std::int32_t released = value();
    QTest::qWait(50);
    EXPECT_EQ(value(), released);
}

TEST_F(ControlsStepperTest, ARepeatedHitMayDisableHideOrEndIt) {
    using Act = OSStatus (*)(ControlRef);
    for (const Act act : { Act([](ControlRef c) { return DisableControl(c); }),
                           Act([](ControlRef c) { return SetControlVisibility(c, false, true); }),
                           Act([](ControlRef c) { return DisposeControl(c); }) }) {
        const ControlRef held = MakeCustom("Stepper");
        const QPointer<QWidget> heldArrows(WidgetOf(held));
        widget->show();
        heldArrows->show();
        const double soon = 0.005;
        SetControlData(held, 0, kControlRepeatInterval, sizeof soon, &soon);
        int hits = 0;
        const Handler hit(GetControlEventTarget(held), { kHit }, [&](EventRef) {
            if (++hits == 2)
                act(held);
            return kNoErr;
        });
        QTest::mousePress(heldArrows, Qt::LeftButton, {}, kUpArrow);
        EXPECT_TRUE(QTest::qWaitFor([&] { return hits == 2; }));
        QTest::qWait(50);
        EXPECT_EQ(hits, 2);
        DisposeControl(held);
    }
}

TEST_F(ControlsStepperTest, AHandlerWithALoopOfItsOwnEndsTheRepeat) {
    int hits = 0;
    const Handler hit(GetControlEventTarget(stepper), { kHit }, [&](EventRef) {
        ++hits;
        QTest::qWait(600); // an alert, say; the release of the mouse never comes
        return kNoErr;
    });
    QTest::mousePress(arrows, Qt::LeftButton, {}, kUpArrow);
    QTest::qWait(600);
    EXPECT_EQ(hits, 1);
}

TEST_F(ControlsStepperTest, TakesItsBoundsFromTheForm) {
    QWidget* const made = MakeCustomWidget(QStringLiteral("Stepper"), widget);
    made->setProperty("minimum", 3);
    made->setProperty("maximum", 99);
    made->setProperty("value", 36);
    const ControlRef control = Make(made);
    EXPECT_EQ(GetControl32BitMinimum(control), 3);
    EXPECT_EQ(GetControl32BitMaximum(control), 99);
    EXPECT_EQ(GetControl32BitValue(control), 36);
}

} // namespace
