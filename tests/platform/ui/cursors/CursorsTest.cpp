// SPDX-License-Identifier: BSD-3-Clause
#include <string>

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>
#include <gmock/gmock.h>

#include "platform/ui/Cursors.h"
#include "platform/ui/UIObject.h"
#include "platform/ui/cursors/NamedCursor.h"
#include "support/TestWorld.h"

namespace platform {
namespace {

// White with a black square of the middle half.
struct SquareWorld : test::TestWorld {
    explicit SquareWorld(std::int16_t side) : TestWorld(side, side) {
        Erase();
        const auto quarter = static_cast<std::int16_t>(side / 4);
        const auto end = static_cast<std::int16_t>(side - quarter);
        PaintRect({ quarter, quarter, end, end });
    }
};

class Cursors : public testing::Test {
protected:
    static void SetUpTestSuite() { ASSERT_TRUE(EnsureUserInterface()); }

    Cursors() {
        SetThemeCursor(kThemeArrowCursor);
        QCursor::setPos(m_window.mapToGlobal(QPoint(500, 500)));
        auto* const layout = new QVBoxLayout(&m_window);
        layout->addWidget(&m_pane);
        layout->addWidget(&m_field);
        m_pane.setMinimumSize(100, 100);
        m_window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_window));
    }
    ~Cursors() override { SetThemeCursor(kThemeArrowCursor); }

    static void MoveOver(QWidget& widget) {
        QTest::mouseMove(&widget, widget.rect().center());
        QApplication::processEvents();
    }

    QWidget m_window;
    QWidget m_pane { &m_window };
    QLineEdit m_field { &m_window };
};

TEST_F(Cursors, OfAThemeLastUntilTheMouseLeavesAndAFieldHasItsOwn) {
    for (QWidget* const widget : std::initializer_list<QWidget*> { &m_pane, &m_field }) {
        QWidget& other = widget == &m_pane ? static_cast<QWidget&>(m_field) : m_pane;
        const Qt::CursorShape own = widget->cursor().shape();
        MoveOver(*widget);
        EXPECT_EQ(SetThemeCursor(kThemeCrossCursor), kNoErr);
        EXPECT_EQ(CurrentThemeCursor(), kThemeCrossCursor);
        EXPECT_EQ(widget->cursor().shape(), Qt::CrossCursor);
        SetThemeCursor(kThemeArrowCursor);
        EXPECT_EQ(widget->cursor().shape(), own);
        SetThemeCursor(kThemeCrossCursor);
        MoveOver(other);
        EXPECT_EQ(widget->cursor().shape(), own);
    }
    EXPECT_EQ(SetThemeCursor(99), kParamErr);
}

TEST_F(Cursors, TheWatchStandsOverAllUntilAnother) {
    SetThemeCursor(kThemeWatchCursor);
    SetThemeCursor(kThemeWatchCursor);
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    SetThemeCursor(kThemeArrowCursor);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(Cursors, OfANameAreSetWhereTheMouseIs) {
    const SquareWorld world(32);
    ASSERT_EQ(RegisterNamedPixMapCursor(world.World(), 15, 15, "square"), kNoErr);
    EXPECT_EQ(RegisterNamedPixMapCursor(world.World(), 0, 0, "square"), kParamErr);
    const test::TestWorld large(kMaxCursorSide + 1, 1);
    EXPECT_EQ(RegisterNamedPixMapCursor(large.World(), 0, 0, "large"), kParamErr);
    EXPECT_EQ(RegisterNamedPixMapCursor(world.World(), 0, 0, std::string(128, 'n').c_str()),
              kParamErr);
    EXPECT_EQ(SetNamedPixMapCursor("no square"), kErrNoSuchCursor);
    EXPECT_STREQ(CurrentNamedCursor(), "");

    MoveOver(m_pane);
    EXPECT_EQ(SetNamedPixMapCursor("square"), kNoErr);
    EXPECT_STREQ(CurrentNamedCursor(), "square");
    EXPECT_EQ(m_pane.cursor().hotSpot(), QPoint(15, 15));
    const QImage shown = m_pane.cursor().pixmap().toImage();
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
