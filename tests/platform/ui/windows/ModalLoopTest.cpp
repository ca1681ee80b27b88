// SPDX-License-Identifier: BSD-3-Clause
#include "platform/ui/support/WindowsFixture.h"

namespace platform {
namespace {

using test::ChainHandler;

constexpr OSType kOurs = 0x6F757273;

void Post(std::uint32_t kind, EventPriority priority) {
    EventRef event = nullptr;
    CreateEvent(kOurs, kind, 0, &event);
    PostEventToQueue(GetMainEventQueue(), event, priority);
    ReleaseEvent(event);
}

// Calls it from the loop that runs next.
void Soon(std::function<void()> call) {
    QTimer::singleShot(0, qApp, std::move(call));
}

class ModalLoopTest : public test::WindowsFixture {};

TEST_F(ModalLoopTest, OtherWindowsDoNotReactAndTheGroupDoes) {
    WindowRef const other = MakeActive();
    ControlRef const outside = Add<QPushButton>(other, 1);
    ChainHandler const onOther(GetWindowEventTarget(other), { test::kCommand },
                               Logs("outside", kNoErr));
    WindowRef const frame = MakeActive();
    ControlRef const inside = Add<QPushButton>(frame, 2);
    ChainHandler const onFrame(GetWindowEventTarget(frame), { test::kCommand },
                               Logs("inside", kNoErr));
    WindowRef const editor = Make();
    WindowGroupRef group = nullptr;
    CreateWindowGroup(0x1F, &group);
    SetWindowGroup(frame, group);
    SetWindowGroup(editor, group);
    SetWindowModality(editor, kWindowModalityWindowModal, nullptr);
    MoveWindow(editor, 250, 200, false);
    SizeWindow(editor, 140, 90);
    ControlRef const grouped = Add<QPushButton>(editor, 3);
    ChainHandler const onEditor(GetWindowEventTarget(editor), { test::kCommand },
                                Logs("group", kNoErr));
    ShowWindow(editor);
    Soon([&] {
        Click(*WidgetOf(outside));
        Click(*WidgetOf(inside));
        Click(*WidgetOf(grouped));
        QuitAppModalLoopForWindow(frame);
    });
    EXPECT_EQ(RunAppModalLoopForWindow(frame), kNoErr);
    EXPECT_EQ(m_log, "inside group ");
    // A window that stays lets go of the others.
    ASSERT_TRUE(test::Until([&] { return !Widget(frame).isModal(); }));
    EXPECT_TRUE(IsWindowVisible(frame));
    Click(*WidgetOf(outside));
    EXPECT_EQ(m_log, "inside group outside ");
    EXPECT_EQ(QuitAppModalLoopForWindow(frame), kParamErr);
    ReleaseWindowGroup(group);
}

TEST_F(ModalLoopTest, AnOuterRunThatIsQuitEndsAfterTheInnerOne) {
    WindowRef const outer = MakeActive();
    WindowRef const inner = Make();
    Soon([&] {
        ShowWindow(inner);
        Soon([&] {
            QuitAppModalLoopForWindow(outer);
            EXPECT_EQ(RunAppModalLoopForWindow(inner), kErrUnsupportedModality);
            Soon([&] {
                m_log += "still ";
                QuitAppModalLoopForWindow(inner);
            });
        });
        RunAppModalLoopForWindow(inner);
        m_log += "inner ";
    });
    RunAppModalLoopForWindow(outer);
    EXPECT_EQ(m_log + "outer", "still inner outer");
}

TEST_F(ModalLoopTest, AWindowMayBeDisposedFromItsOwnHandlerDuringItsRun) {
    WindowRef const window = MakeActive();
    ControlRef const button = Add<QPushButton>(window, 5);
    ChainHandler const handler(GetWindowEventTarget(window), { test::kCommand },
                               [window](auto, auto) {
                                   DisposeWindow(window);
                                   return kNoErr;
                               });
    Soon([&] { Click(*WidgetOf(button)); });
    EXPECT_EQ(RunAppModalLoopForWindow(window), kNoErr);
    EXPECT_FALSE(IsValidWindowPtr(window));
}

TEST_F(ModalLoopTest, TheQueueIsDrainedByPriorityAlsoBelowAHandler) {
    WindowRef const window = MakeActive();
    WindowRef const nested = Make();
    std::vector<EventTypeSpec> types;
    for (std::uint32_t kind = 1; kind <= 5; ++kind)
        types.push_back({ kOurs, kind });
    ChainHandler const handler(
        GetApplicationEventTarget(), types, [&](auto, EventRef event) -> OSStatus {
            std::uint32_t const kind = GetEventKind(event);
            m_log += std::to_string(kind) + " ";
            if (kind == 3) { // a run below a handler goes on with the rest
                ShowWindow(nested);
                RunAppModalLoopForWindow(nested);
                m_log += "back ";
            }
            if (kind == 2)
                Post(5, EventPriority::kLow);
            if (kind == 5) {
                QuitAppModalLoopForWindow(nested);
                QuitAppModalLoopForWindow(window);
            }
            if (kind == 4)
                throw std::runtime_error("broken"); // does not stop the queue
            return kNoErr;
        });
    Post(1, EventPriority::kLow);
    Post(2, EventPriority::kStandard);
    Post(3, EventPriority::kHigh);
    Post(4, EventPriority::kHigh);
    RunAppModalLoopForWindow(window);
    EXPECT_EQ(m_log, "3 4 2 1 5 back ");
}

TEST_F(ModalLoopTest, TimersFireInItAndBelowATimer) {
    WindowRef const outer = MakeActive();
    WindowRef const inner = Make();
    struct Both {
        WindowRef outer, inner;
        int steps = 0;
    } both { outer, inner };
    EventLoopTimerRef first = nullptr;
    EventLoopTimerRef second = nullptr;
    InstallEventLoopTimer(
        0, 0,
        [](EventLoopTimerRef, void* data) {
            RunAppModalLoopForWindow(static_cast<Both*>(data)->inner);
            QuitAppModalLoopForWindow(static_cast<Both*>(data)->outer);
        },
        &both, &first);
    InstallEventLoopTimer(
        0.01, 0.01,
        [](EventLoopTimerRef, void* data) {
            auto& of = *static_cast<Both*>(data);
            if (++of.steps == 3)
                QuitAppModalLoopForWindow(of.inner);
        },
        &both, &second);
    RunAppModalLoopForWindow(outer);
    EXPECT_GE(both.steps, 3);
    RemoveEventLoopTimer(first);
    RemoveEventLoopTimer(second);
}

} // namespace
} // namespace platform
