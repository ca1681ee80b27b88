// SPDX-License-Identifier: BSD-3-Clause
#include "preview/CMPreviewStatic.h"

#include <array>

#include "preview/PreviewFixture.h"

namespace {

using Sides = std::array<int, 4>; // left, top, right and bottom

// Paints what it is asked to filter red, and notes it.
class Marking : public CMPreviewStatic {
public:
    void DoFilter(PIOffscreen* image, tagRECT visible) override {
        ++filtered;
        seen = { visible.left, visible.top, visible.right, visible.bottom };
        auto& pixels = *host::Image::FromRef(static_cast<EPIImageRef>(image->Object()), "a test");
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
        preview = std::make_unique<Marking>();
        ShowPane(width, height);
        preview->Attach(pane);
        preview->Init(&record, Bundle());
    }
    void SetImage(int width, int height) {
        const auto picture = test::MakePicture(width, height, host::kArgb32);
        preview->SetImage(*Borrow(*picture));
    }
    // Where the control is red. Its frame lies over the edge.
    Sides Red() const {
        const QImage shown = Shown();
        Sides sides { shown.width(), shown.height(), 0, 0 };
        for (int y = 0; y < shown.height(); ++y) {
            for (int x = 0; x < shown.width(); ++x) {
                if (shown.pixel(x, y) == qRgb(255, 0, 0))
                    sides = { std::min(sides[0], x), std::min(sides[1], y),
                              std::max(sides[2], x + 1), std::max(sides[3], y + 1) };
            }
        }
        return sides;
    }

    std::int32_t isShown = 1;
    std::unique_ptr<Marking> preview;
};

TEST_F(CMPreviewStaticTest, TheFirstImageOpensAtAStepThatIsSmallerThanTheControl) {
    const struct {
        int controlWidth, controlHeight, imageWidth, imageHeight;
        Sides seen; // of the preview
        Sides red;  // of the control, within its frame
    } rows[] = {
        // One that fills the control exactly opens a step smaller.
        { 200, 100, 200, 100, { 0, 0, 133, 67 }, { 33, 16, 166, 83 } },
        { 201, 101, 200, 100, { 0, 0, 200, 100 }, { 1, 1, 200, 100 } },
        { 200, 200, 2000, 2000, { 25, 25, 225, 225 }, { 1, 1, 199, 199 } },
        { 100, 100, 10, 20, { 0, 0, 10, 20 }, { 45, 40, 55, 60 } },
        { 100, 50, 1000, 10, { 12, 0, 112, 1 }, { 1, 24, 99, 25 } },
    };
    for (const auto& row : rows) {
        Start(row.controlWidth, row.controlHeight);
        SetImage(row.imageWidth, row.imageHeight);
        EXPECT_EQ(preview->seen, row.seen) << row.imageWidth;
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
        Sides seen;
    } rows[] = {
        { 6, false, { 0, 0, 50, 15 } },    { -1, false, { 0, 0, 50, 15 } },
        { 0, true, { 150, 6, 250, 106 } }, // the middle row of 15 stands for row 56
        { 2, true, { 50, 0, 150, 60 } },   { 4, true, { 0, 0, 100, 30 } },
    };
    for (const auto& row : rows) {
        EXPECT_EQ(preview->SetViewScale(row.index), row.changes) << row.index;
        EXPECT_EQ(preview->seen, row.seen) << row.index;
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
    SetImage(300, 280);
    EXPECT_EQ(preview->seen, (Sides { 180, 180, 280, 280 }));
    SetImage(250, 60); // too narrow for the place, and lower than the control
    EXPECT_EQ(preview->seen, (Sides { 150, 0, 250, 60 }));
    EXPECT_EQ(preview->GetPreviewCenter().x, 200);
    EXPECT_EQ(preview->GetPreviewCenter().y, 30);
}

TEST_F(CMPreviewStaticTest, DragsWithinThePreview) {
    const struct {
        QSize size;
        std::vector<QPoint> places;
        Sides seen;
    } rows[] = {
        { { 300, 300 }, { { 50, 50 }, { 40, 70 } }, { 110, 80, 210, 180 } },
        { { 300, 300 }, { { 50, 50 }, { 149, -90 }, { 199, -150 } }, { 0, 200, 100, 300 } },
        { { 300, 60 }, { { 50, 50 }, { 40, 30 } }, { 110, 0, 210, 60 } },
        { { 90, 60 }, { { 50, 50 }, { 40, 30 } }, { 0, 0, 90, 60 } }, // there is nothing to drag
    };
    for (const auto& row : rows) {
        Start(100, 100);
        SetImage(row.size.width(), row.size.height());
        preview->SetViewScale(0);
        preview->cursors.clear();
        const int before = preview->filtered;
        const bool drags = row.size.width() > 100;
        DragOver(row.places);
        EXPECT_EQ(preview->seen, row.seen);
        // Once at the end: while the user drags there is no filter.
        EXPECT_EQ(preview->filtered - before, drags ? 1 : 0);
        EXPECT_EQ(preview->cursors.find("CursorPreviewDrag") != std::string::npos, drags);
    }
}

TEST_F(CMPreviewStaticTest, AHostMayEndItWhileTheUserDrags) {
    Start(100, 100);
    SetImage(500, 500);
    preview->SetViewScale(0);
    QTimer::singleShot(0, [&] { preview.reset(); });
    DragOver({ { 50, 50 }, { 40, 40 }, { 30, 30 } });
    EXPECT_EQ(preview, nullptr);
}

TEST_F(CMPreviewStaticTest, ShowsGreyWhileItIsOffAndForWhatCannotBeMade) {
    const auto middle = [this] { return Shown().pixel(50, 40); };
    isShown = 0;
    Start(100, 80);
    SetImage(50, 50);
    EXPECT_EQ(middle(), qRgb(0xA0, 0xA0, 0xA0));
    EXPECT_EQ(Shown().pixel(0, 0), qRgb(0, 0, 0));
    preview->ShowPreview(1, 0);
    EXPECT_EQ(isShown, 1);
    EXPECT_EQ(preview->filtered, 0);
    preview->UpdatePreview();
    EXPECT_EQ(middle(), qRgb(255, 0, 0));
    preview->ShowPreview(1, 1); // as it is
    EXPECT_EQ(preview->filtered, 1);
    preview->ShowPreview(0, 1);
    EXPECT_EQ(isShown, 0);
    EXPECT_EQ(middle(), qRgb(0xA0, 0xA0, 0xA0));
    preview->ShowPreview(1, 1);
    platform::Control::Find(pane)->Resize(120, 90);
    EXPECT_EQ(Red(), (Sides { 35, 20, 85, 70 }));
    EPIOffscreenProcs noAllocate = *record.pOffscreenProcs;
    noAllocate.Allocate = nullptr;
    record.pOffscreenProcs = &noAllocate;
    SetImage(50, 50);
    EXPECT_EQ(middle(), qRgb(0xA0, 0xA0, 0xA0));
    EXPECT_FALSE(preview->SetViewScale(3));
}

TEST_F(CMPreviewStaticTest, ImagesOfEveryLayoutAreFlattenedOntoWhite) {
    ShowPane(100, 100);
    CMPreviewStatic plain;
    plain.Attach(pane);
    plain.Init(&record, Bundle());
    for (const host::PixelFormat& format :
         { host::kArgb32, host::kRgba32, host::kArgb64, host::kRgb24 }) {
        const auto picture = test::MakePicture(40, 40, format, false);
        plain.SetImage(*Borrow(*picture));
        const QImage shown = Shown();
        int differing = 0;
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 40; ++x) {
                picture->MoveTo(x, y);
                const std::uint32_t pixel = picture->GetPixel();
                const auto alpha = static_cast<int>(format.alpha < 0 ? 255 : pixel >> 24);
                const auto flat = [&](unsigned shift) {
                    return 255 - (255 - static_cast<int>((pixel >> shift) & 0xFF)) * alpha / 255;
                };
                differing += shown.pixel(30 + x, 30 + y) != qRgb(flat(0), flat(8), flat(16));
            }
        }
        EXPECT_EQ(differing, 0) << format.depth << " " << format.alpha;
    }
}

} // namespace
