// SPDX-License-Identifier: BSD-3-Clause
// A window with controls of any class.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QRadioButton>
#include <QWidget>
#include <gtest/gtest.h>

#include "platform/ui/controls/Control.h"
#include "platform/ui/support/ControlEvents.h"
#include "platform/ui/windows/Window.h"

namespace test {

class ControlsFixture : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(platform::EnsureUserInterface());
        widget = new QWidget;
        widget->resize(400, 300);
        window = (new platform::WidgetWindow(*widget))->Ref();
    }
    void TearDown() override { delete widget; } // as a host may

    platform::Window& Owner() { return *platform::Window::Find(window); }
    // The control of a new widget, of 80 x 40 at (10, 10), in the window or in a widget of it.
    platform::ControlRef Make(QWidget* made) {
        made->setGeometry(10, 10, 80, 40);
        return platform::MakeControl(*made, Owner())->Ref();
    }
    template <class WidgetClass>
    platform::ControlRef Make() {
        return Make(new WidgetClass(widget));
    }
    platform::ControlRef MakeCustom(const char* className) {
        return Make(platform::MakeCustomWidget(QString::fromLatin1(className), widget));
    }
    static platform::Control& On(platform::ControlRef control) {
        return *platform::Control::Find(control);
    }
    static QWidget* WidgetOf(platform::ControlRef control) {
        return &platform::Control::Find(control)->Widget();
    }

    platform::WindowRef window = nullptr;
    QWidget* widget = nullptr;
};

} // namespace test
