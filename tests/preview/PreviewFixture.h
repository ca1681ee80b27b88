// SPDX-License-Identifier: BSD-3-Clause
// A shown window with a pane for a preview in it, and a person with a mouse.
#pragma once

#include <memory>
#include <vector>

#include <QApplication>
#include <QCursor>
#include <QTest>
#include <QTimer>

#include "huxCommon/huxGUI/HuxControlImpl.h"
#include "huxCommon/huxGUI/HuxEvents.h"
#include "platform/ui/Cursors.h"
#include "render/LocalizedString.h"
#include "render/PIOffscreen.h"
#include "support/EffectFixture.h"
#include "support/WindowRefs.h"

namespace test {

inline constexpr std::int32_t kPreviewItem = 91;
inline constexpr int kPaneLeft = 20;
inline constexpr int kPaneTop = 30;

// Each pixel has other channels, and all alphas are met.
inline std::unique_ptr<host::Image> MakePicture(int width, int height, host::PixelFormat format,
                                                bool opaque = true) {
    auto image = host::Image::Make(width, height, format, 12);
    for (int y = 0; y < height; ++y) {
        auto row = image->Row(y);
        for (std::size_t i = 0; i < row.size(); ++i) {
            const int channel =
                static_cast<int>(i) % format.BytesPerPixel() / format.BytesPerChannel();
            row[i] = opaque && channel == format.alpha
                         ? 0xFF
                         : static_cast<std::uint8_t>(i * 7 + static_cast<std::size_t>(y) * 31);
        }
    }
    return image;
}

class PreviewFixture : public EffectFixture {
protected:
    void TearDown() override {
        test::Dispose(window);
        EffectFixture::TearDown();
    }

    // Large enough for the pane, at a place of its own. An earlier one goes.
    void ShowPane(int width, int height) {
        test::Dispose(window);
        const auto side = [](int value) { return static_cast<std::int16_t>(value); };
        window = platform::Window::Create({ 100, 100, side(height + 200), side(width + 200) });
        platform::Control* const control = platform::Control::Create(
            window, "UserPane",
            { kPaneTop, kPaneLeft, side(kPaneTop + height), side(kPaneLeft + width) });
        control->id = platform::ControlID { kHuxPropertyCreator, kPreviewItem };
        pane = control->Ref();
        test::At(window).Show();
        Widget().window()->activateWindow();
        QCoreApplication::processEvents();
    }
    QWidget& Widget() const { return test::At(window).Widget(); }
    // Of the control, as its window draws it.
    QWidget& PaneWidget() const { return *Widget().childAt(kPaneLeft + 3, kPaneTop + 3); }
    QImage Shown() const { return PaneWidget().grab().toImage(); }
    static platform::CFBundleRef Bundle() {
        return platform::CFBundleGetBundleWithIdentifier(kPluginBundleIdentifier);
    }
    std::unique_ptr<PIOffscreen> Borrow(host::Image& picture) const {
        return std::make_unique<PIOffscreen>(record.pObjectProcs, record.pOffscreenProcs,
                                             picture.Ref());
    }

    // Places are of the pane. Synthetic input goes through the window, as a real mouse's does.
    static QPoint InWindow(const QPoint& place) { return place + QPoint(kPaneLeft, kPaneTop); }
    void Move(const QPoint& place) const {
        QCursor::setPos(Widget().mapToGlobal(InWindow(place)));
        QTest::mouseMove(Widget().windowHandle(), InWindow(place));
    }
    // Presses at the first place and drags over the others; returns with the button up, or the window
    // gone. Each step comes from the loop that runs by then.
    void DragOver(const std::vector<QPoint>& places) {
        QTimer steps;
        std::size_t next = 1;
        steps.callOnTimeout([&] {
            if (!test::IsThere(window))
                return;
            if (next < places.size())
                Move(places[next]);
            else if (next == places.size())
                QTest::mouseRelease(Widget().windowHandle(), Qt::LeftButton, {},
                                    InWindow(places.back()));
            ++next;
        });
        steps.start(0);
        QTest::mousePress(Widget().windowHandle(), Qt::LeftButton, {}, InWindow(places[0]));
        while (next <= places.size() && test::IsThere(window))
            QCoreApplication::processEvents();
    }

    platform::WindowRef window = nullptr;
    platform::ControlRef pane = nullptr;
};

} // namespace test
