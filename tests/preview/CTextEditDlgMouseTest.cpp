// SPDX-License-Identifier: BSD-3-Clause
#include "preview/ViewFixture.h"
#include "support/WindowRefs.h"

namespace {

using CTextEditDlgMouseTest = test::ViewFixture;

TEST_F(CTextEditDlgMouseTest, AHandPansWithinTheFrame) {
    ASSERT_EQ(Start(300, 300, 100, 100), 1);
    PutText(250, 250); // out of the hand's way
    const struct {
        const char* what;
        std::vector<QPoint> places;
        PIPoint scroll; // from (100, 100)
    } rows[] = {
        { "a click", { { 50, 50 } }, { 100, 100 } },
        { "follows the hand", { { 50, 50 }, { 60, 20 } }, { 90, 130 } },
        { "steps", { { 50, 50 }, { 60, 20 }, { 40, 55 } }, { 110, 95 } },
        { "stops at the edges", { { 2, 2 }, { 99, 99 }, { 99 + 50, 99 + 50 } }, { 0, 0 } },
    };
    for (const auto& row : rows) {
        view->SetScroll(100, 100);
        view->DrawOffscreen();
        const int before = view->shown;
        DragOver(row.places);
        EXPECT_EQ(view->Scroll(), row.scroll) << row.what;
        EXPECT_EQ(view->shown > before, row.places.size() > 1) << row.what;
        EXPECT_STREQ(platform::CurrentNamedCursor(), "CursorPreviewHand") << row.what;
    }
    EXPECT_EQ(TextAt(), (PIPoint { 250, 250 }));
}

TEST_F(CTextEditDlgMouseTest, ADragMovesTheText) {
    ASSERT_EQ(Start(400, 400, 400, 400), 1);
    struct Row {
        const char* what;
        PIPoint start;
        std::int32_t grid;
        bool snaps;
        long scale;
        QPoint by; // view pixels
        PIPoint end;
    };
    for (const Row& row : {
             Row { "freely", { 50, 60 }, 0, true, 100, { 13, -7 }, { 63, 53 } },
             Row { "a grid alone", { 50, 60 }, 1, false, 100, { 13, -7 }, { 63, 53 } },
             Row { "not as far as the next line", { 40, 40 }, 1, true, 100, { 15, 5 }, { 40, 40 } },
             Row { "to the line before", { 45, 80 }, 1, true, 100, { 50, 15 }, { 80, 80 } },
             Row { "on a line", { 45, 80 }, 1, true, 100, { 35, 40 }, { 80, 120 } },
             Row { "fine grid", { 45, 80 }, 2, true, 100, { 14, 12 }, { 40, 80 } },
             Row { "before the first line", { 10, 10 }, 1, true, 100, { -30, -5 }, { 0, 0 } },
             Row { "over the left and the top", { 30, 20 }, 0, false, 100, { -90, -90 }, { 0, 0 } },
             Row { "behind the last line", { 200, 200 }, 1, true, 100, { 175, 190 }, { 375, 390 } },
             Row { "at half size", { 50, 60 }, 0, false, 50, { 13, 20 }, { 76, 100 } },
             Row { "snapping at half size", { 50, 60 }, 1, true, 50, { 13, 20 }, { 40, 80 } },
         }) {
        view->SetGrid(row.grid, row.snaps);
        view->SetViewScale(row.scale, 0);
        view->SetScroll(0, 0);
        PutText(static_cast<std::int32_t>(row.start.x), static_cast<std::int32_t>(row.start.y));
        const PIPoint at = view->ImageToView(row.start);
        const QPoint from(static_cast<int>(at.x + 3), static_cast<int>(at.y + 3));
        const int before = view->shown;
        DragOver({ from, from + row.by / 2, from + row.by });
        EXPECT_EQ(view->shown > before, !(row.start == row.end)) << row.what;
        EXPECT_EQ(TextAt(), row.end) << row.what;
        EXPECT_EQ((PIPoint { view->TextFrame().left, view->TextFrame().top }), row.end) << row.what;
        EXPECT_EQ(params.Locks(), 0) << row.what;
    }
}

TEST_F(CTextEditDlgMouseTest, AHostMayEndTheViewWhileTheUserDrags) {
    for (const bool isInText : { true, false }) {
        for (const bool isWindowToo : { true, false }) {
            view = std::make_unique<test::View>();
            test::View* const dragged = view.get();
            record.nFrameWidth = record.nFrameHeight = 300;
            ShowPane(100, 100);
            ASSERT_EQ(view->InitializeTextDlg(&record, window, 0, 0), 1);
            view->SetScroll(0, 0);
            PutText(isInText ? 20 : 200, 20);
            bool isEnded = false;
            dragged->onShown = [&] {
                isEnded = true;
                if (isWindowToo)
                    test::Dispose(window);
                view.reset();
            };
            Move(25, 25);
            QTest::mousePress(Widget().windowHandle(), Qt::LeftButton, {},
                              { test::kPaneLeft + 25, test::kPaneTop + 25 });
            platform::Point start { test::kPaneTop + 25, test::kPaneLeft + 25 };
            start = test::At(window).ToGlobal(start);
            const QObject steps; // which end with the drag
            QTimer::singleShot(0, &steps, [&] { Move(30, 12); });
            dragged->ClickPreviewArea({ start.h, start.v });
            EXPECT_TRUE(isEnded) << isInText << isWindowToo;
            EXPECT_EQ(params.Locks(), 0) << isInText << isWindowToo;
            if (!isWindowToo)
                Release(30, 12);
            test::Dispose(window);
        }
    }
}

TEST_F(CTextEditDlgMouseTest, TheCursorSaysWhatAPressWouldDo) {
    ASSERT_EQ(Start(300, 300, 200, 200), 1);
    view->SetScroll(0, 0);
    PutText(50, 50);
    platform::SetThemeCursor(platform::kThemeWatchCursor);
    const struct {
        int x, y;
        const char* cursor;
    } rows[] = { { 205, 10, "" }, // beside the preview
                 { 49, 60, "CursorPreviewHand" },
                 { 50, 50, "" },
                 { 60, 49, "CursorPreviewHand" } };
    for (const auto& row : rows) {
        Move(row.x, row.y);
        EXPECT_STREQ(platform::CurrentNamedCursor(), row.cursor) << row.x;
    }
    std::string dragged;
    view->onShown = [&] { dragged = platform::CurrentNamedCursor(); };
    DragOver({ { 10, 10 }, { 5, 5 } });
    EXPECT_EQ(dragged, "CursorPreviewDrag");
    EXPECT_STREQ(platform::CurrentNamedCursor(), "CursorPreviewHand");
}

TEST_F(CTextEditDlgMouseTest, ArrowKeysMoveTheText) {
    ASSERT_EQ(Start(300, 300, 200, 200), 1);
    PutText(5, 50);
    test::At(window).SetKeyboardFocus(platform::Control::Find(pane));
    const struct {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        PIPoint at;
    } rows[] = { { Qt::Key_Right, {}, { 6, 50 } },
                 { Qt::Key_Down, {}, { 6, 51 } },
                 { Qt::Key_Right, Qt::ShiftModifier, { 16, 51 } },
                 { Qt::Key_Up, Qt::ShiftModifier, { 16, 41 } },
                 { Qt::Key_Left, Qt::ShiftModifier, { 6, 41 } },
                 { Qt::Key_Left, Qt::ShiftModifier, { 0, 41 } },
                 { Qt::Key_Left, {}, { 0, 41 } },
                 { Qt::Key_A, {}, { 0, 41 } } };
    for (const auto& row : rows) {
        QTest::keyClick(&PaneWidget(), row.key, row.modifiers);
        EXPECT_EQ(TextAt(), row.at) << row.key << " " << row.modifiers.toInt();
    }
    EXPECT_EQ(view->shown, 6); // not for those that change nothing
}

TEST_F(CTextEditDlgMouseTest, AWheelOverThePreviewZooms) {
    ASSERT_EQ(Start(300, 300, 200, 200), 1);
    const int rows[][3] = { { 50, 120, 110 }, { 50, -240, 100 }, { 250, 120, 100 } };
    for (const auto& [x, delta, scale] : rows) {
        Wheel(x, 50, delta);
        EXPECT_EQ(view->Scale(), scale);
    }
}

} // namespace
