// SPDX-License-Identifier: BSD-3-Clause
#include "platform/ui/Cursors.h"
#include "platform/ui/UIFixture.h"
#include "platform/ui/cursors/NamedCursor.h"
#include "support/TestWorld.h"

namespace platform {
namespace {

class Cursors : public test::UIFixture {
protected:
    void SetUp() override {
        UIFixture::SetUp();
        SetThemeCursor(kThemeArrowCursor);
        QCursor::setPos(widget->mapToGlobal(QPoint(500, 500)));
        pane = WidgetOf(Add<QWidget>(window));
        field = WidgetOf(Add<QLineEdit>(window));
        Activate(window);
    }
    void TearDown() override {
        SetThemeCursor(kThemeArrowCursor);
        UIFixture::TearDown();
    }

    static void MoveOver(QWidget& place) {
        QTest::mouseMove(&place, place.rect().center());
        QApplication::processEvents();
    }

    // Of the window.
    QWidget* pane = nullptr;
    QWidget* field = nullptr;
};

TEST_F(Cursors, OfAThemeLastUntilTheMouseLeavesAndAFieldHasItsOwn) {
    for (const auto& [over, other] : { std::pair(pane, field), { field, pane } }) {
        const Qt::CursorShape own = over->cursor().shape();
        MoveOver(*over);
        EXPECT_EQ(SetThemeCursor(kThemeCrossCursor), kNoErr);
        EXPECT_EQ(CurrentThemeCursor(), kThemeCrossCursor);
        EXPECT_EQ(over->cursor().shape(), Qt::CrossCursor);
        SetThemeCursor(kThemeArrowCursor);
        EXPECT_EQ(over->cursor().shape(), own);
        SetThemeCursor(kThemeCrossCursor);
        MoveOver(*other);
        EXPECT_EQ(over->cursor().shape(), own);
    }
    EXPECT_EQ(SetThemeCursor(99), kParamErr);
}

TEST_F(Cursors, OfANameAreSetWhereTheMouseIs) {
    const test::TestWorld world(32, 32);
    world.Erase();
    PaintRect({ 8, 8, 24, 24 });
    ASSERT_EQ(RegisterNamedPixMapCursor(world.World(), 15, 15, "square"), kNoErr);
    EXPECT_EQ(RegisterNamedPixMapCursor(world.World(), 0, 0, "square"), kParamErr);
    const test::TestWorld large(kMaxCursorSide + 1, 1);
    EXPECT_EQ(RegisterNamedPixMapCursor(large.World(), 0, 0, "large"), kParamErr);
    EXPECT_EQ(RegisterNamedPixMapCursor(world.World(), 0, 0, std::string(128, 'n').c_str()),
              kParamErr);
    EXPECT_EQ(SetNamedPixMapCursor("no square"), kErrNoSuchCursor);
    EXPECT_STREQ(CurrentNamedCursor(), "");

    MoveOver(*pane);
    EXPECT_EQ(SetNamedPixMapCursor("square"), kNoErr);
    EXPECT_STREQ(CurrentNamedCursor(), "square");
    EXPECT_EQ(pane->cursor().hotSpot(), QPoint(15, 15));
    const QImage shown = pane->cursor().pixmap().toImage();
    EXPECT_EQ(shown.size(), QSize(32, 32));
    EXPECT_EQ(shown.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(shown.pixelColor(16, 16), QColor(Qt::black));
    SetThemeCursor(kThemeCrossCursor);
    EXPECT_STREQ(CurrentNamedCursor(), "");
}

TEST_F(Cursors, TakeTheDrawingThatFitsTheScreen) {
    QImage base(8, 4, QImage::Format_ARGB32);
    base.fill(Qt::red);
    QImage dense(16, 8, QImage::Format_ARGB32);
    dense.fill(Qt::blue);
    NamedCursor cursor(base, { 3, 1 });
    EXPECT_EQ(cursor.AddDensity(base), kParamErr);
    EXPECT_EQ(cursor.AddDensity(QImage(16, 9, QImage::Format_ARGB32)), kParamErr);
    ASSERT_EQ(cursor.AddDensity(dense), kNoErr);
    struct Row {
        double ratio;
        QSize size;
        QColor color;
    };
    for (const Row& row : { Row { 1, { 8, 4 }, Qt::red }, Row { 1.5, { 12, 6 }, Qt::blue },
                            Row { 2, { 16, 8 }, Qt::blue }, Row { 3, { 24, 12 }, Qt::blue } }) {
        const QPixmap pixmap = cursor.At(row.ratio).pixmap();
        EXPECT_EQ(pixmap.size(), row.size) << row.ratio;
        EXPECT_EQ(pixmap.devicePixelRatio(), row.ratio);
        EXPECT_EQ(pixmap.toImage().pixelColor(1, 1), row.color) << row.ratio;
        EXPECT_EQ(cursor.At(row.ratio).hotSpot(), QPoint(3, 1)) << row.ratio;
    }
}

TEST(ClearSurround, KeepsWhiteWithinTheShapeAndSplitsItsEdge) {
    // Outside | mixed with white | the outline | white inside | the outline, at the image's edge
    const QRgb before[] { 0xFFFFFFFF, 0xFFC0C0C0, 0xFF000000, 0xFFFFFFFF, 0xFF000000 };
    const QRgb after[] { 0x00000000, 0x3F000000, 0xFF000000, 0xFFFFFFFF, 0xFF000000 };
    QImage walled(5, 3, QImage::Format_ARGB32);
    walled.fill(0xFF000000);
    for (int x = 0; x < 5; ++x)
        walled.setPixel(x, 1, before[x]);
    ClearSurround(walled);
    for (int x = 0; x < 5; ++x)
        EXPECT_EQ(walled.pixel(x, 1), after[x]) << x;
    EXPECT_EQ(walled.pixel(2, 0), 0xFF000000);
}

} // namespace
} // namespace platform
