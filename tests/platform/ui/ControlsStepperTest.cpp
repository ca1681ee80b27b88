// SPDX-License-Identifier: BSD-3-Clause
// Steps by mouse, wheel and keys: what they change, how they repeat, and handlers that end things.
#include <limits>

#include <QAbstractEventDispatcher>
#include <QTimerEvent>

#include "platform/ui/UIFixture.h"

namespace {

using namespace platform;
using namespace test;

constexpr QPoint kUpArrow { 5, 5 }, kDownArrow { 5, 35 };

class ControlsStepperTest : public UIFixture {
protected:
    void SetUp() override {
        UIFixture::SetUp();
        stepper = MakeCustom("Stepper");
        arrows = WidgetOf(stepper);
        On(stepper).commandID = 9;
    }
    // The time for another step has come, if one is waited for.
    static void Tick(QWidget* held) {
        const auto* const dispatcher = QAbstractEventDispatcher::instance();
        for (const auto& timer : dispatcher->registeredTimers(held)) {
            QTimerEvent event(timer.timerId);
            QCoreApplication::sendEvent(held, &event);
        }
    }

    ControlRef stepper = nullptr;
    QWidget* arrows = nullptr;
};

TEST_F(ControlsStepperTest, StepsByOneWhenNobodyHandlesTheHit) {
    const ChainHandler hit(On(stepper).Target(), { kHit }, [&](EventRef event) {
        log += std::to_string(PartOf(event)) + " ";
        return kEventNotHandledErr;
    });
    const ChainHandler command(At(window).Target(), { kCommand }, [&](EventRef) {
        log += "-> " + std::to_string(On(stepper).Value()) + ", ";
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
    Turn(*arrows, 240);
    Turn(*arrows, -60); // half a notch waits for its other half
    Turn(*arrows, -60);
    EXPECT_EQ(log, "20 -> 2, 20 -> 3, 21 -> 2, ");
    log.clear();
    On(stepper).SetMaximum(std::numeric_limits<std::int32_t>::max());
    On(stepper).SetValue(std::numeric_limits<std::int32_t>::max());
    QTest::keyClick(arrows, Qt::Key_Up);
    EXPECT_EQ(log, "20 -> 2147483647, ") << "it says so anyway";
}

TEST_F(ControlsStepperTest, RepeatsWhileTheMouseIsHeldOverTheArrow) {
    const auto ticked = [&] {
        Tick(arrows);
        return On(stepper).Value();
    };
    QTest::mousePress(arrows, Qt::LeftButton, {}, kUpArrow);
    EXPECT_EQ(On(stepper).Value(), 1);
    EXPECT_EQ(ticked(), 2);
    EXPECT_EQ(ticked(), 3);
    QTest::mouseMove(arrows, kDownArrow); // still held, not over the arrow
    EXPECT_EQ(ticked(), 3);
    QTest::mouseMove(arrows, kUpArrow);
    EXPECT_EQ(ticked(), 4);
    QTest::mouseRelease(arrows, Qt::LeftButton, {}, kUpArrow);
    EXPECT_EQ(ticked(), 4);
}

// With a loop of its own, of an alert, say, the release of the mouse never comes.
TEST_F(ControlsStepperTest, ARepeatedHitMayDisableHideOrEndItOrHaveALoopOfItsOwn) {
    widget->show();
    using Act = void (*)(Control&);
    for (const Act act : { Act([](Control& control) { control.SetEnabled(false); }),
                           Act([](Control& control) { control.SetVisible(false); }),
                           Act([](Control& control) { control.Dispose(); }),
                           Act([](Control& control) { Tick(&control.Widget()); }) }) {
        const ControlRef held = MakeCustom("Stepper");
        arrows = WidgetOf(held);
        int hits = 0;
        const ChainHandler hit(On(held).Target(), { kHit }, [&](EventRef) {
            if (++hits == 2)
                act(On(held));
            return kNoErr;
        });
        QTest::mousePress(arrows, Qt::LeftButton, {}, kUpArrow);
        for (int tick = 0; tick < 3; ++tick)
            Tick(arrows);
        EXPECT_EQ(hits, 2);
    }
}

} // namespace
