// SPDX-License-Identifier: BSD-3-Clause
// The window with edit fields has a stepper too, which has the command 5.
#pragma once

#include "huxCommon/HuxEditTextFixture.h"
#include "huxCommon/huxGUI/HuxLittleArrows.h"
#include "support/WindowRefs.h"

namespace test {

class HuxLittleArrowsFixture : public HuxEditTextFixture {
protected:
    void SetUp() override {
        HuxEditTextFixture::SetUp();
        arrows = NewArrows<HuxLittleArrows>();
    }
    template <class Arrows>
    Arrows* NewArrows() {
        widget = platform::MakeCustomWidget("Stepper", &test::At(window).Widget());
        widget->setGeometry(220, 10, 20, 40);
        widget->show();
        platform::Control* const control =
            platform::MakeControl(*widget, *platform::Window::Find(window));
        control->commandID = 5;
        auto* const made = new Arrows; // ends with its control
        EXPECT_EQ(made->Attach(control->Ref()), platform::kNoErr);
        return made;
    }
    void Up() { QTest::keyClick(widget, Qt::Key_Up); }
    void Down() { QTest::keyClick(widget, Qt::Key_Down); }

    HuxLittleArrows* arrows = nullptr;
    QWidget* widget = nullptr;
};

} // namespace test
