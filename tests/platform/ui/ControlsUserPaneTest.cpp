// SPDX-License-Identifier: BSD-3-Clause
// Panes that handlers draw: which port they draw into, and what is shown.
#include <QImage>

#include "platform/ui/UIFixture.h"
#include "support/TestWorld.h"

namespace {

using namespace platform;
using namespace test;

class ControlsUserPaneTest : public UIFixture {
protected:
    void SetUp() override {
        UIFixture::SetUp();
        pane = Control::Create(window, "UserPane", { 10, 10, 50, 90 })->Ref();
        widget->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(widget));
    }
    QImage Shown() { return WidgetOf(pane)->grab().toImage(); }

    ControlRef pane = nullptr;
};

TEST_F(ControlsUserPaneTest, DrawsIntoAPortOfItsSizeAndRestoresTheCallers) {
    const TestWorld callers(3, 3);
    RGBForeColor({ 1, 2, 3 });
    int draws = 0;
    Rect last { 39, 79, 40, 80 }; // the last pixel
    const ChainHandler draw(On(pane).Target(), { kDraw }, [&](EventRef) {
        ++draws;
        EXPECT_NE(GetPort(), callers.World());
        RGBForeColor({ 65535, 0, 0 });
        PaintRect({ 0, 0, 1, 1 });
        PaintRect(last);
        return kNoErr;
    });
    QImage shown = Shown();
    EXPECT_EQ(GetPort(), callers.World());
    RGBColor fore {};
    GetForeColor(&fore);
    EXPECT_EQ(fore.red, 1);
    EXPECT_EQ(shown.size(), QSize(80, 40));
    EXPECT_EQ(shown.pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(shown.pixelColor(79, 39), QColor(Qt::red));
    EXPECT_EQ(shown.pixelColor(1, 1), widget->palette().color(QPalette::Window)); // left undrawn
    last = { 19, 159, 32767, 32767 };                                             // clipped to it
    On(pane).Resize(160, 20);
    shown = Shown();
    EXPECT_EQ(shown.size(), QSize(160, 20));
    EXPECT_EQ(shown.pixelColor(159, 19), QColor(Qt::red));
    On(pane).Resize(0, 0); // no port of no size
    draws = 0;
    On(pane).Draw();
    EXPECT_EQ(draws, 0);
}

TEST_F(ControlsUserPaneTest, RestoresThePortWhenAHandlerThrows) {
    const TestWorld callers(3, 3);
    const ChainHandler draw(On(pane).Target(), { kDraw },
                            [](EventRef) -> OSStatus { throw std::runtime_error("no ink"); });
    QPaintEvent paint(QRect(0, 0, 10, 10));
    // Not through the loop, which no exception may cross.
    EXPECT_THROW(static_cast<QObject*>(WidgetOf(pane))->event(&paint), std::runtime_error);
    EXPECT_EQ(GetPort(), callers.World());
}

// Its widget paints all of itself, which Qt takes as a reason not to update it with the window. A drag
// draws, flushes and marks the window stale for each step: that is one picture.
TEST_F(ControlsUserPaneTest, IsDrawnOnceWhenItIsStaleOrAskedFor) {
    int draws = 0;
    bool flushes = false;
    const ChainHandler draw(On(pane).Target(), { kDraw }, [&](EventRef) {
        ++draws;
        if (flushes)
            On(pane).Draw(); // not within itself
        return kNoErr;
    });
    const auto stale = [this](const Rect& part) {
        return [this, part] { At(window).Invalidate(&part); };
    };
    const struct {
        const char* what;
        std::function<void()> act;
        bool flush;
        int atOnce, inAll;
    } rows[] = { { "it is stale", [&] { On(pane).Invalidate(); }, false, 0, 1 },
                 { "it is flushed", [&] { On(pane).Invalidate(); }, true, 1, 1 },
                 { "the window is", [&] { At(window).Invalidate(nullptr); }, false, 0, 1 },
                 { "its place is", stale({ 10, 10, 50, 90 }), false, 0, 1 },
                 { "its last pixel is", stale({ 49, 89, 60, 100 }), false, 0, 1 },
                 { "what is beside it is", stale({ 50, 90, 60, 100 }), false, 0, 0 },
                 { "it is asked for", [&] { On(pane).Draw(); }, true, 1, 1 } };
    for (const auto& row : rows) {
        QCoreApplication::processEvents();
        draws = 0;
        flushes = row.flush;
        row.act();
        if (row.flush)
            At(window).Flush();
        EXPECT_EQ(draws, row.atOnce) << row.what;
        QCoreApplication::processEvents();
        EXPECT_EQ(draws, row.inAll) << row.what;
    }
}

TEST_F(ControlsUserPaneTest, APictureHasNothingOfTheOneBefore) {
    Rect place { 0, 0, 3, 3 };
    const ChainHandler draw(On(pane).Target(), { kDraw }, [&](EventRef) {
        // Pixels, not recorded steps, are what the world keeps.
        const PixMapHandle pixels = GetGWorldPixMap(GetPort());
        LockPixels(pixels);
        GetWritablePixBaseAddr(pixels);
        UnlockPixels(pixels);
        RGBForeColor({ 65535, 0, 0 });
        PaintRect(place);
        return kNoErr;
    });
    const QColor undrawn = widget->palette().color(QPalette::Window);
    EXPECT_EQ(Shown().pixelColor(1, 1), QColor(Qt::red));
    place = { 37, 77, 40, 80 };
    const QImage second = Shown();
    EXPECT_EQ(second.pixelColor(1, 1), undrawn);
    EXPECT_EQ(second.pixelColor(78, 38), QColor(Qt::red));
    EXPECT_EQ(second.pixelColor(40, 20), undrawn);
    place = { 18, 38, 22, 42 };
    EXPECT_EQ(Shown().pixelColor(78, 38), undrawn);
}

} // namespace
