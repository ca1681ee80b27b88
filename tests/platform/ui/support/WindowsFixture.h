// SPDX-License-Identifier: BSD-3-Clause
// Windows with fields and buttons, and real input.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>

#include "platform/ui/controls/Control.h"
#include "platform/ui/support/ControlEvents.h"
#include "platform/ui/windows/Window.h"
#include "support/WindowRefs.h"

namespace test {

inline constexpr platform::EventTypeSpec kKeyDown { platform::kEventClassKeyboard,
                                                    platform::kEventRawKeyDown };
constexpr platform::EventTypeSpec WindowEvent(std::uint32_t kind) {
    return { platform::kEventClassWindow, kind };
}

// Runs the loop until the condition holds, or for so long that it never will.
inline bool Until(const std::function<bool()>& holds) {
    return QTest::qWaitFor(holds, 10'000);
}

class WindowsFixture : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(platform::EnsureUserInterface()); }
    void TearDown() override {
        for (const platform::WindowRef window : m_windows)
            test::Dispose(window);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    platform::WindowRef Make() {
        platform::WindowRef window = nullptr;
        EXPECT_TRUE(window = platform::Window::Create({ 100, 100, 300, 400 }));
        m_windows.push_back(window);
        return window;
    }
    platform::WindowRef MakeActive() {
        const platform::WindowRef window = Make();
        test::At(window).Show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Widget(window)));
        return window;
    }
    static QWidget& Widget(platform::WindowRef window) { return test::At(window).Widget(); }
    // Below one another.
    template <class WidgetClass>
    static platform::ControlRef Add(platform::WindowRef window, std::uint32_t commandID = 0) {
        platform::Window& owner = *platform::Window::Find(window);
        auto* const widget = new WidgetClass(&owner.Widget());
        const auto above = owner.Widget().findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
        widget->setGeometry(10, 30 * static_cast<int>(above.size()), 120, 25);
        widget->show();
        platform::Control* const control = platform::MakeControl(*widget, owner);
        control->commandID = commandID;
        return control->Ref();
    }
    static QWidget* WidgetOf(platform::ControlRef control) {
        return &platform::Control::Find(control)->Widget();
    }
    static QString TextOf(platform::ControlRef control) {
        return dynamic_cast<QLineEdit&>(*WidgetOf(control)).text();
    }
    // As a user presses it: to the window that has the keyboard.
    static void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        ASSERT_TRUE(QGuiApplication::focusWindow());
        QTest::keyClick(QGuiApplication::focusWindow(), static_cast<Qt::Key>(key), modifiers);
    }
    static QPoint CentreOf(const QWidget& widget) {
        return widget.mapTo(widget.window(), widget.rect().center());
    }
    static void Click(const QWidget& widget) {
        QTest::mouseClick(widget.window()->windowHandle(), Qt::LeftButton, {}, CentreOf(widget));
    }

    std::string m_log;

    ChainHandler::Act Logs(std::string what,
                           platform::OSStatus status = platform::kEventNotHandledErr) {
        return [this, what = std::move(what), status](auto, auto) {
            m_log += what + " ";
            return status;
        };
    }

private:
    std::vector<platform::WindowRef> m_windows;
};

} // namespace test
