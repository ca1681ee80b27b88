// SPDX-License-Identifier: BSD-3-Clause
// Windows with controls of any class, the events that tests wait for, and real input.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <gmock/gmock.h>

#include "platform/Commands.h"
#include "platform/ui/controls/Control.h"
#include "support/ChainHandler.h"
#include "support/WindowRefs.h"

namespace test {

using platform::EventTypeSpec;

inline constexpr EventTypeSpec kHit { platform::kEventClassControl, platform::kEventControlHit };
inline constexpr EventTypeSpec kDraw { platform::kEventClassControl, platform::kEventControlDraw };
inline constexpr EventTypeSpec kFocus { platform::kEventClassControl,
                                        platform::kEventControlSetFocusPart };
inline constexpr EventTypeSpec kDisposed { platform::kEventClassControl,
                                           platform::kEventControlDisposed };
inline constexpr EventTypeSpec kCommand { platform::kEventClassCommand,
                                          platform::kEventCommandProcess };
inline constexpr EventTypeSpec kKeyDown { platform::kEventClassKeyboard,
                                          platform::kEventRawKeyDown };

inline platform::ControlPartCode PartOf(platform::EventRef event) {
    return ParameterOf<platform::ControlPartCode>(event, platform::kEventParamControlPart,
                                                  platform::kTypeControlPartCode, -1);
}
inline platform::HICommandExtended CommandOf(platform::EventRef event) {
    return ParameterOf<platform::HICommandExtended>(event, platform::kEventParamDirectObject,
                                                    platform::kTypeHICommand);
}

// What was posted comes with the loop.
inline void Drain() {
    while (platform::DeliverNextEvent()) {
    }
    QCoreApplication::processEvents();
    while (platform::DeliverNextEvent()) {
    }
}

// There is a window from the beginning, not shown yet.
class UIFixture : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(platform::EnsureUserInterface());
        window = MakeWindow();
        widget = &Widget(window);
    }
    void TearDown() override {
        for (const platform::WindowRef made : m_windows)
            test::Dispose(made);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    platform::WindowRef MakeWindow() {
        m_windows.push_back(platform::Window::Create({ 100, 100, 300, 400 }));
        EXPECT_TRUE(m_windows.back());
        return m_windows.back();
    }
    platform::WindowRef MakeActiveWindow() {
        const platform::WindowRef made = MakeWindow();
        Activate(made);
        return made;
    }
    static void Activate(platform::WindowRef shown) {
        test::At(shown).Show();
        Widget(shown).window()->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(Widget(shown).window()));
    }
    static QWidget& Widget(platform::WindowRef of) { return test::At(of).Widget(); }

    // The control of a widget in the window, of 80 x 40 at (10, 10).
    platform::ControlRef Make(QWidget* made) {
        made->setGeometry(10, 10, 80, 40);
        made->show();
        return platform::MakeControl(*made, test::At(window))->Ref();
    }
    template <class WidgetClass>
    platform::ControlRef Make() {
        return Make(new WidgetClass(widget));
    }
    platform::ControlRef MakeCustom(const char* className) {
        return Make(platform::MakeCustomWidget(QString::fromLatin1(className), widget));
    }
    // Below one another.
    template <class WidgetClass>
    static platform::ControlRef Add(platform::WindowRef to, std::uint32_t commandID = 0) {
        auto* const added = new WidgetClass(&Widget(to));
        const auto above = Widget(to).findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
        added->setGeometry(10, 30 * static_cast<int>(above.size()), 120, 25);
        added->show();
        platform::Control* const control = platform::MakeControl(*added, test::At(to));
        control->commandID = commandID;
        return control->Ref();
    }
    static platform::Control& On(platform::ControlRef control) {
        return *platform::Control::Find(control);
    }
    static QWidget* WidgetOf(platform::ControlRef control) { return &On(control).Widget(); }

    // As a user presses it: to the window that has the keyboard.
    static void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        ASSERT_TRUE(QGuiApplication::focusWindow());
        QTest::keyClick(QGuiApplication::focusWindow(), static_cast<Qt::Key>(key), modifiers);
    }
    static QPoint CentreOf(const QWidget& of) { return of.mapTo(of.window(), of.rect().center()); }
    static void Click(const QWidget& on) {
        QTest::mouseClick(on.window()->windowHandle(), Qt::LeftButton, {}, CentreOf(on));
    }
    static void Turn(QWidget& wheeled, int eighths) {
        const QPointF place = wheeled.rect().center();
        QWheelEvent event(place, wheeled.mapToGlobal(place), {}, { 0, eighths }, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&wheeled, &event);
    }
    static void PasteInto(QWidget& field, const char* text) {
        QApplication::clipboard()->setText(QString::fromUtf8(text));
        QTest::keySequence(&field, QKeySequence::Paste);
    }
    static void Compose(QWidget& field, const char* preedit, const char* commit) {
        QInputMethodEvent event(QString::fromUtf8(preedit), {});
        event.setCommitString(QString::fromUtf8(commit));
        QCoreApplication::sendEvent(&field, &event);
    }
    // From the loop that runs next.
    static void Later(std::function<void()> act) { QTimer::singleShot(0, qApp, std::move(act)); }

    ChainHandler::Act Logs(std::string what,
                           platform::OSStatus status = platform::kEventNotHandledErr) {
        return [this, what = std::move(what), status](auto, auto) {
            log += what + " ";
            return status;
        };
    }

    platform::WindowRef window = nullptr;
    QWidget* widget = nullptr; // the window's
    std::string log;

private:
    std::vector<platform::WindowRef> m_windows;
};

} // namespace test
