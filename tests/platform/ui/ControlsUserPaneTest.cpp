// SPDX-License-Identifier: BSD-3-Clause
// Panes that handlers draw and track: which port they draw into, what is shown, who hears a press.
#include <optional>

#include <QCoreApplication>
#include <QImage>
#include <QTest>

#include "platform/ui/ControlsFixture.h"
#include "support/TestWorld.h"
#include "support/WindowRefs.h"

namespace {

using namespace platform;
using namespace test;

constexpr EventTypeSpec kHitTest { kEventClassControl, kEventControlHitTest };
constexpr EventTypeSpec kTrack { kEventClassControl, kEventControlTrack };

class ControlsUserPaneTest : public ControlsFixture {
protected:
    void SetUp() override {
        ControlsFixture::SetUp();
        pane = Control::Create(window, "UserPane", { 10, 10, 50, 90 })->Ref();
        widget->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(widget));
    }
    QImage Shown() { return WidgetOf(pane)->grab().toImage(); }

    ControlRef pane = nullptr;
};

TEST_F(ControlsUserPaneTest, DrawsIntoAPortOfItsOwnAndRestoresTheCallers) {
    const TestWorld callers(3, 3);
    RGBForeColor({ 1, 2, 3 });
    bool drawn = false;
    const ChainHandler draw(On(pane).Target(), { kDraw }, [&](EventRef) {
        drawn = true;
        EXPECT_NE(GetPort(), callers.World());
        RGBForeColor({ 65535, 0, 0 });
        PaintRect({ 0, 0, 1, 1 });
        PaintRect({ 39, 79, 40, 80 }); // the last pixel
        return kNoErr;
    });
    const QImage shown = Shown();
    EXPECT_TRUE(drawn);
    EXPECT_EQ(GetPort(), callers.World());
    RGBColor fore {};
    GetForeColor(&fore);
    EXPECT_EQ(fore.red, 1);
    EXPECT_EQ(shown.size(), QSize(80, 40));
    EXPECT_EQ(shown.pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(shown.pixelColor(79, 39), QColor(Qt::red));
    EXPECT_EQ(shown.pixelColor(1, 1), widget->palette().color(QPalette::Window)); // left undrawn
}

// Its widget paints all of itself, which Qt takes as a reason not to update it with the window.
TEST_F(ControlsUserPaneTest, IsDrawnAgainWhenItsPartOfTheWindowIsStale) {
    int draws = 0;
    const ChainHandler draw(On(pane).Target(), { kDraw }, [&](EventRef) {
        ++draws;
        return kNoErr;
    });
    struct Row {
        const char* part;
        std::optional<Rect> bounds;
        bool draws;
    };
    for (const Row& row :
         { Row { "all", std::nullopt, true }, Row { "the pane", Rect { 10, 10, 50, 90 }, true },
           Row { "its last pixel", Rect { 49, 89, 60, 100 }, true },
           Row { "beside it", Rect { 50, 90, 60, 100 }, false } }) {
        QCoreApplication::processEvents();
        draws = 0;
        test::At(window).Invalidate(row.bounds ? &*row.bounds : nullptr);
        QCoreApplication::processEvents();
        EXPECT_EQ(draws > 0, row.draws) << row.part;
    }
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

// A drag draws, flushes and marks the window stale for each step: that is one picture.
TEST_F(ControlsUserPaneTest, DrawsNowWhenAskedAndAFlushOnlyWhatWaits) {
    int draws = 0;
    const ChainHandler draw(On(pane).Target(), { kDraw }, [&](EventRef) {
        ++draws;
        On(pane).Draw(); // not within itself
        return kNoErr;
    });
    const auto drawn = [&draws](const std::function<void()>& act) {
        QCoreApplication::processEvents();
        draws = 0;
        act();
        const int atOnce = draws;
        QCoreApplication::processEvents();
        return std::pair(atOnce, draws);
    };
    EXPECT_EQ(drawn([&] { On(pane).Invalidate(); }), std::pair(0, 1));
    EXPECT_EQ(drawn([&] {
                  Owner().Invalidate(nullptr);
                  On(pane).Draw();
                  Owner().Flush();
              }),
              std::pair(1, 1));
    EXPECT_EQ(drawn([&] {
                  On(pane).Invalidate();
                  Owner().Flush();
              }),
              std::pair(1, 1));
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

TEST_F(ControlsUserPaneTest, ItsWorldFollowsItsSize) {
    std::vector<std::int32_t> rowBytes;
    const ChainHandler draw(On(pane).Target(), { kDraw }, [&](EventRef) {
        rowBytes.push_back(GetPixRowBytes(GetGWorldPixMap(GetPort())));
        PaintRect({ 0, 0, 32767, 32767 }); // clipped to it
        return kNoErr;
    });
    Shown();
    On(pane).Resize(160, 20);
    EXPECT_EQ(Shown().size(), QSize(160, 20));
    ASSERT_GE(rowBytes.size(), 2U);
    EXPECT_GE(rowBytes.front(), 80 * 4);
    EXPECT_GE(rowBytes.back(), 160 * 4);
    On(pane).Resize(0, 0); // no world of no size
    const std::size_t before = rowBytes.size();
    On(pane).Draw();
    EXPECT_EQ(rowBytes.size(), before);
}

TEST_F(ControlsUserPaneTest, APressIsTestedTrackedAndElseAHit) {
    struct Row {
        const char* what;
        ControlPartCode part; // what the hit test says
        OSStatus tracked;
        const char* log;
    };
    for (const Row& row : {
             Row { "nobody tracks", 1, kEventNotHandledErr, "test track1 hit1 " },
             Row { "another part", 7, kNoErr, "test track7 " },
             Row { "no part there", 0, kNoErr, "test " },
         }) {
        std::string log;
        HIPoint place {};
        const ChainHandler handler(
            On(pane).Target(), { kHitTest, kTrack, kHit }, [&](EventRef event) {
                const std::uint32_t kind = GetEventKind(event);
                if (kind == kEventControlHitTest) {
                    log += "test ";
                    return SetEventParameter(event, kEventParamControlPart, kTypeControlPartCode,
                                             sizeof row.part, &row.part);
                }
                if (kind == kEventControlTrack)
                    place = ParameterOf<HIPoint>(event, kEventParamMouseLocation, kTypeHIPoint);
                log += (kind == kEventControlTrack ? "track" : "hit") +
                       std::to_string(PartOf(event)) + " ";
                return kind == kEventControlTrack ? row.tracked : kNoErr;
            });
        QTest::mouseClick(WidgetOf(pane), Qt::LeftButton, {}, { 12, 34 });
        EXPECT_EQ(log, row.log) << row.what;
        if (row.part != 0) {
            EXPECT_EQ(place.x, 12);
            EXPECT_EQ(place.y, 34);
        }
    }
}

} // namespace
