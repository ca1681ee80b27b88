// SPDX-License-Identifier: BSD-3-Clause
#include <QScreen>

#include "platform/ui/support/WindowsFixture.h"
#include "support/WindowRefs.h"

namespace platform {
namespace {

using test::ChainHandler;
using test::WindowEvent;

class WindowsTest : public test::WindowsFixture {};

TEST_F(WindowsTest, NumbersAreNeverGivenAgain) {
    const WindowRef first = Make();
    const Alive alive(test::At(first));
    test::Dispose(first);
    EXPECT_FALSE(alive);
    EXPECT_FALSE(Window::Find(first) || UIObject::TargetOf(first));
    const WindowRef second = Make();
    EXPECT_GT(reinterpret_cast<std::uintptr_t>(second), reinterpret_cast<std::uintptr_t>(first));
    EXPECT_EQ(Window::Find(reinterpret_cast<WindowRef>(Add<QPushButton>(second))), nullptr);
}

TEST_F(WindowsTest, ContentIsWhereItWasPut) {
    Window& window = test::At(Make());
    window.MoveTo(210, 120);
    window.Resize(300, 150);
    const Rect bounds = window.ContentBounds();
    EXPECT_THAT((std::vector { bounds.top, bounds.left, bounds.bottom, bounds.right }),
                testing::ElementsAre(120, 210, 270, 510));
    const Point local = window.ToLocal({ 125, 220 });
    EXPECT_EQ(local.h, 10);
    EXPECT_EQ(local.v, 5);
    EXPECT_EQ(window.ToGlobal(local).h, 220);
    window.CenterOnMainScreen();
    EXPECT_EQ(QRect(window.Widget().mapToGlobal(QPoint()), QSize(300, 150)).center(),
              QGuiApplication::primaryScreen()->availableGeometry().center());
}

TEST_F(WindowsTest, TheWindowSystemIsToldOfItsAttributes) {
    Window& window = test::At(Make());
    window.Show();
    window.ChangeAttributes(kWindowHasNoTitleBarAttribute,
                            kWindowCloseBoxAttribute | kWindowCollapseBoxAttribute);
    EXPECT_EQ(window.Attributes(), kWindowHasNoTitleBarAttribute);
    EXPECT_TRUE(window.Widget().windowFlags() & Qt::FramelessWindowHint);
    EXPECT_FALSE(window.Widget().windowFlags() & Qt::WindowCloseButtonHint);
    EXPECT_TRUE(window.IsVisible());
}

TEST_F(WindowsTest, TellsOfMovingAndOfTheFocus) {
    const WindowRef window = Make();
    const ChainHandler handler(UIObject::TargetOf(window),
                               { WindowEvent(kEventWindowBoundsChanged),
                                 WindowEvent(kEventWindowFocusAcquired),
                                 WindowEvent(kEventWindowFocusRelinquish) },
                               [this](auto, EventRef event) {
                                   m_log += std::to_string(GetEventKind(event)) + " ";
                                   return kEventNotHandledErr;
                               });
    test::At(window).Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Widget(window)));
    QCoreApplication::processEvents();
    EXPECT_THAT(m_log, testing::HasSubstr("200 "));
    m_log.clear();
    test::At(window).MoveTo(150, 160);
    EXPECT_EQ(m_log, "27 ");
    MakeActive();
    EXPECT_EQ(m_log, "27 201 ");
}

TEST_F(WindowsTest, TheClosedEventComesWhileAllIsWhole) {
    enum class By { kCall, kWidget, kHost, kHandler };
    for (const By by : { By::kCall, By::kWidget, By::kHost, By::kHandler }) {
        m_log.clear();
        const QPointer<QWidget> host(new QWidget);
        const WindowRef window = Make();
        const QPointer<QWidget> widget(&Widget(window));
        if (by >= By::kHost)
            widget->setParent(host);
        const ControlRef field = Add<QLineEdit>(window);
        const ChainHandler closed(UIObject::TargetOf(window), { WindowEvent(kEventWindowClosed) },
                                  [&](auto, auto) {
                                      m_log += Control::Find(field) ? "whole " : "late ";
                                      test::Dispose(window); // is going on already
                                      if (by == By::kHandler)
                                          delete host;
                                      return kNoErr;
                                  });
        const ChainHandler disposed(UIObject::TargetOf(field), { test::kDisposed },
                                    Logs("disposed"));
        if (by == By::kCall || by == By::kHandler)
            test::Dispose(window);
        else
            delete (by == By::kHost ? host : widget);
        EXPECT_EQ(m_log, "whole disposed ") << static_cast<int>(by);
        EXPECT_FALSE(test::IsThere(window) || Control::Find(field));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_FALSE(widget);
        delete host;
    }
}

TEST_F(WindowsTest, ClosingPressesTheCancelButtonElseDisposes) {
    const WindowRef window = MakeActive();
    const ControlRef cancel = Add<QPushButton>(window, kHICommandCancel);
    test::At(window).SetCancelButton(Control::Find(cancel));
    const ChainHandler command(UIObject::TargetOf(window), { test::kCommand },
                               Logs("command", kNoErr));
    Widget(window).close();
    EXPECT_EQ(m_log, "command ");
    EXPECT_TRUE(test::At(window).IsVisible());
    {
        const ChainHandler close(UIObject::TargetOf(window), { WindowEvent(kEventWindowClose) },
                                 Logs("close", kNoErr));
        Widget(window).close();
        EXPECT_EQ(m_log, "command close ");
    }
    test::At(window).SetCancelButton(nullptr);
    Widget(window).close();
    EXPECT_FALSE(test::IsThere(window));
}

TEST_F(WindowsTest, AButtonMayDisposeItsWindowAndEvenDeleteTheHost) {
    for (const bool embedded : { false, true }) {
        auto* const host = new QWidget;
        const WindowRef window = Make();
        if (embedded)
            Widget(window).setParent(host);
        const ControlRef button = Add<QPushButton>(window, 9);
        test::At(window).SetDefaultButton(Control::Find(button));
        test::At(window).Show();
        QWidget* const top = Widget(window).window();
        top->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(top));
        test::At(window).SetKeyboardFocus(Control::Find(button));
        // With a handler of keys the key takes the long way.
        const ChainHandler keys(UIObject::TargetOf(window), { test::kKeyDown }, Logs("key"));
        const ChainHandler command(UIObject::TargetOf(window), { test::kCommand }, [&](auto, auto) {
            if (embedded)
                delete host;
            else
                test::Dispose(window);
            return kNoErr;
        });
        QTest::keyPress(top->windowHandle(), Qt::Key_Return);
        EXPECT_FALSE(test::IsThere(window));
        if (!embedded)
            delete host;
    }
    EXPECT_EQ(m_log, "key key ");
}

TEST_F(WindowsTest, AGroupLiesOverItsFirstWindow) {
    const WindowRef frame = MakeActive();
    const WindowRef editor = Make();
    test::At(editor).MoveTo(110, 120);
    auto group = std::make_unique<WindowGroup>(0x1FU);
    group->Add(test::At(frame));
    WindowGroup::OfClass(4).Add(test::At(editor));
    group->Add(test::At(editor));
    test::At(editor).Show();
    test::At(frame).MoveTo(200, 300);
    const Rect bounds = test::At(editor).ContentBounds();
    EXPECT_EQ(bounds.left, 210);
    EXPECT_EQ(bounds.top, 320);

    // Its keys are its own, also those that no widget took.
    const ControlRef field = Add<QLineEdit>(editor);
    const ChainHandler frameKeys(UIObject::TargetOf(frame), { test::kKeyDown }, Logs("frame"));
    const ChainHandler editorKeys(UIObject::TargetOf(editor), { test::kKeyDown }, Logs("editor"));
    test::At(editor).SetKeyboardFocus(Control::Find(field));
    Press(Qt::Key_F5);
    EXPECT_EQ(m_log, "editor ");

    group.reset();
    test::Dispose(frame);
    EXPECT_TRUE(test::IsThere(editor));
    EXPECT_TRUE(Widget(editor).isWindow());
}

TEST_F(WindowsTest, AHostEmbedsAWindow) {
    QWidget host;
    auto* const own = new QLineEdit(&host);
    const WindowRef window = Make();
    Widget(window).setParent(&host);
    Widget(window).setGeometry(0, 100, 300, 200);
    const ControlRef field = Add<QLineEdit>(window);
    const ControlRef button = Add<QPushButton>(window, kHICommandOK);
    test::At(window).SetDefaultButton(Control::Find(button));
    test::At(window).Show();
    host.resize(400, 300);
    host.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&host));
    const ChainHandler command(UIObject::TargetOf(window), { test::kCommand }, Logs("ok", kNoErr));
    own->setFocus();
    Press(Qt::Key_Return);
    EXPECT_EQ(m_log, ""); // in the host's own field
    EXPECT_EQ(test::At(window).KeyboardFocus(), nullptr);
    EXPECT_TRUE(test::At(window).SetKeyboardFocus(Control::Find(field)));
    Press(Qt::Key_A);
    Press(Qt::Key_Return);
    EXPECT_EQ(TextOf(field), "a");
    EXPECT_EQ(m_log, "ok ");
    EXPECT_EQ(Window::Of(WidgetOf(field)), Window::Find(window));
    EXPECT_EQ(Window::Of(own), nullptr);
    Widget(window).setParent(nullptr);
}

} // namespace
} // namespace platform
