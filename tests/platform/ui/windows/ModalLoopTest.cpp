// SPDX-License-Identifier: BSD-3-Clause
#include "platform/ui/UIFixture.h"

namespace platform {
namespace {

using test::ChainHandler;

using ModalLoopTest = test::UIFixture;

TEST_F(ModalLoopTest, OtherWindowsDoNotReactAndTheGroupDoes) {
    struct Pressed {
        WindowRef window;
        ControlRef button = Add<QPushButton>(window, 1);
    };
    const Pressed outside { MakeActiveWindow() }, inside { MakeActiveWindow() }, grouped { window };
    const auto logs = [this](const Pressed& pressed, const char* what) {
        return ChainHandler(test::At(pressed.window).Target(), { test::kCommand },
                            Logs(what, kNoErr));
    };
    const ChainHandler onOutside = logs(outside, "outside"), onInside = logs(inside, "inside"),
                       onGrouped = logs(grouped, "group");
    Window& frame = test::At(inside.window);
    WindowGroup group(0x1F);
    group.Add(frame);
    group.Add(test::At(window));
    test::At(window).SetModality(kWindowModalityWindowModal, nullptr);
    test::At(window).MoveTo(250, 200);
    test::At(window).Resize(140, 90);
    test::At(window).Show();
    Later([&] {
        for (const Pressed& pressed : { outside, inside, grouped })
            Click(*WidgetOf(pressed.button));
        frame.QuitModal();
    });
    frame.RunModal();
    EXPECT_EQ(log, "inside group ");
    // A window that stays lets go of the others.
    ASSERT_TRUE(QTest::qWaitFor([&] { return !frame.Widget().isModal(); }));
    EXPECT_TRUE(frame.IsVisible());
    Click(*WidgetOf(outside.button));
    EXPECT_EQ(log, "inside group outside ");
}

constexpr OSType kOurs = 0x6F757273;

void Post(std::uint32_t kind, EventPriority priority) {
    const MadeEvent event(kOurs, kind);
    PostEventToQueue(GetMainEventQueue(), event.Get(), priority);
}

TEST_F(ModalLoopTest, TheQueueIsDrainedByPriorityAlsoBelowAHandler) {
    const WindowRef nested = MakeWindow();
    std::vector<EventTypeSpec> types;
    for (std::uint32_t kind = 1; kind <= 5; ++kind)
        types.push_back({ kOurs, kind });
    const ChainHandler handler(
        GetApplicationEventTarget(), types, [&](auto, EventRef event) -> OSStatus {
            const std::uint32_t kind = GetEventKind(event);
            log += std::to_string(kind) + " ";
            if (kind == 3) { // a run below a handler goes on with the rest
                test::At(nested).Show();
                test::At(nested).RunModal();
                log += "back ";
            }
            if (kind == 2)
                Post(5, EventPriority::kLow);
            if (kind == 5) {
                test::At(nested).QuitModal();
                test::At(window).QuitModal();
            }
            if (kind == 4)
                throw std::runtime_error("broken"); // does not stop the queue
            return kNoErr;
        });
    Activate(window);
    Post(1, EventPriority::kLow);
    Post(2, EventPriority::kStandard);
    Post(3, EventPriority::kHigh);
    Post(4, EventPriority::kHigh);
    test::At(window).RunModal();
    EXPECT_EQ(log, "3 4 2 1 5 back ");
}

} // namespace
} // namespace platform
