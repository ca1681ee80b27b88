// SPDX-License-Identifier: BSD-3-Clause
#include <QScreen>

#include "platform/ui/UIFixture.h"

namespace platform {
namespace {

using test::ChainHandler;

constexpr EventTypeSpec WindowEvent(std::uint32_t kind) {
    return { kEventClassWindow, kind };
}

using WindowsTest = test::UIFixture;

TEST_F(WindowsTest, NumbersAreNeverGivenAgain) {
    const WindowRef first = MakeWindow();
    const Alive alive(test::At(first));
    test::Dispose(first);
    EXPECT_FALSE(alive);
    EXPECT_FALSE(Window::Find(first) || UIObject::TargetOf(first));
    const WindowRef second = MakeWindow();
    EXPECT_GT(reinterpret_cast<std::uintptr_t>(second), reinterpret_cast<std::uintptr_t>(first));
}

TEST_F(WindowsTest, ContentIsWhereItWasPut) {
    Window& window = test::At(this->window);
    window.MoveTo(210, 120);
    window.Resize(300, 150);
    const Rect bounds = window.ContentBounds();
    EXPECT_THAT((std::vector { bounds.top, bounds.left, bounds.bottom, bounds.right }),
                testing::ElementsAre(120, 210, 270, 510));
    window.CenterOnMainScreen();
    EXPECT_EQ(QRect(window.Widget().mapToGlobal(QPoint()), QSize(300, 150)).center(),
              QGuiApplication::primaryScreen()->availableGeometry().center());
}

TEST_F(WindowsTest, TheWindowSystemIsToldOfItsAttributes) {
    Window& window = test::At(this->window);
    window.Show();
    window.ChangeAttributes(kWindowHasNoTitleBarAttribute,
                            kWindowCloseBoxAttribute | kWindowCollapseBoxAttribute);
    EXPECT_EQ(window.Attributes(), kWindowHasNoTitleBarAttribute);
    EXPECT_TRUE(window.Widget().windowFlags() & Qt::FramelessWindowHint);
    EXPECT_FALSE(window.Widget().windowFlags() & Qt::WindowCloseButtonHint);
    EXPECT_TRUE(window.IsVisible());
}

TEST_F(WindowsTest, TellsOfMovingAndOfTheFocus) {
    const ChainHandler handler(test::At(window).Target(),
                               { WindowEvent(kEventWindowBoundsChanged),
                                 WindowEvent(kEventWindowFocusAcquired),
                                 WindowEvent(kEventWindowFocusRelinquish) },
                               [this](EventRef event) {
                                   log += std::to_string(GetEventKind(event)) + " ";
                                   return kEventNotHandledErr;
                               });
    Activate(window);
    QCoreApplication::processEvents();
    EXPECT_THAT(log, testing::HasSubstr("200 "));
    log.clear();
    test::At(window).MoveTo(150, 160);
    EXPECT_EQ(log, "27 ");
    MakeActiveWindow();
    EXPECT_EQ(log, "27 201 ");
}

TEST_F(WindowsTest, TheClosedEventComesWhileAllIsWhole) {
    enum class By { kCall, kWidget, kHost, kHandler };
    for (const By by : { By::kCall, By::kWidget, By::kHost, By::kHandler }) {
        log.clear();
        const QPointer<QWidget> host(new QWidget);
        window = MakeWindow();
        const QPointer<QWidget> shown(&Widget(window));
        if (by >= By::kHost)
            shown->setParent(host);
        const ControlRef field = Add<QLineEdit>(window);
        const ChainHandler closed(test::At(window).Target(), { WindowEvent(kEventWindowClosed) },
                                  [&](EventRef) {
                                      log += Control::Find(field) ? "whole " : "late ";
                                      test::Dispose(window); // is going on already
                                      if (by == By::kHandler)
                                          delete host;
                                      return kNoErr;
                                  });
        const ChainHandler disposed(On(field).Target(), { test::kDisposed }, Logs("disposed"));
        if (by == By::kCall || by == By::kHandler)
            test::Dispose(window);
        else
            delete (by == By::kHost ? host : shown);
        EXPECT_EQ(log, "whole disposed ") << static_cast<int>(by);
        EXPECT_FALSE(test::IsThere(window) || Control::Find(field));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_FALSE(shown);
        delete host;
    }
}

TEST_F(WindowsTest, ClosingIsAskedForAndElseDisposes) {
    Activate(window);
    {
        const ChainHandler close(test::At(window).Target(), { WindowEvent(kEventWindowClose) },
                                 Logs("close", kNoErr));
        widget->close();
    }
    EXPECT_EQ(log, "close ");
    EXPECT_TRUE(test::At(window).IsVisible());
    widget->close();
    EXPECT_FALSE(test::IsThere(window));
}

TEST_F(WindowsTest, AButtonMayDisposeItsWindowAndEvenDeleteTheHost) {
    for (const bool embedded : { false, true }) {
        auto* const host = new QWidget;
        window = MakeWindow();
        if (embedded)
            Widget(window).setParent(host);
        const ControlRef button = Add<QPushButton>(window, 9);
        test::At(window).SetDefaultButton(Control::Find(button));
        QWidget* const top = Widget(window).window();
        top->show();
        Activate(window);
        test::At(window).SetKeyboardFocus(Control::Find(button));
        // With a handler of keys the key takes the long way.
        const ChainHandler keys(test::At(window).Target(), { test::kKeyDown }, Logs("key"));
        const ChainHandler command(test::At(window).Target(), { test::kCommand }, [&](auto, auto) {
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
    EXPECT_EQ(log, "key key ");
}

TEST_F(WindowsTest, AGroupLiesOverItsFirstWindow) {
    const WindowRef frame = MakeActiveWindow();
    const WindowRef editor = MakeWindow();
    auto group = std::make_unique<WindowGroup>(0x1FU);
    group->Add(test::At(frame));
    WindowGroup::OfClass(4).Add(test::At(editor));
    group->Add(test::At(editor));
    test::At(editor).Show();
    // Its keys are its own, also those that no widget took.
    const ControlRef field = Add<QLineEdit>(editor);
    const ChainHandler frameKeys(test::At(frame).Target(), { test::kKeyDown }, Logs("frame"));
    const ChainHandler editorKeys(test::At(editor).Target(), { test::kKeyDown }, Logs("editor"));
    test::At(editor).SetKeyboardFocus(Control::Find(field));
    Press(Qt::Key_F5);
    EXPECT_EQ(log, "editor ");

    group.reset();
    test::Dispose(frame);
    EXPECT_TRUE(test::IsThere(editor));
    EXPECT_TRUE(Widget(editor).isWindow());
}

// Ends a window as soon as a widget hears of another parent.
struct EndsWithParent : QObject {
    explicit EndsWithParent(WindowRef window) : window(window) {}
    bool eventFilter(QObject* /*widget*/, QEvent* event) override {
        if (event->type() == QEvent::ParentChange)
            test::Dispose(window);
        return false;
    }
    WindowRef window;
};

TEST_F(WindowsTest, AWindowThatAGroupLetsGoOfMayEndTheNext) {
    const WindowRef frame = MakeActiveWindow(), one = MakeWindow(), next = MakeWindow();
    WindowGroup group(0x1FU);
    for (const WindowRef window : { frame, one, next })
        group.Add(test::At(window));
    EndsWithParent filter(next);
    Widget(one).installEventFilter(&filter);
    test::Dispose(frame);
    EXPECT_TRUE(Widget(one).isWindow());
    EXPECT_FALSE(test::IsThere(next));
}

TEST_F(WindowsTest, AHostEmbedsAWindow) {
    QWidget host;
    auto* const own = new QLineEdit(&host);
    widget->setParent(&host);
    widget->setGeometry(0, 100, 300, 200);
    const ControlRef field = Add<QLineEdit>(window);
    const ControlRef button = Add<QPushButton>(window, kHICommandOK);
    test::At(window).SetDefaultButton(Control::Find(button));
    host.resize(400, 300);
    host.show();
    Activate(window);
    const ChainHandler command(test::At(window).Target(), { test::kCommand }, Logs("ok", kNoErr));
    own->setFocus();
    Press(Qt::Key_Return);
    EXPECT_EQ(log, ""); // in the host's own field
    EXPECT_EQ(test::At(window).KeyboardFocus(), nullptr);
    EXPECT_TRUE(test::At(window).SetKeyboardFocus(Control::Find(field)));
    Press(Qt::Key_A);
    Press(Qt::Key_Return);
    EXPECT_EQ(On(field).Text(), "a");
    EXPECT_EQ(log, "ok ");
    EXPECT_EQ(Window::Of(WidgetOf(field)), Window::Find(window));
    EXPECT_EQ(Window::Of(own), nullptr);
    widget->setParent(nullptr);
}

} // namespace
} // namespace platform
