// SPDX-License-Identifier: BSD-3-Clause
#include <QLabel>

#include "platform/ui/UIFixture.h"

namespace platform {
namespace {

using test::ChainHandler;

using MouseTest = test::UIFixture;

TEST_F(MouseTest, HandlersSeeItBeforeTheWidgetOnce) {
    Activate(window);
    const ControlRef label = Add<QLabel>(window); // ignores it, so it is offered to what is around
    const ControlRef button = Add<QPushButton>(window, 4);
    HIPoint place {};
    const ChainHandler mouse(
        test::At(window).Target(),
        { { kEventClassMouse, kEventMouseDown }, { kEventClassMouse, kEventMouseUp } },
        [&](EventRef event) {
            log += GetEventKind(event) == kEventMouseDown ? "down " : "up ";
            place = test::ParameterOf<HIPoint>(event, kEventParamWindowMouseLocation, kTypeHIPoint);
            return kEventNotHandledErr;
        });
    const ChainHandler commands(test::At(window).Target(), { test::kCommand },
                                Logs("command", kNoErr));
    Click(*WidgetOf(label));
    Click(*WidgetOf(button));
    EXPECT_EQ(log, "down up down up command ");
    EXPECT_EQ(QPoint(static_cast<int>(place.x), static_cast<int>(place.y)),
              CentreOf(*WidgetOf(button)));
    const ChainHandler eats(test::At(window).Target(), { { kEventClassMouse, kEventMouseDown } },
                            Logs("eaten", kNoErr));
    log.clear();
    Click(*WidgetOf(button));
    EXPECT_EQ(log, "eaten up ");
}

TEST_F(MouseTest, TrackingTellsOfMovesAndOfEveryEnd) {
    Activate(window);
    Point where {};
    const auto track = [&](EventTime timeout) {
        return test::At(window).TrackMouse(timeout, &where);
    };
    const auto press = [this] {
        QTest::mousePress(widget->windowHandle(), Qt::LeftButton, {}, { 20, 20 });
        EXPECT_TRUE(Button());
    };
    press();
    Later([top = widget->windowHandle()] {
        QTest::mouseMove(top, { 30, 40 });
        QTest::mouseMove(top, { 50, 60 });
        QTest::mouseRelease(top, Qt::LeftButton, {}, { 50, 60 });
    });
    EXPECT_EQ(track(-1), MouseTracking::kMouseDragged);
    EXPECT_EQ(test::At(window).ToLocal(where).h, 50);
    EXPECT_EQ(track(-1), MouseTracking::kMouseUp);
    EXPECT_FALSE(Button());
    EXPECT_EQ(track(-1), MouseTracking::kUserCancelled);
    press();
    EXPECT_EQ(track(0), MouseTracking::kTimedOut);
    Later([this] { test::Dispose(window); });
    EXPECT_EQ(track(-1), MouseTracking::kUserCancelled);
    window = MakeActiveWindow();
    EXPECT_EQ(track(-1), MouseTracking::kMouseUp) << "will not come any more";
}

} // namespace
} // namespace platform
