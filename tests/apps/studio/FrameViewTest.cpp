// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/FrameView.h"

#include <QPainter>
#include <QWheelEvent>

#include "apps/studio/StudioFixture.h"

using namespace studio;

namespace {

// A colour of its own in every pixel.
QImage Pattern(int width, int height) {
    QImage picture(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            picture.setPixelColor(x, y, QColor(x % 256, y % 256, (x * 7 + y * 13) % 256));
    return picture;
}

class FrameViewTest : public testing::Test {
protected:
    FrameViewTest() {
        TheApplication();
        m_view.reset(new FrameView);
        m_view->resize(400, 300);
    }

    QImage Shown() const { return m_view->grab().toImage().convertToFormat(QImage::Format_RGB32); }

    std::unique_ptr<FrameView> m_view;
};

TEST_F(FrameViewTest, ShowsPixelsAsTheyAreAtFullSize) {
    // Sides that leave half a pixel over, and a frame that is larger than the view.
    for (const auto& size : { QSize(121, 77), QSize(120, 80), QSize(701, 502) }) {
        const auto picture = Pattern(size.width(), size.height());
        m_view->SetPicture(picture, {});
        m_view->SetScale(1);
        const QPoint at(qRound(200 - size.width() / 2.0), qRound(150 - size.height() / 2.0));
        const auto place = QRect(at, size).intersected(m_view->rect());
        EXPECT_EQ(Shown().copy(place), picture.copy(place.translated(-at))) << size.width();
    }
}

TEST_F(FrameViewTest, FitsTheWholeFrameWhateverItsShape) {
    for (const auto& size : { QSize(2000, 100), QSize(100, 2000), QSize(16, 9) }) {
        m_view->SetPicture(Pattern(size.width(), size.height()), {});
        m_view->Fit();
        const auto used = std::max(size.width() / 400.0, size.height() / 300.0) * m_view->Scale();
        EXPECT_GT(used, 0.85) << size.width();
        EXPECT_LE(used, 1) << size.width();
    }
}

TEST_F(FrameViewTest, ZoomingKeepsWhatIsUnderThePointer) {
    QImage picture(1000, 800, QImage::Format_RGB32);
    picture.fill(Qt::black);
    QPainter(&picture).fillRect(580, 380, 40, 40, Qt::white);
    m_view->SetPicture(picture, {});
    m_view->SetScale(1);
    // The white square's middle is 100 to the right of the frame's, and so of the view's.
    const QPoint pointer(300, 150);
    ASSERT_EQ(Shown().pixelColor(pointer), QColor(Qt::white));
    for (const int turn : { 120, 120, 120, -120, -120, -120, -120 }) {
        QWheelEvent event(pointer, m_view->mapToGlobal(pointer), {}, { 0, turn }, {}, {}, {},
                          false);
        QApplication::sendEvent(m_view.get(), &event);
        EXPECT_EQ(Shown().pixelColor(pointer), QColor(Qt::white)) << m_view->Scale();
    }
    EXPECT_LT(m_view->Scale(), 1);
}

TEST_F(FrameViewTest, TransparencyShowsTheCheckerboard) {
    QImage picture(200, 200, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    m_view->SetPicture(picture, {});
    m_view->SetScale(1);
    const auto shown = Shown();
    EXPECT_NE(shown.pixelColor(104, 54), shown.pixelColor(112, 54));
    EXPECT_EQ(shown.pixelColor(104, 54), shown.pixelColor(112, 62));
}

} // namespace
