// SPDX-License-Identifier: BSD-3-Clause
#include <limits>

#include "effect/EntryPoint.h"
#include "preview/ViewFixture.h"
#include "support/WindowRefs.h"

namespace {

using test::MakePicture;
using test::PixelsOf;

using CTextEditDlgTest = test::ViewFixture;

TEST_F(CTextEditDlgTest, StartsInTheMiddleAndZoomsAroundIt) {
    ASSERT_EQ(Start(720, 481, 361, 240), 1);
    EXPECT_EQ(view->Scroll(), (PIPoint { 180, 120 }));
    struct Row {
        long asked, scale;
        PIPoint scroll;
    };
    for (const Row& row : {
             Row { 5, 10, { 36 - 180, 24 - 120 } }, // in the middle, beyond the frame's edges
             Row { 250, 200, { 550, 360 } },
             Row { 100, 100, { 185, 120 } },
             Row { std::numeric_limits<long>::min(), 10, { -144, -96 } },
             Row { std::numeric_limits<long>::max(), 200, { 550, 360 } },
         }) {
        view->SetViewScale(row.asked, 1);
        EXPECT_EQ(view->Scale(), row.scale) << row.asked;
        EXPECT_EQ(view->Scroll(), row.scroll) << row.asked;
    }
    const auto before = PixelsOf(view->Buffer(), 361, 240);
    view->SetGrid(1, false); // shows with the next drawing
    view->SetViewScale(200, 1);
    EXPECT_EQ(PixelsOf(view->Buffer(), 361, 240), before) << "the present scale draws nothing";
    view->SetViewScale(190, 1);
    EXPECT_NE(PixelsOf(view->Buffer(), 361, 240), before);
}

TEST_F(CTextEditDlgTest, TheWholeViewFillsTheNarrowSide) {
    struct Row {
        int frameWidth, frameHeight;
        long scale;
        PIPoint scroll;
    };
    for (const Row& row : {
             Row { 720, 480, 50, { 0, 0 } }, Row { 100, 400, 360, { 0, 600 } },
             Row { 240, 240, 100, { -60, 0 } }, Row { 1, 1, 24050, { -180, -120 } },
             Row { 32000, 20, 1200, { 191820, 0 } },
             Row { 30000, 20000, 10, { 1320, 880 } }, // fits not even so
         }) {
        record.nFrameWidth = row.frameWidth;
        record.nFrameHeight = row.frameHeight;
        ShowPane(360, 240);
        test::View fresh;
        ASSERT_EQ(fresh.InitializeTextDlg(&record, window, 0, 0), 1) << row.frameWidth;
        fresh.WholeSizeView(1);
        EXPECT_EQ(fresh.Scale(), row.scale) << row.frameWidth;
        EXPECT_EQ(fresh.Scroll(), row.scroll) << row.frameWidth;
        test::Dispose(window);
    }
}

TEST_F(CTextEditDlgTest, ScrollsWithinTheView) {
    ASSERT_EQ(Start(200, 50, 100, 80), 1);
    struct Row {
        long delta, changed, at;
    };
    for (const Row& row : { Row { 20, 1, 70 }, Row { 1000000, 1, 100 }, Row { 1, 0, 100 },
                            Row { -1000000, 1, 0 }, Row { -1, 0, 0 }, Row { 0, 0, 0 } }) {
        EXPECT_EQ(view->ScrollHorz(row.delta, 1), row.changed) << row.delta;
        EXPECT_EQ(view->Scroll().x, row.at) << row.delta;
    }
    const long before = view->Scroll().y; // the view fits there
    EXPECT_EQ(view->ScrollVert(10, 1), 0);
    EXPECT_EQ(view->Scroll().y, before);
}

TEST_F(CTextEditDlgTest, AnotherAreaKeepsTheCentreOrTheWholeView) {
    ASSERT_EQ(Start(400, 400, 100, 100), 1);
    view->FitArea(200, 60);
    EXPECT_EQ(view->Scroll(), (PIPoint { 100, 170 }));
    view->WholeSizeView(0);
    view->FitArea(300, 200);
    EXPECT_EQ(view->Scale(), 50);
    view->FitArea(0, 0); // nothing to draw into, and nothing to harm
    EXPECT_EQ(view->Buffer(), nullptr);
    view->UpdatePreview(1);
    view->FitArea(400, 400);
    EXPECT_EQ(view->Scale(), 100);
    EXPECT_NE(view->Buffer(), nullptr);
}

TEST_F(CTextEditDlgTest, AFrameThatCannotBeMadeIsRefusedAndShowsGrey) {
    EPIOffscreenProcs noAllocate = *record.pOffscreenProcs;
    noAllocate.Allocate = nullptr;
    const struct {
        const char* what;
        int side;
        const EPIOffscreenProcs* procs;
    } rows[] = { { "no side", 0, record.pOffscreenProcs },
                 { "a side below 0", -5, record.pOffscreenProcs },
                 { "no allocation", 50, &noAllocate } };
    for (const auto& row : rows) {
        record.pOffscreenProcs = row.procs;
        record.nFrameWidth = record.nFrameHeight = row.side;
        ShowPane(30, 20);
        test::View fresh;
        EXPECT_EQ(fresh.InitializeTextDlg(&record, window, 1, 1), 0) << row.what;
        fresh.WholeSizeView(1);
        fresh.UpdatePreview(1);
        fresh.MoveText(10, 10);
        fresh.SetGrid(0, false);
        fresh.DrawOffscreen();
        EXPECT_EQ(PixelsOf(fresh.Buffer(), 30, 20)[10 * 30 + 15], 0xA0A0A0U) << row.what;
        test::Dispose(window);
    }
}

// The buffer is drawn over what it showed before, and only where that changes.
TEST_F(CTextEditDlgTest, NothingOfAnEarlierViewIsLeft) {
    struct Row {
        const char* what;
        long scale;
        QPoint scroll;
    };
    ASSERT_EQ(Start(120, 90, 100, 80), 1);
    const auto frame = MakePicture(120, 90, host::kArgb32);
    const auto background = test::Borrow(record, *frame);
    const auto draw = [&](test::View& drawn, const Row& row) {
        drawn.SetBkImage(background.get(), 0);
        drawn.SetViewScale(row.scale, 0);
        drawn.SetScroll(row.scroll.x(), row.scroll.y());
        drawn.UpdatePreview(0);
        drawn.SetBkImage(nullptr, 0);
    };
    for (const Row& row : {
             Row { "smaller, in the middle", 50, { -20, -17 } },
             Row { "over the left and the top", 100, { 30, 25 } },
             Row { "from the right and the bottom", 100, { -30, -25 } },
             Row { "larger than the area", 200, { 40, 30 } },
             Row { "grown, with an edge", 190, { -7, 150 } },
             Row { "out of sight", 100, { 500, 0 } },
             Row { "out of sight below", 50, { 0, -400 } },
         }) {
        test::View fresh;
        ASSERT_EQ(fresh.InitializeTextDlg(&record, window, 0, 0), 1);
        draw(fresh, row);
        draw(*view, { "over all of the area", 100, { 5, 5 } });
        draw(*view, row);
        EXPECT_EQ(PixelsOf(view->Buffer(), 100, 80), PixelsOf(fresh.Buffer(), 100, 80)) << row.what;
    }
}

TEST_F(CTextEditDlgTest, TheGridNeverCrowds) {
    ASSERT_EQ(Start(120, 120, 400, 400), 1);
    host::Pinned<_TEXTPARAM>(params)->dwFlags = 0;
    view->UpdatePreview(0);
    struct Row {
        int mode;
        long scale;
        std::vector<int> lines; // the scroll makes the frame's left lie at 10
    };
    for (const Row& row :
         { Row { 0, 100, {} }, Row { 1, 100, { 10, 50, 90 } }, Row { 1, 200, { 10, 90, 170 } },
           Row { 2, 100, { 10, 30, 50, 70, 90, 110 } }, Row { 7, 50, { 10, 20, 30, 40, 50, 60 } },
           Row { 2, 40, { 10, 26, 42 } }, Row { 2, 10, { 10, 20 } } }) {
        view->SetViewScale(row.scale, 0);
        view->SetScroll(-10, 0);
        view->SetGrid(row.mode, false);
        view->DrawOffscreen();
        const auto pixels = PixelsOf(view->Buffer(), 400, 400);
        std::vector<int> lines;
        for (int x = 0; x < 400; ++x)
            if (pixels[400U + static_cast<std::size_t>(x)] == 0x606060) // below the border
                lines.push_back(x);
        EXPECT_EQ(lines, row.lines) << row.mode << " at " << row.scale;
    }
}

TEST_F(CTextEditDlgTest, FramesTheTextAndTheArea) {
    ASSERT_EQ(Start(300, 200, 300, 200), 1);
    PutText(40, 50);
    const PIRect frame = view->TextFrame();
    const auto pixels = PixelsOf(view->Buffer(), 300, 200);
    const auto at = [&](long x, long y) { return pixels[static_cast<std::size_t>(y * 300 + x)]; };
    EXPECT_EQ(frame.left, 40);
    EXPECT_EQ(frame.top, 50);
    for (const PIPoint& corner :
         { PIPoint { 40, 50 }, PIPoint { frame.right - 1, 50 }, PIPoint { 40, frame.bottom - 1 } })
        EXPECT_EQ(at(corner.x, corner.y), 0xFF0000U) << testing::PrintToString(corner);
    EXPECT_EQ(at(39, 50), 0xFFFFFFU); // no background is white
    EXPECT_EQ(at(0, 0), 0U);
    EXPECT_EQ(at(299, 199), 0U);
}

// What the effect makes of a copy of the frame, for the same record.
std::unique_ptr<host::Image> Rendered(_EPIRECORD record, const host::Image& frame) {
    auto image = host::Image::Make(frame.Width(), frame.Height(), frame.Format());
    host::CopyPixels(*image, 0, 0, frame, { 0, 0, frame.Width(), frame.Height() });
    const double apply = 1;
    record.pParamValues = &apply;
    record.hDestination = image->Ref();
    record.dScale = 1;
    EXPECT_EQ(EntryPoint(epiDoFilter, &record), 0);
    return image;
}

TEST_F(CTextEditDlgTest, ShowsThePixelsOfTheRender) {
    const host::PixelFormat bgra { 32, 3, 2, 1, 0 };
    ASSERT_EQ(Start(240, 130, 240, 130), 1);
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
        record.bInfoPresent = 1;
        std::strcpy(record.szInfo3, "7");
        std::strcpy(record.szInfo4, "12");
        host::Pinned<_TEXTPARAM>(params)->dwFlags = row.flags;
        host::Pinned<_TEXTPARAM>(params)->ptPos = { 31, 17 };
        auto frame = MakePicture(240, 130, row.format);
        view->RefreshRecord(record);
        const auto background = test::Borrow(record, *frame);
        if (std::string_view(row.what) != "white")
            view->SetBkImage(background.get(), 0);
        else // is what the view shows without a background
            for (int y = 0; y < 130; ++y)
                std::ranges::fill(frame->Row(y), 0xFF);
        view->UpdatePreview(0);
        const PIRect bounds = view->TextFrame();
        const auto corner = [](long x, long y) {
            return QPoint(static_cast<int>(x), static_cast<int>(y));
        };
        const QRect text(corner(bounds.left, bounds.top),
                         corner(bounds.right - 1, bounds.bottom - 1));
        ASSERT_EQ(text.isValid(), row.flags != 0) << row.what;

        const auto rendered = Rendered(record, *frame);
        platform::Control::Find(pane)->Draw();
        const QImage shown = PaneWidget().grab().toImage();
        long differing = 0;
        bool isTextDrawn = false;
        for (int y = 1; y < 129; ++y) {
            for (int x = 1; x < 239; ++x) {
                if (text.contains(x, y) && !text.contains(x, y, true)) // on the frame around it
                    continue;
                rendered->MoveTo(x, y);
                frame->MoveTo(x, y);
                const std::uint32_t pixel = rendered->GetPixel();
                isTextDrawn = isTextDrawn || pixel != frame->GetPixel();
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

} // namespace
