// SPDX-License-Identifier: BSD-3-Clause
#include "platform/ui/support/WindowsFixture.h"

namespace platform {
namespace {

using test::ChainHandler;
using test::WindowEvent;

class WindowsTest : public test::WindowsFixture {};

TEST_F(WindowsTest, AReferenceToAWindowThatIsGoneGivesAStatus) {
    WindowRef const window = Make();
    DisposeWindow(window);
    DisposeWindow(window);
    EXPECT_FALSE(IsValidWindowPtr(window));
    EXPECT_EQ(GetWindowEventTarget(window), nullptr);
    EXPECT_EQ(GetWindowWidget(window), nullptr);
    Rect bounds;
    ControlRef control = nullptr;
    for (OSStatus const status :
         { ShowWindow(window), HideWindow(window), SelectWindow(window), BringToFront(window),
           MoveWindow(window, 0, 0, true), SizeWindow(window, 1, 1),
           GetWindowContentBounds(window, &bounds), RepositionWindow(window, nullptr, 1),
           SetWindowTitleWithCFString(window, nullptr), ChangeWindowAttributes(window, 1, 0),
           SetWindowModality(window, 0, nullptr), RunAppModalLoopForWindow(window),
           QuitAppModalLoopForWindow(window), SetUserFocusWindow(window),
           SetWindowDefaultButton(window, nullptr), GetKeyboardFocus(window, &control),
           SetWindowGroup(window, GetWindowGroupOfClass(4)) })
        EXPECT_EQ(status, kErrInvalidWindow);
    EXPECT_FALSE(IsWindowVisible(window) || IsWindowActive(window) || IsWindowBuffered(window));
}

TEST_F(WindowsTest, NumbersAreNeverGivenAgain) {
    WindowRef const first = Make();
    DisposeWindow(first);
    WindowRef const second = Make();
    EXPECT_GT(reinterpret_cast<std::uintptr_t>(second), reinterpret_cast<std::uintptr_t>(first));
    EXPECT_EQ(GetHIObjectEventTarget(AsHIObject(first)), nullptr);
    EXPECT_EQ(GetHIObjectEventTarget(AsHIObject(second)), GetWindowEventTarget(second));
}

TEST_F(WindowsTest, ContentIsWhereItWasPut) {
    WindowRef const window = Make();
    MoveWindow(window, 210, 120, false);
    SizeWindow(window, 300, 150);
    Rect bounds {};
    EXPECT_EQ(GetWindowContentBounds(window, &bounds), kNoErr);
    EXPECT_THAT((std::vector { bounds.top, bounds.left, bounds.bottom, bounds.right }),
                testing::ElementsAre(120, 210, 270, 510));
    Point point { 125, 220 };
    GlobalToWindow(window, &point);
    EXPECT_EQ(point.h, 10);
    EXPECT_EQ(point.v, 5);
    WindowToGlobal(window, &point);
    EXPECT_EQ(point.h, 220);
    WindowRef const other = Make();
    SizeWindow(other, 100, 50);
    EXPECT_EQ(RepositionWindow(other, window, kWindowCenterOnMainScreen), kNoErr);
    GetWindowContentBounds(other, &bounds);
    EXPECT_EQ(bounds.left + 50, 360);
    EXPECT_EQ(RepositionWindow(other, window, 7), kParamErr);
}

TEST_F(WindowsTest, KeepsTitleAndAttributes) {
    WindowRef const window = Make();
    CFStringRef const title = CFStringCreateWithUTF8("台詞");
    SetWindowTitleWithCFString(window, title);
    CFRelease(title);
    CFStringRef read = nullptr;
    CopyWindowTitleAsCFString(window, &read);
    EXPECT_EQ(CFStringGetUTF8(read), "台詞");
    CFRelease(read);

    std::uint32_t value = 0;
    ShowWindow(window);
    ChangeWindowAttributes(window, kWindowHasNoTitleBarAttribute,
                           kWindowCloseBoxAttribute | kWindowCollapseBoxAttribute);
    GetWindowAttributes(window, &value);
    EXPECT_EQ(value, kWindowHasNoTitleBarAttribute);
    EXPECT_TRUE(Widget(window).windowFlags() & Qt::FramelessWindowHint);
    EXPECT_FALSE(Widget(window).windowFlags() & Qt::WindowCloseButtonHint);
    EXPECT_TRUE(IsWindowVisible(window));
}

TEST_F(WindowsTest, TellsOfShowingMovingAndActivation) {
    WindowRef const window = Make();
    ChainHandler const handler(
        GetWindowEventTarget(window),
        { WindowEvent(kEventWindowShown), WindowEvent(kEventWindowHidden),
          WindowEvent(kEventWindowBoundsChanged), WindowEvent(kEventWindowActivated),
          WindowEvent(kEventWindowDeactivated), WindowEvent(kEventWindowFocusAcquired),
          WindowEvent(kEventWindowFocusRelinquish) },
        [this](auto, EventRef event) {
            m_log += std::to_string(GetEventKind(event)) + " ";
            return kEventNotHandledErr;
        });
    ShowWindow(window);
    EXPECT_THAT(m_log, testing::HasSubstr("24 "));
    ASSERT_TRUE(test::Until([&] { return IsWindowActive(window); }));
    QCoreApplication::processEvents();
    EXPECT_THAT(m_log, testing::HasSubstr("5 200 "));
    m_log.clear();
    MoveWindow(window, 150, 160, false);
    EXPECT_EQ(m_log, "27 ");
    m_log.clear();
    MakeActive();
    EXPECT_EQ(m_log, "201 6 ");
    m_log.clear();
    HideWindow(window);
    EXPECT_EQ(m_log, "25 ");
}

TEST_F(WindowsTest, TheClosedEventComesWhileAllIsWhole) {
    enum class By { kCall, kWidget, kHost };
    for (By const by : { By::kCall, By::kWidget, By::kHost }) {
        m_log.clear();
        QPointer<QWidget> const host(new QWidget);
        WindowRef const window = Make();
        QPointer<QWidget> const widget(&Widget(window));
        if (by == By::kHost)
            widget->setParent(host);
        ControlRef const field = Add<QLineEdit>(window);
        ChainHandler const closed(GetWindowEventTarget(window), { WindowEvent(kEventWindowClosed) },
                                  [&](auto, auto) {
                                      m_log += Control::Find(field) ? "whole " : "late ";
                                      DisposeWindow(window); // is going on already
                                      return kNoErr;
                                  });
        ChainHandler const disposed(Control::Find(field)->Target(), { test::kControlDisposed },
                                    Logs("disposed"));
        if (by == By::kCall)
            DisposeWindow(window);
        else
            delete (by == By::kHost ? host : widget);
        EXPECT_EQ(m_log, "whole disposed ") << static_cast<int>(by);
        EXPECT_FALSE(IsValidWindowPtr(window) || Control::Find(field));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_FALSE(widget);
        delete host;
    }
}

TEST_F(WindowsTest, AHandlerOfTheClosedEventMayDeleteTheHost) {
    auto* const host = new QWidget;
    WindowRef const window = Make();
    Widget(window).setParent(host);
    Add<QPushButton>(window);
    ChainHandler const closed(GetWindowEventTarget(window), { WindowEvent(kEventWindowClosed) },
                              [host](auto, auto) {
                                  delete host;
                                  return kNoErr;
                              });
    DisposeWindow(window);
    EXPECT_FALSE(IsValidWindowPtr(window));
}

TEST_F(WindowsTest, ClosingPressesTheCancelButtonElseDisposes) {
    WindowRef const window = MakeActive();
    ControlRef const cancel = Add<QPushButton>(window, kHICommandCancel);
    SetWindowCancelButton(window, cancel);
    ChainHandler const command(GetWindowEventTarget(window), { test::kCommand },
                               Logs("command", kNoErr));
    Widget(window).close();
    EXPECT_EQ(m_log, "command ");
    EXPECT_TRUE(IsWindowVisible(window));
    {
        ChainHandler const close(GetWindowEventTarget(window), { WindowEvent(kEventWindowClose) },
                                 Logs("close", kNoErr));
        Widget(window).close();
        EXPECT_EQ(m_log, "command close ");
    }
    SetWindowCancelButton(window, nullptr);
    Widget(window).close();
    EXPECT_FALSE(IsValidWindowPtr(window));
}

TEST_F(WindowsTest, AButtonMayDisposeItsWindowAndEvenDeleteTheHost) {
    for (bool const embedded : { false, true }) {
        auto* const host = new QWidget;
        WindowRef const window = Make();
        if (embedded)
            Widget(window).setParent(host);
        ControlRef const button = Add<QPushButton>(window, 9);
        SetWindowDefaultButton(window, button);
        ShowWindow(window);
        QWidget* const top = Widget(window).window();
        top->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(top));
        SetKeyboardFocus(window, button, kControlButtonPart);
        // With a handler of keys the key takes the long way.
        ChainHandler const keys(GetWindowEventTarget(window), { test::kKeyDown }, Logs("key"));
        ChainHandler const command(GetWindowEventTarget(window), { test::kCommand },
                                   [&](auto, auto) {
                                       if (embedded)
                                           delete host;
                                       else
                                           DisposeWindow(window);
                                       return kNoErr;
                                   });
        QTest::keyPress(top->windowHandle(), Qt::Key_Return);
        EXPECT_FALSE(IsValidWindowPtr(window));
        if (!embedded)
            delete host;
    }
    EXPECT_EQ(m_log, "key key ");
}

TEST_F(WindowsTest, AGroupLiesOverItsFirstWindow) {
    WindowRef const frame = MakeActive();
    WindowRef const editor = Make();
    MoveWindow(editor, 110, 120, false);
    WindowGroupRef group = nullptr;
    CreateWindowGroup(0x1F, &group);
    EXPECT_EQ(SetWindowGroupParent(group, GetWindowGroup(frame)), kNoErr);
    SetWindowGroup(frame, group);
    SetWindowGroup(editor, GetWindowGroupOfClass(4));
    SetWindowGroup(editor, group);
    ShowWindow(editor);
    MoveWindow(frame, 200, 300, false);
    Rect bounds {};
    GetWindowContentBounds(editor, &bounds);
    EXPECT_EQ(bounds.left, 210);
    EXPECT_EQ(bounds.top, 320);

    // Its keys are its own, also those that no widget took.
    ControlRef const field = Add<QLineEdit>(editor);
    ChainHandler const frameKeys(GetWindowEventTarget(frame), { test::kKeyDown }, Logs("frame"));
    ChainHandler const editorKeys(GetWindowEventTarget(editor), { test::kKeyDown }, Logs("editor"));
    SetKeyboardFocus(editor, field, kControlEditTextPart);
    Press(Qt::Key_F5);
    EXPECT_EQ(m_log, "editor ");

    EXPECT_EQ(ReleaseWindowGroup(group), kNoErr);
    DisposeWindow(frame);
    EXPECT_TRUE(IsValidWindowPtr(editor));
    EXPECT_TRUE(Widget(editor).isWindow());
    EXPECT_EQ(SetWindowGroup(editor, group), kParamErr);
}

TEST_F(WindowsTest, AHostEmbedsAWindow) {
    QWidget host;
    auto* const own = new QLineEdit(&host);
    WindowRef const window = Make();
    Widget(window).setParent(&host);
    Widget(window).setGeometry(0, 100, 300, 200);
    ControlRef const field = Add<QLineEdit>(window);
    ControlRef const button = Add<QPushButton>(window, kHICommandOK);
    SetWindowDefaultButton(window, button);
    ShowWindow(window);
    host.resize(400, 300);
    host.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&host));
    ChainHandler const command(GetWindowEventTarget(window), { test::kCommand },
                               Logs("ok", kNoErr));
    own->setFocus();
    Press(Qt::Key_Return);
    EXPECT_EQ(m_log, ""); // in the host's own field
    ControlRef focus = nullptr;
    GetKeyboardFocus(window, &focus);
    EXPECT_EQ(focus, nullptr);
    EXPECT_EQ(SetKeyboardFocus(window, field, kControlEditTextPart), kNoErr);
    Press(Qt::Key_A);
    Press(Qt::Key_Return);
    EXPECT_EQ(TextOf(field), "a");
    EXPECT_EQ(m_log, "ok ");
    EXPECT_EQ(GetWidgetWindow(WidgetOf(field)), window);
    EXPECT_EQ(GetWidgetWindow(own), nullptr);
    Widget(window).setParent(nullptr);
}

} // namespace
} // namespace platform
