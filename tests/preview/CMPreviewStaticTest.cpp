// SPDX-License-Identifier: BSD-3-Clause
#include "preview/CMPreviewStatic.h"

#include <array>

#include "preview/PreviewFixture.h"
#include "support/WindowRefs.h"

namespace {

using test::MakePicture;

using Sides = std::array<int, 4>; // left, top, right and bottom

// Paints what it is asked to filter red, and notes it.
class Marking : public CMPreviewStatic {
public:
    void DoFilter(PIOffscreen* image, tagRECT visible) override {
        ++filtered;
        seen = { visible.left, visible.top, visible.right, visible.bottom };
        auto& pixels = *host::Image::FromRef(static_cast<EPIImageRef>(image->Object()));
        if (!image->Lock(PIOffscreen::Access::kWrite))
            return;
        for (int y = visible.top; y < visible.bottom; ++y) {
            for (int x = visible.left; x < visible.right; ++x) {
                pixels.MoveTo(x, y);
                pixels.SetPixel(0xFF0000FF);
            }
        }
        image->Unlock();
    }
    void SetToolCursor() override {
        CMPreviewStatic::SetToolCursor();
        cursors += std::string(platform::CurrentNamedCursor()) + " ";
    }

    int filtered = 0;
    Sides seen {};
    std::string cursors;
};

class CMPreviewStaticTest : public test::PreviewFixture {
protected:
    void SetUp() override {
        PreviewFixture::SetUp();
        record.pPreviewSwitch = &isShown;
    }
    void TearDown() override {
        preview.reset();
        PreviewFixture::TearDown();
    }
    void Start(int width, int height) {
        preview.reset();
        test::Dispose(window); // an earlier one
        preview = std::make_unique<Marking>();
        ShowPane(width, height);
        preview->Attach(pane);
        preview->Init(&record, nullptr);
    }
    void SetImage(int width, int height, host::PixelFormat format = host::kArgb32) {
        const auto image = MakePicture(width, height, format);
        preview->SetImage(*test::Borrow(record, *image));
    }
    QImage Shown() const { return PaneWidget().grab().toImage(); }
    // Where the control is red. Its frame lies over the edge.
    Sides Red() const {
        const QImage shown = Shown();
        Sides sides { shown.width(), shown.height(), 0, 0 };
        for (int y = 0; y < shown.height(); ++y) {
            for (int x = 0; x < shown.width(); ++x) {
                if ((shown.pixel(x, y) & 0xFFFFFF) == 0xFF0000)
                    sides = { std::min(sides[0], x), std::min(sides[1], y),
                              std::max(sides[2], x + 1), std::max(sides[3], y + 1) };
            }
        }
        return sides;
    }
    Sides Seen() const { return preview->seen; }
    std::uint32_t Middle() const {
        const QImage shown = Shown();
        return shown.pixel(shown.width() / 2, shown.height() / 2) & 0xFFFFFF;
    }

    std::int32_t isShown = 1;
    std::unique_ptr<Marking> preview;
};

TEST_F(CMPreviewStaticTest, TheFirstImageOpensAtAStepThatIsSmallerThanTheControl) {
    const struct {
        int controlWidth, controlHeight, imageWidth, imageHeight;
        long width, height;
        Sides seen; // of the preview
        Sides red;  // of the control, within its frame
    } rows[] = {
        // One that fills the control exactly opens a step smaller.
        { 200, 100, 200, 100, 133, 67, { 0, 0, 133, 67 }, { 33, 16, 166, 83 } },
        { 201, 101, 200, 100, 200, 100, { 0, 0, 200, 100 }, { 1, 1, 200, 100 } },
        { 200, 200, 2000, 2000, 250, 250, { 25, 25, 225, 225 }, { 1, 1, 199, 199 } },
        { 100, 100, 10, 20, 10, 20, { 0, 0, 10, 20 }, { 45, 40, 55, 60 } },
        { 100, 50, 1000, 10, 125, 1, { 12, 0, 112, 1 }, { 1, 24, 99, 25 } },
    };
    for (const auto& row : rows) {
        Start(row.controlWidth, row.controlHeight);
        SetImage(row.imageWidth, row.imageHeight);
        EXPECT_EQ(preview->GetPreviewWidth(), row.width) << row.imageWidth;
        EXPECT_EQ(preview->GetPreviewHeight(), row.height) << row.imageWidth;
        EXPECT_EQ(Seen(), row.seen) << row.imageWidth;
        EXPECT_EQ(Red(), row.red) << row.imageWidth;
    }
}

TEST_F(CMPreviewStaticTest, ZoomsAroundWhatIsInTheMiddle) {
    Start(100, 100);
    EXPECT_FALSE(preview->SetViewScale(1)); // nothing to show yet
    SetImage(400, 120);                     // 12.5 %
    const struct {
        long index;
        bool changes;
        long width;
        Sides seen;
    } rows[] = {
        { 6, false, 50, { 0, 0, 50, 15 } },     { -1, false, 50, { 0, 0, 50, 15 } },
        { 0, true, 400, { 150, 6, 250, 106 } }, // the middle row of 15 stands for row 56
        { 2, true, 200, { 50, 0, 150, 60 } },   { 4, true, 100, { 0, 0, 100, 30 } },
    };
    for (const auto& row : rows) {
        EXPECT_EQ(preview->SetViewScale(row.index), row.changes) << row.index;
        EXPECT_EQ(preview->GetPreviewWidth(), row.width) << row.index;
        EXPECT_EQ(Seen(), row.seen) << row.index;
    }
    EXPECT_TRUE(preview->ShiftViewScale(1));
    EXPECT_EQ(preview->GetPreviewWidth(), 133);
    EXPECT_TRUE(preview->ShiftViewScale(0));
    EXPECT_TRUE(preview->ShiftViewScale(0));
    EXPECT_FALSE(preview->ShiftViewScale(0)); // the smallest
}

TEST_F(CMPreviewStaticTest, LaterImagesKeepTheZoomAndThePlace) {
    Start(100, 100);
    SetImage(300, 300);
    preview->SetViewScale(0);
    DragOver({ { 90, 90 }, { 10, 10 } });
    EXPECT_EQ(Seen(), (Sides { 180, 180, 280, 280 }));
    SetImage(300, 280);
    EXPECT_EQ(Seen(), (Sides { 180, 180, 280, 280 }));
    SetImage(250, 60); // too narrow for the place, and lower than the control
    EXPECT_EQ(Seen(), (Sides { 150, 0, 250, 60 }));
    EXPECT_EQ(preview->GetPreviewCenter().x, 200);
    EXPECT_EQ(preview->GetPreviewCenter().y, 30);
}

TEST_F(CMPreviewStaticTest, DragsWithinThePreview) {
    const struct {
        const char* what;
        QSize size;
        std::vector<QPoint> places;
        Sides seen;
    } rows[] = {
        { "follows", { 300, 300 }, { { 50, 50 }, { 40, 70 } }, { 110, 80, 210, 180 } },
        { "edges",
          { 300, 300 },
          { { 50, 50 }, { 149, -90 }, { 199, -150 } },
          { 0, 200, 100, 300 } },
        { "one way", { 300, 60 }, { { 50, 50 }, { 40, 30 } }, { 110, 0, 210, 60 } },
        { "fits", { 90, 60 }, { { 50, 50 }, { 40, 30 } }, { 0, 0, 90, 60 } },
    };
    for (const auto& row : rows) {
        Start(100, 100);
        SetImage(row.size.width(), row.size.height());
        preview->SetViewScale(0);
        preview->cursors.clear();
        const int before = preview->filtered;
        const bool drags = row.size.width() > 100;
        DragOver(row.places);
        EXPECT_EQ(Seen(), row.seen) << row.what;
        // Once at the end: while the user drags there is no filter.
        EXPECT_EQ(preview->filtered - before, drags ? 1 : 0) << row.what;
        EXPECT_EQ(preview->cursors.find("CursorPreviewDrag") != std::string::npos, drags)
            << row.what;
    }
}

TEST_F(CMPreviewStaticTest, AHostMayEndItWhileTheUserDrags) {
    Start(100, 100);
    SetImage(500, 500);
    preview->SetViewScale(0);
    QTimer::singleShot(2, [&] { preview.reset(); });
    DragOver({ { 50, 50 }, { 40, 40 }, { 30, 30 } });
    EXPECT_EQ(preview, nullptr);
}

TEST_F(CMPreviewStaticTest, TheHostsSwitchTurnsItOff) {
    isShown = 0;
    Start(100, 80);
    SetImage(50, 50);
    EXPECT_EQ(Middle(), 0xA0A0A0U);
    EXPECT_EQ(Shown().pixel(0, 0) & 0xFFFFFF, 0U);
    preview->ShowPreview(1, 0);
    EXPECT_EQ(isShown, 1);
    EXPECT_EQ(preview->filtered, 0);
    preview->UpdatePreview();
    EXPECT_EQ(Middle(), 0xFF0000U);
    preview->ShowPreview(1, 1); // as it is
    EXPECT_EQ(preview->filtered, 1);
    preview->ShowPreview(0, 1);
    EXPECT_EQ(isShown, 0);
    EXPECT_EQ(Middle(), 0xA0A0A0U);
}

TEST_F(CMPreviewStaticTest, ImagesOfEveryLayoutAreFlattenedOntoWhite) {
    ShowPane(100, 100);
    CMPreviewStatic plain;
    plain.Attach(pane);
    plain.Init(&record, nullptr);
    for (const host::PixelFormat& format :
         { host::kArgb32, host::kRgba32, host::kArgb64, host::kRgb24 }) {
        const auto image = MakePicture(40, 40, format, false);
        plain.SetImage(*test::Borrow(record, *image));
        const QImage shown = Shown();
        long differing = 0;
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 40; ++x) {
                image->MoveTo(x, y);
                const std::uint32_t pixel = image->GetPixel();
                const auto alpha = static_cast<int>(format.alpha < 0 ? 255 : pixel >> 24);
                const auto flat = [&](unsigned shift) {
                    return 255 - (255 - static_cast<int>((pixel >> shift) & 0xFF)) * alpha / 255;
                };
                const QRgb color = shown.pixel(30 + x, 30 + y);
                if (flat(0) != qRed(color) || flat(8) != qGreen(color) || flat(16) != qBlue(color))
                    ++differing;
            }
        }
        EXPECT_EQ(differing, 0) << format.depth << " " << format.alpha;
    }
}

TEST_F(CMPreviewStaticTest, FillsAResizedControlAndShowsGreyForWhatCannotBeMade) {
    Start(60, 60);
    SetImage(30, 30);
    platform::Control::Find(pane)->Resize(90, 70);
    EXPECT_EQ(Red(), (Sides { 30, 20, 60, 50 }));
    EPIOffscreenProcs noAllocate = *record.pOffscreenProcs;
    noAllocate.Allocate = nullptr;
    record.pOffscreenProcs = &noAllocate;
    SetImage(30, 30);
    EXPECT_EQ(Middle(), 0xA0A0A0U);
    EXPECT_FALSE(preview->SetViewScale(3));
}

} // namespace
