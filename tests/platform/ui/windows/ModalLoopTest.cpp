// SPDX-License-Identifier: BSD-3-Clause
#include "platform/ui/support/WindowsFixture.h"
#include "support/WindowRefs.h"

namespace platform {
namespace {

using test::ChainHandler;

constexpr OSType kOurs = 0x6F757273;

void Post(std::uint32_t kind, EventPriority priority) {
    EventRef event = nullptr;
    CreateEvent(kOurs, kind, &event);
    PostEventToQueue(GetMainEventQueue(), event, priority);
    ReleaseEvent(event);
}

// Calls it from the loop that runs next.
void Soon(std::function<void()> call) {
    QTimer::singleShot(0, qApp, std::move(call));
}

class ModalLoopTest : public test::WindowsFixture {};

TEST_F(ModalLoopTest, OtherWindowsDoNotReactAndTheGroupDoes) {
    const WindowRef other = MakeActive();
    const ControlRef outside = Add<QPushButton>(other, 1);
    const ChainHandler onOther(UIObject::TargetOf(other), { test::kCommand },
                               Logs("outside", kNoErr));
    const WindowRef frame = MakeActive();
    const ControlRef inside = Add<QPushButton>(frame, 2);
    const ChainHandler onFrame(UIObject::TargetOf(frame), { test::kCommand },
                               Logs("inside", kNoErr));
    const WindowRef editor = Make();
    WindowGroup group(0x1F);
    group.Add(test::At(frame));
    group.Add(test::At(editor));
    test::At(editor).SetModality(kWindowModalityWindowModal, nullptr);
    test::At(editor).MoveTo(250, 200);
    test::At(editor).Resize(140, 90);
    const ControlRef grouped = Add<QPushButton>(editor, 3);
    const ChainHandler onEditor(UIObject::TargetOf(editor), { test::kCommand },
                                Logs("group", kNoErr));
    test::At(editor).Show();
    Soon([&] {
        Click(*WidgetOf(outside));
        Click(*WidgetOf(inside));
        Click(*WidgetOf(grouped));
        test::At(frame).QuitModal();
    });
    test::At(frame).RunModal();
    EXPECT_EQ(m_log, "inside group ");
    // A window that stays lets go of the others.
    ASSERT_TRUE(test::Until([&] { return !Widget(frame).isModal(); }));
    EXPECT_TRUE(test::At(frame).IsVisible());
    Click(*WidgetOf(outside));
    EXPECT_EQ(m_log, "inside group outside ");
}

TEST_F(ModalLoopTest, TheQueueIsDrainedByPriorityAlsoBelowAHandler) {
    const WindowRef window = MakeActive();
    const WindowRef nested = Make();
    std::vector<EventTypeSpec> types;
    for (std::uint32_t kind = 1; kind <= 5; ++kind)
        types.push_back({ kOurs, kind });
    const ChainHandler handler(
        GetApplicationEventTarget(), types, [&](auto, EventRef event) -> OSStatus {
            const std::uint32_t kind = GetEventKind(event);
            m_log += std::to_string(kind) + " ";
            if (kind == 3) { // a run below a handler goes on with the rest
                test::At(nested).Show();
                test::At(nested).RunModal();
                m_log += "back ";
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
    Post(1, EventPriority::kLow);
    Post(2, EventPriority::kStandard);
    Post(3, EventPriority::kHigh);
    Post(4, EventPriority::kHigh);
    test::At(window).RunModal();
    EXPECT_EQ(m_log, "3 4 2 1 5 back ");
}

} // namespace
} // namespace platform
