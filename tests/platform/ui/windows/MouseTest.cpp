// SPDX-License-Identifier: BSD-3-Clause
#include <QLabel>

#include "platform/ui/support/WindowsFixture.h"
#include "support/WindowRefs.h"

namespace platform {
namespace {

using test::ChainHandler;

class MouseTest : public test::WindowsFixture {
protected:
    void SetUp() override {
        WindowsFixture::SetUp();
        window = MakeActive();
    }
    // From the loop that runs next, one after the other.
    void Soon(std::function<void(QWindow*)> act) {
        QTimer::singleShot(0, &Widget(window),
                           [this, act = std::move(act)] { act(Widget(window).windowHandle()); });
    }
    MouseTracking Track(EventTime timeout = 10) {
        return test::At(window).TrackMouse(timeout, &where);
    }

    WindowRef window = nullptr;
    Point where {};
};

TEST_F(MouseTest, HandlersSeeItBeforeTheWidgetOnce) {
    const ControlRef label = Add<QLabel>(window); // ignores it, so it is offered to what is around
    const ControlRef button = Add<QPushButton>(window, 4);
    HIPoint place {};
    const ChainHandler mouse(
        UIObject::TargetOf(window),
        { { kEventClassMouse, kEventMouseDown }, { kEventClassMouse, kEventMouseUp } },
        [&](auto, EventRef event) {
            m_log += GetEventKind(event) == kEventMouseDown ? "down " : "up ";
            place = test::ParameterOf<HIPoint>(event, kEventParamWindowMouseLocation, kTypeHIPoint);
            return kEventNotHandledErr;
        });
    const ChainHandler commands(UIObject::TargetOf(window), { test::kCommand },
                                Logs("command", kNoErr));
    Click(*WidgetOf(label));
    EXPECT_EQ(m_log, "down up ");
    m_log.clear();
    Click(*WidgetOf(button));
    EXPECT_EQ(m_log, "down up command ");
    EXPECT_EQ(QPoint(static_cast<int>(place.x), static_cast<int>(place.y)),
              CentreOf(*WidgetOf(button)));
    const ChainHandler eats(UIObject::TargetOf(window), { { kEventClassMouse, kEventMouseDown } },
                            Logs("eaten", kNoErr));
    m_log.clear();
    Click(*WidgetOf(button));
    EXPECT_EQ(m_log, "eaten up ");
}

TEST_F(MouseTest, TrackingReportsEachStep) {
    bool tracked = false;
    const ChainHandler press(UIObject::TargetOf(window), { { kEventClassMouse, kEventMouseDown } },
                             [&](auto, auto) {
                                 EXPECT_TRUE(Button());
                                 Soon([](QWindow* top) {
                                     QTest::mouseMove(top, { 30, 40 });
                                     QTest::mouseMove(top, { 50, 60 });
                                     QTest::mouseRelease(top, Qt::LeftButton, {}, { 50, 60 });
                                 });
                                 EXPECT_EQ(Track(), MouseTracking::kMouseDragged);
                                 EXPECT_EQ(test::At(window).ToLocal(where).h, 50);
                                 EXPECT_EQ(Track(), MouseTracking::kMouseUp);
                                 EXPECT_FALSE(Button());
                                 EXPECT_EQ(Track(), MouseTracking::kUserCancelled);
                                 tracked = true;
                                 return kNoErr;
                             });
    QTest::mousePress(Widget(window).windowHandle(), Qt::LeftButton, {}, { 20, 20 });
    EXPECT_TRUE(tracked);
}

TEST_F(MouseTest, TrackingEndsInTimeAndWithItsWindow) {
    QTest::mousePress(Widget(window).windowHandle(), Qt::LeftButton, {}, { 20, 20 });
    EXPECT_EQ(Track(0.01), MouseTracking::kTimedOut);
    Soon([this](QWindow*) { test::Dispose(window); });
    EXPECT_EQ(Track(-1), MouseTracking::kUserCancelled);
    window = MakeActive();
    EXPECT_EQ(Track(-1), MouseTracking::kMouseUp); // will not come any more
}

TEST_F(MouseTest, WheelsAreCountedInNotches) {
    std::vector<std::int32_t> notches;
    const ChainHandler wheel(UIObject::TargetOf(window),
                             { { kEventClassMouse, kEventMouseWheelMoved } },
                             [&notches](auto, EventRef event) {
                                 notches.push_back(test::ParameterOf<std::int32_t>(
                                     event, kEventParamMouseWheelDelta, kTypeSInt32));
                                 return kNoErr;
                             });
    for (const int delta : { 120, -240, 60, 60, 30 }) {
        QWheelEvent turn({ 20, 20 }, Widget(window).mapToGlobal(QPointF(20, 20)), {}, { 0, delta },
                         Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&Widget(window), &turn);
    }
    EXPECT_THAT(notches, testing::ElementsAre(1, -2, 1));
}

} // namespace
} // namespace platform
