// SPDX-License-Identifier: BSD-3-Clause
// The placement view over a real pane, as the text edit dialog makes one, alone and under the mouse.
#include "preview/CTextEditDlg.h"

#include <cstring>
#include <functional>
#include <limits>

#include <QWheelEvent>

#include "preview/CMTextPreviewStatic.h"
#include "preview/PreviewFixture.h"

namespace {

using test::MakePicture;

class View : public CTextEditDlg {
public:
    View() : CTextEditDlg(test::kPreviewItem) {}

    void DragUpdate() override {
        ++shown;
        if (const auto act = onShown) // it may end this view
            act();
    }
    bool IsDragButton() override {
        platform::Point where {};
        const auto result = test::At(m_hWindow).TrackMouse(-1, &where);
        return result != platform::MouseTracking::kMouseUp &&
               result != platform::MouseTracking::kUserCancelled;
    }
    void ZoomBy(long steps) override { SetViewScale(m_nViewScale + steps * 10, 1); }

    using CTextEditDlg::m_nPreviewMode, CTextEditDlg::m_nPreviewOption;
    using CTextEditDlg::m_nScrollX, CTextEditDlg::m_nScrollY, CTextEditDlg::m_nViewScale;
    QPoint Scroll() const { return { m_nScrollX, m_nScrollY }; }
    QRect TextFrame() const {
        const auto place = [](long x, long y) {
            return QPoint(static_cast<int>(x), static_cast<int>(y));
        };
        return { place(m_rcText.left, m_rcText.top),
                 place(m_rcText.right - 1, m_rcText.bottom - 1) };
    }

    CMTextPreviewStatic control { *this };
    int shown = 0;
    std::function<void()> onShown;
};

class CTextEditDlgTest : public test::PreviewFixture {
protected:
    // The text is a word on a box, so that its frame is plain to hit.
    void SetUp() override {
        PreviewFixture::SetUp();
        const auto param = effect->Params();
        std::strcpy(param->szDialogue, "Telop\rpreview");
        param->nFontSize = 24;
        param->crText = 0x20C0F0;
        param->crBack = 0x602010;
        param->nOpacity = 50;
        param->dwFlags = TEXT_DIALOGUE | TEXT_BOX;
    }
    void TearDown() override {
        view.reset();
        PreviewFixture::TearDown();
    }

    // A new view of frames of that size, in a pane; gives what its start gives.
    long Start(int frameWidth, int frameHeight, int width, int height) {
        record.nFrameWidth = frameWidth;
        record.nFrameHeight = frameHeight;
        view.reset();
        ShowPane(width, height);
        view = std::make_unique<View>();
        view->control.Attach(pane);
        view->control.InitPreview(Bundle());
        return view->InitializeTextDlg(&record, window, 0, 0);
    }
    void PutText(QPoint place) {
        effect->Params()->ptPos = { place.x(), place.y() };
        view->UpdatePreview(0);
    }
    QPoint TextAt() const { return { Param().ptPos.x, Param().ptPos.y }; }
    void ScrollTo(QPoint place) {
        view->m_nScrollX = place.x();
        view->m_nScrollY = place.y();
    }

    std::unique_ptr<View> view;
};

// Where the view stands ---------------------------------------------------------------------------

TEST_F(CTextEditDlgTest, StartsInTheMiddleAndZoomsAroundIt) {
    ASSERT_EQ(Start(720, 481, 361, 240), 1);
    EXPECT_EQ(view->Scroll(), QPoint(180, 120));
    const struct {
        long asked, scale;
        QPoint scroll;
    } rows[] = {
        { 5, 10, { 36 - 180, 24 - 120 } }, // in the middle, beyond the frame's edges
        { 250, 200, { 550, 360 } },
        { 100, 100, { 185, 120 } },
        { std::numeric_limits<long>::min(), 10, { -144, -96 } },
        { std::numeric_limits<long>::max(), 200, { 550, 360 } },
    };
    for (const auto& row : rows) {
        view->SetViewScale(row.asked, 1);
        EXPECT_EQ(view->m_nViewScale, row.scale) << row.asked;
        EXPECT_EQ(view->Scroll(), row.scroll) << row.asked;
    }
    const QImage before = Shown();
    view->m_nPreviewMode = 1; // shows with the next drawing
    view->SetViewScale(200, 1);
    EXPECT_EQ(Shown(), before) << "the present scale draws nothing";
}

TEST_F(CTextEditDlgTest, TheWholeViewFillsTheNarrowSide) {
    const struct {
        int frameWidth, frameHeight;
        long scale;
        QPoint scroll;
    } rows[] = {
        { 720, 480, 50, { 0, 0 } },         { 100, 400, 360, { 0, 600 } },
        { 240, 240, 100, { -60, 0 } },      { 1, 1, 24050, { -180, -120 } },
        { 32000, 20, 1200, { 191820, 0 } }, { 30000, 20000, 10, { 1320, 880 } }, // fits not even so
    };
    for (const auto& row : rows) {
        ASSERT_EQ(Start(row.frameWidth, row.frameHeight, 360, 240), 1) << row.frameWidth;
        view->WholeSizeView(1);
        EXPECT_EQ(view->m_nViewScale, row.scale) << row.frameWidth;
        EXPECT_EQ(view->Scroll(), row.scroll) << row.frameWidth;
    }
}

TEST_F(CTextEditDlgTest, AnotherAreaKeepsTheCentreOrTheWholeView) {
    ASSERT_EQ(Start(400, 400, 100, 100), 1);
    view->FitArea(200, 60);
    EXPECT_EQ(view->Scroll(), QPoint(100, 170));
    view->WholeSizeView(0);
    view->FitArea(300, 200);
    EXPECT_EQ(view->m_nViewScale, 50);
    view->FitArea(0, 0); // nothing to draw into, and nothing to harm
    EXPECT_EQ(view->Buffer(), nullptr);
    view->UpdatePreview(1);
    view->FitArea(400, 400);
    EXPECT_EQ(view->m_nViewScale, 100);
    EXPECT_NE(view->Buffer(), nullptr);
}

// What it shows -----------------------------------------------------------------------------------

TEST_F(CTextEditDlgTest, AFrameThatCannotBeMadeIsRefusedAndShowsGrey) {
    EPIOffscreenProcs noAllocate = *record.pOffscreenProcs;
    noAllocate.Allocate = nullptr;
    const std::pair<int, const EPIOffscreenProcs*> rows[] = { { 0, record.pOffscreenProcs },
                                                              { -5, record.pOffscreenProcs },
                                                              { 50, &noAllocate } };
    for (const auto& [side, procs] : rows) {
        record.pOffscreenProcs = procs;
        EXPECT_EQ(Start(side, side, 30, 20), 0) << side;
        view->WholeSizeView(1);
        view->UpdatePreview(1);
        view->MoveText(10, 10);
        view->DrawOffscreen();
        EXPECT_EQ(Shown().pixel(15, 10), qRgb(0xA0, 0xA0, 0xA0)) << side;
    }
}

// The buffer is drawn over what it showed before, and only where that changes.
TEST_F(CTextEditDlgTest, NothingOfAnEarlierViewIsLeft) {
    const auto frame = MakePicture(120, 90, host::kArgb32);
    const auto background = Borrow(*frame);
    const auto draw = [&](long scale, QPoint scroll) {
        view->SetBkImage(background.get(), 0);
        view->SetViewScale(scale, 0);
        ScrollTo(scroll);
        view->UpdatePreview(0);
        view->SetBkImage(nullptr, 0);
        return Shown();
    };
    const struct {
        const char* what;
        long scale;
        QPoint scroll;
    } rows[] = {
        { "smaller, in the middle", 50, { -20, -17 } },
        { "over the left and the top", 100, { 30, 25 } },
        { "from the right and the bottom", 100, { -30, -25 } },
        { "larger than the area", 200, { 40, 30 } },
        { "grown, with an edge", 190, { -7, 150 } },
        { "out of sight", 100, { 500, 0 } },
        { "out of sight below", 50, { 0, -400 } },
    };
    for (const auto& row : rows) {
        ASSERT_EQ(Start(120, 90, 100, 80), 1);
        const QImage fresh = draw(row.scale, row.scroll);
        draw(100, { 5, 5 }); // over all of the area
        EXPECT_EQ(draw(row.scale, row.scroll), fresh) << row.what;
    }
}

TEST_F(CTextEditDlgTest, TheGridNeverCrowds) {
    ASSERT_EQ(Start(120, 120, 400, 400), 1);
    SetMode(0);
    view->UpdatePreview(0);
    const struct {
        int mode;
        long scale;
        std::vector<int> lines; // the scroll makes the frame's left lie at 10
    } rows[] = { { 0, 100, {} },
                 { 1, 100, { 10, 50, 90 } },
                 { 1, 200, { 10, 90, 170 } },
                 { 2, 100, { 10, 30, 50, 70, 90, 110 } },
                 { 7, 50, { 10, 20, 30, 40, 50, 60 } },
                 { 2, 40, { 10, 26, 42 } },
                 { 2, 10, { 10, 20 } } };
    for (const auto& row : rows) {
        view->SetViewScale(row.scale, 0);
        ScrollTo({ -10, 0 });
        view->m_nPreviewMode = row.mode;
        view->DrawOffscreen();
        const QImage shown = Shown();
        std::vector<int> lines;
        for (int x = 0; x < 400; ++x)
            if (shown.pixel(x, 1) == qRgb(0x60, 0x60, 0x60)) // below the border
                lines.push_back(x);
        EXPECT_EQ(lines, row.lines) << row.mode << " at " << row.scale;
    }
}

TEST_F(CTextEditDlgTest, ShowsThePixelsOfTheRenderWithFramesAroundThemAndTheText) {
    const host::PixelFormat bgra { 32, 3, 2, 1, 0 };
    ASSERT_EQ(Start(240, 130, 240, 130), 1);
    record.bInfoPresent = 1;
    std::strcpy(record.szInfo3, "7");
    std::strcpy(record.szInfo4, "12");
    const struct {
        const char* what;
        host::PixelFormat format;
        std::uint32_t flags;
        // In steps of 8 bits. The text is blended at 8 bits, so that of a frame of 16 bits a
        // weight of 256ths counts instead of one of 65536ths, and both round down.
        int tolerance;
    } rows[] = {
        { "white", host::kArgb32, TEXT_DIALOGUE | TEXT_BOX, 0 },
        { "bgra, box", bgra, TEXT_DIALOGUE | TEXT_BOX, 0 },
        { "rgba, score", host::kRgba32, TEXT_SCORE | TEXT_BOX, 0 },
        { "rgb", host::kRgb24, TEXT_DIALOGUE, 0 },
        { "16 bits, box", host::kArgb64, TEXT_DIALOGUE | TEXT_BOX, 2 },
        { "16 bits, no text", host::kRgba64, 0, 0 },
    };
    for (const auto& row : rows) {
        SetMode(row.flags);
        const auto frame = MakePicture(240, 130, row.format);
        view->RefreshRecord(record);
        const auto background = Borrow(*frame);
        if (std::string_view(row.what) != "white")
            view->SetBkImage(background.get(), 0);
        else // is what the view shows without a background
            for (int y = 0; y < 130; ++y)
                std::ranges::fill(frame->Row(y), 0xFF);
        PutText({ 31, 17 });
        const QRect text = view->TextFrame();
        ASSERT_EQ(text.isValid(), row.flags != 0) << row.what;

        const auto rendered = host::Image::Make(240, 130, row.format);
        host::CopyPixels(*rendered, 0, 0, *frame, { 0, 0, 240, 130 });
        std::string why;
        EXPECT_TRUE(effect->Render(*rendered, { .strings = { "", "", "7", "12" } }, why)) << why;
        const QImage shown = Shown();
        int differing = 0;
        bool isTextDrawn = false;
        for (int y = 0; y < 130; ++y) {
            for (int x = 0; x < 240; ++x) {
                rendered->MoveTo(x, y);
                frame->MoveTo(x, y);
                isTextDrawn = isTextDrawn || rendered->GetPixel() != frame->GetPixel();
                const bool isOnEdge = !QRect(0, 0, 240, 130).contains(x, y, true);
                const bool isOnText = text.contains(x, y) && !text.contains(x, y, true);
                const std::uint32_t black = 0, red = 0x0000FF;
                const std::uint32_t pixel = isOnEdge   ? black
                                            : isOnText ? red
                                                       : rendered->GetPixel();
                const QRgb color = shown.pixel(x, y);
                for (const unsigned shift : { 0U, 8U, 16U }) {
                    const int wanted = static_cast<int>((pixel >> shift) & 0xFF);
                    const int got = static_cast<int>((color >> (16 - shift)) & 0xFF);
                    differing += std::abs(wanted - got) > row.tolerance;
                }
            }
        }
        EXPECT_EQ(differing, 0) << row.what;
        EXPECT_EQ(isTextDrawn, row.flags != 0) << row.what;
        view->SetBkImage(nullptr, 0);
    }
}

// The mouse and the keys --------------------------------------------------------------------------

TEST_F(CTextEditDlgTest, AHandPansWithinTheFrame) {
    const struct {
        int frameHeight;
        std::vector<QPoint> places;
        QPoint scroll; // from (100, 100)
    } rows[] = {
        { 300, { { 50, 50 } }, { 100, 100 } },
        { 300, { { 50, 50 }, { 60, 20 } }, { 90, 130 } },
        { 300, { { 50, 50 }, { 60, 20 }, { 40, 55 } }, { 110, 95 } },
        { 300, { { 2, 2 }, { 99, 99 }, { 149, 149 } }, { 0, 0 } },
        { 300, { { 99, 99 }, { 2, 2 }, { -40, -40 } }, { 200, 200 } },
        { 90, { { 50, 50 }, { 60, 20 } }, { 90, 100 } }, // all of its height is shown
    };
    for (const auto& row : rows) {
        ASSERT_EQ(Start(300, row.frameHeight, 100, 100), 1);
        ScrollTo({ 100, 100 });
        PutText({ 250, 250 }); // out of the hand's way
        DragOver(row.places);
        EXPECT_EQ(view->Scroll(), row.scroll);
        EXPECT_EQ(view->shown > 0, row.places.size() > 1);
        EXPECT_STREQ(platform::CurrentNamedCursor(), "CursorPreviewHand");
        EXPECT_EQ(TextAt(), QPoint(250, 250));
    }
}

TEST_F(CTextEditDlgTest, ADragMovesTheText) {
    ASSERT_EQ(Start(400, 400, 400, 400), 1);
    const struct {
        const char* what;
        QPoint start;
        int grid;
        bool snaps;
        int scale;
        QPoint by; // view pixels
        QPoint end;
    } rows[] = {
        { "freely", { 50, 60 }, 0, true, 100, { 13, -7 }, { 63, 53 } },
        { "a grid alone", { 50, 60 }, 1, false, 100, { 13, -7 }, { 63, 53 } },
        { "not as far as the next line", { 40, 40 }, 1, true, 100, { 15, 5 }, { 40, 40 } },
        { "to the line before", { 45, 80 }, 1, true, 100, { 50, 15 }, { 80, 80 } },
        { "on a line", { 45, 80 }, 1, true, 100, { 35, 40 }, { 80, 120 } },
        { "fine grid", { 45, 80 }, 2, true, 100, { 14, 12 }, { 40, 80 } },
        { "before the first line", { 10, 10 }, 1, true, 100, { -30, -5 }, { 0, 0 } },
        { "over the left and the top", { 30, 20 }, 0, false, 100, { -90, -90 }, { 0, 0 } },
        { "behind the last line", { 200, 200 }, 1, true, 100, { 175, 190 }, { 375, 390 } },
        { "at half size", { 50, 60 }, 0, false, 50, { 13, 20 }, { 76, 100 } },
        { "snapping at half size", { 50, 60 }, 1, true, 50, { 13, 20 }, { 40, 80 } },
    };
    for (const auto& row : rows) {
        view->m_nPreviewMode = row.grid;
        view->m_nPreviewOption = row.snaps ? 1 : 0;
        view->SetViewScale(row.scale, 0);
        ScrollTo({ 0, 0 });
        PutText(row.start);
        const QPoint from = row.start * row.scale / 100 + QPoint(3, 3);
        const int before = view->shown;
        DragOver({ from, from + row.by / 2, from + row.by });
        EXPECT_EQ(view->shown > before, row.start != row.end) << row.what;
        EXPECT_EQ(TextAt(), row.end) << row.what;
        EXPECT_EQ(view->TextFrame().topLeft(), row.end) << row.what;
    }
}

TEST_F(CTextEditDlgTest, AHostMayEndTheViewWhileTheUserDrags) {
    for (const bool isInText : { true, false }) {
        for (const bool isWindowToo : { true, false }) {
            ASSERT_EQ(Start(300, 300, 100, 100), 1);
            ScrollTo({ 0, 0 });
            PutText({ isInText ? 20 : 200, 20 });
            view->onShown = [&] {
                view.reset();
                if (isWindowToo)
                    test::Dispose(window);
            };
            DragOver({ { 25, 25 }, { 30, 12 } });
            EXPECT_EQ(view, nullptr) << isInText << isWindowToo;
        }
    }
}

TEST_F(CTextEditDlgTest, TheCursorSaysWhatAPressWouldDo) {
    ASSERT_EQ(Start(300, 300, 200, 200), 1);
    ScrollTo({ 0, 0 });
    PutText({ 50, 50 });
    platform::SetThemeCursor(platform::kThemeWatchCursor);
    const std::pair<QPoint, const char*> rows[] = { { { 205, 10 }, "" }, // beside the preview
                                                    { { 49, 60 }, "CursorPreviewHand" },
                                                    { { 50, 50 }, "" },
                                                    { { 60, 49 }, "CursorPreviewHand" } };
    for (const auto& [place, cursor] : rows) {
        Move(place);
        EXPECT_STREQ(platform::CurrentNamedCursor(), cursor) << place.x();
    }
    std::string dragged;
    view->onShown = [&] { dragged = platform::CurrentNamedCursor(); };
    DragOver({ { 10, 10 }, { 5, 5 } });
    EXPECT_EQ(dragged, "CursorPreviewDrag");
}

TEST_F(CTextEditDlgTest, ArrowKeysMoveTheTextAndAWheelZooms) {
    ASSERT_EQ(Start(300, 300, 200, 200), 1);
    PutText({ 5, 50 });
    test::At(window).SetKeyboardFocus(platform::Control::Find(pane));
    const struct {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        QPoint at;
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
    const int turns[][3] = {
        { 50, 60, 100 }, { 50, 60, 110 }, { 50, -240, 100 }, { 250, 120, 100 }
    };
    for (const auto& [x, delta, scale] : turns) {
        const QPoint at = InWindow({ x, 50 });
        QWheelEvent turn(at, Widget().mapToGlobal(at), {}, { 0, delta }, Qt::NoButton,
                         Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&Widget(), &turn);
        EXPECT_EQ(view->m_nViewScale, scale);
    }
}

} // namespace
