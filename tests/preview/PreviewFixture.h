// SPDX-License-Identifier: BSD-3-Clause
// A shown window with a pane for a preview in it, a record of the reference host, and real input.
#pragma once

#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <QApplication>
#include <QCursor>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <gmock/gmock.h>

#include "host/Handle.h"
#include "host/Image.h"
#include "host/Tables.h"
#include "huxCommon/huxGUI/HuxControlImpl.h"
#include "huxCommon/huxGUI/HuxEvents.h"
#include "platform/ui/Cursors.h"
#include "platform/ui/UIObject.h"
#include "render/PIOffscreen.h"
#include "support/TestWorld.h"
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
        for (std::size_t i = 0; i < row.size(); ++i)
            row[i] = static_cast<std::uint8_t>(i * 7 + static_cast<std::size_t>(y) * 31);
        const int bytes = format.BytesPerChannel();
        for (int x = 0; opaque && format.alpha >= 0 && x < width; ++x)
            std::memset(
                &row[static_cast<std::size_t>(x * format.BytesPerPixel() + format.alpha * bytes)],
                0xFF, static_cast<std::size_t>(bytes));
    }
    return image;
}

class PreviewFixture : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(platform::EnsureUserInterface());
        for (const char* name : { "CursorPreviewHand", "CursorPreviewDrag" })
            RegisterCursor(name);
        record = host::MakeRecord();
        record.hFixedParam = params.Ref();
    }
    void TearDown() override { test::Dispose(window); }

    // Large enough for the pane, at a place of its own.
    void ShowPane(int width, int height) {
        const auto side = [](int value) { return static_cast<std::int16_t>(value); };
        window = platform::Window::Create({ 100, 100, side(height + 200), side(width + 200) });
        platform::Control* const control = platform::Control::Create(
            window, "UserPane",
            { kPaneTop, kPaneLeft, side(kPaneTop + height), side(kPaneLeft + width) });
        control->id = platform::ControlID { kHuxPropertyCreator, kPreviewItem };
        pane = control->Ref();
        test::At(window).Show();
        test::At(window).Widget().window()->activateWindow();
        QCoreApplication::processEvents();
    }
    QWidget& Widget() const { return test::At(window).Widget(); }
    // Of the control, as its window draws it.
    QWidget& PaneWidget() const { return *Widget().childAt(kPaneLeft + 3, kPaneTop + 3); }

    // x and y are of the pane. Synthetic input goes through the window, as a real mouse's does.
    void Move(int x, int y) const {
        QCursor::setPos(Widget().mapToGlobal(InWindow(x, y)));
        QTest::mouseMove(Widget().windowHandle(), InWindow(x, y));
    }
    void Release(int x, int y) const {
        QTest::mouseRelease(Widget().windowHandle(), Qt::LeftButton, {}, InWindow(x, y));
    }
    // Presses at the first place and drags over the others; returns with the button up. Each step
    // comes from the loop that runs by then.
    void DragOver(const std::vector<QPoint>& places) {
        QTimer steps;
        std::size_t next = 1;
        QObject::connect(&steps, &QTimer::timeout, [&] {
            if (next == places.size())
                Release(places.back().x(), places.back().y());
            else if (next < places.size())
                Move(places[next].x(), places[next].y());
            ++next;
        });
        steps.start(5);
        QTest::mousePress(Widget().windowHandle(), Qt::LeftButton, {},
                          InWindow(places[0].x(), places[0].y()));
    }
    void Wheel(int x, int y, int delta) const {
        const QPointF at = InWindow(x, y);
        QWheelEvent turn(at, Widget().mapToGlobal(at), {}, { 0, delta }, Qt::NoButton,
                         Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&Widget(), &turn);
    }

    host::Handle params { sizeof(_TEXTPARAM) };
    _EPIRECORD record {};
    platform::WindowRef window = nullptr;
    platform::ControlRef pane = nullptr;

private:
    static QPoint InWindow(int x, int y) { return { kPaneLeft + x, kPaneTop + y }; }
    static void RegisterCursor(const char* name) {
        if (platform::IsNamedPixMapCursorRegistered(name))
            return;
        const TestWorld world(16, 16);
        world.Erase();
        platform::PaintRect({ 4, 4, 12, 12 });
        platform::RegisterNamedPixMapCursor(world.World(), 8, 8, name);
    }
};

// The colours 0xRRGGBB of a world of that size.
inline std::vector<std::uint32_t> PixelsOf(platform::GWorldPtr world, int width, int height) {
    std::vector<std::uint32_t> pixels;
    const platform::PixMapHandle map = platform::GetGWorldPixMap(world);
    EXPECT_TRUE(platform::LockPixels(map));
    for (int y = 0; y < height; ++y) {
        const std::uint8_t* pixel =
            platform::GetPixBaseAddr(map) + y * std::ptrdiff_t { platform::GetPixRowBytes(map) };
        for (int x = 0; x < width; ++x, pixel += 4)
            pixels.push_back((pixel[1] << 16U) | (pixel[2] << 8U) | pixel[3]);
    }
    platform::UnlockPixels(map);
    return pixels;
}

inline std::unique_ptr<PIOffscreen> Borrow(const _EPIRECORD& record, host::Image& image) {
    return std::make_unique<PIOffscreen>(record.pObjectProcs, record.pOffscreenProcs, image.Ref());
}

} // namespace test
