// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Timeline.h"

#include <functional>
#include <memory>
#include <numeric>

#include <QApplication>
#include <QtTest>
#include <gmock/gmock.h>

#include "apps/studio/StudioFixture.h"

namespace studio {

namespace {

class TimelineTest : public testing::Test {
protected:
    TimelineTest() {
        TheApplication();
        std::vector<std::int64_t> numbers(20);
        std::iota(numbers.begin(), numbers.end(), 1);
        m_timeline.reset(new Timeline);
        m_timeline->resize(800, m_timeline->sizeHint().height());
        m_timeline->SetFrames(numbers);
        m_timeline->SetSpans({ { 4, 9 } });
        m_timeline->onSpansChanged = [this](const OnSpans& spans) { m_changes.push_back(spans); };
        m_timeline->onScrub = [this](std::size_t index) { m_scrubbed.push_back(index); };
    }

    void Drag(QPoint from, QPoint to) {
        QTest::mousePress(m_timeline.get(), Qt::LeftButton, {}, from);
        QTest::mouseMove(m_timeline.get(), (from + to) / 2);
        QTest::mouseMove(m_timeline.get(), to);
        QTest::mouseRelease(m_timeline.get(), Qt::LeftButton, {}, to);
    }

    std::unique_ptr<Timeline> m_timeline;
    std::vector<OnSpans> m_changes;
    std::vector<std::size_t> m_scrubbed;
};

TEST_F(TimelineTest, DraggingEdgesMiddlesAndEmptyPlacesChangesTheRanges) {
    auto& line = *m_timeline;
    struct Row {
        const char* what;
        std::function<QPoint()> from;
        std::size_t to;
        OnSpans spans;
    };
    for (auto const& row : {
             Row { "start", [&] { return line.EdgePoint(0, false); }, 2, { { 2, 9 } } },
             Row { "end", [&] { return line.EdgePoint(0, true); }, 12, { { 4, 12 } } },
             Row {
                 "past the other end", [&] { return line.EdgePoint(0, false); }, 15, { { 9, 9 } } },
             Row { "middle", [&] { return line.BarPoint(6); }, 8, { { 6, 11 } } },
             Row { "middle past the end", [&] { return line.BarPoint(6); }, 19, { { 14, 19 } } },
             Row { "middle past the start", [&] { return line.BarPoint(6); }, 0, { { 0, 5 } } },
             Row { "new", [&] { return line.BarPoint(15); }, 12, { { 4, 9 }, { 12, 15 } } },
             Row { "new that touches", [&] { return line.BarPoint(15); }, 10, { { 4, 15 } } },
         }) {
        line.SetSpans({ { 4, 9 } });
        m_changes.clear();
        Drag(row.from(), line.BarPoint(row.to));
        ASSERT_EQ(m_changes.size(), 1U) << row.what;
        EXPECT_EQ(m_changes[0], row.spans) << row.what;
    }
}

TEST_F(TimelineTest, AClickAloneChangesNothingAndDeleteTurnsTheClickedRangeOff) {
    QTest::mouseClick(m_timeline.get(), Qt::LeftButton, {}, m_timeline->BarPoint(15));
    EXPECT_FALSE(m_timeline->Selected());
    QTest::mouseClick(m_timeline.get(), Qt::LeftButton, {}, m_timeline->BarPoint(6));
    EXPECT_EQ(m_timeline->Selected(), 0U);
    EXPECT_TRUE(m_changes.empty());
    QTest::keyClick(m_timeline.get(), Qt::Key_Delete);
    ASSERT_EQ(m_changes.size(), 1U);
    EXPECT_TRUE(m_changes[0].empty());
    QTest::keyClick(m_timeline.get(), Qt::Key_Delete);
    EXPECT_EQ(m_changes.size(), 1U);
}

TEST_F(TimelineTest, EscapeTakesADragBack) {
    QTest::mousePress(m_timeline.get(), Qt::LeftButton, {}, m_timeline->BarPoint(6));
    QTest::mouseMove(m_timeline.get(), m_timeline->BarPoint(10));
    EXPECT_NE(m_timeline->Spans(), (OnSpans { { 4, 9 } }));
    QTest::keyClick(m_timeline.get(), Qt::Key_Escape);
    QTest::mouseRelease(m_timeline.get(), Qt::LeftButton, {}, m_timeline->BarPoint(10));
    EXPECT_EQ(m_timeline->Spans(), (OnSpans { { 4, 9 } }));
    EXPECT_TRUE(m_changes.empty());
}

TEST_F(TimelineTest, TheRulerScrubsAndStopsAtItsEnds) {
    auto& line = *m_timeline;
    QTest::mousePress(&line, Qt::LeftButton, {}, line.RulerPoint(3));
    QTest::mouseMove(&line, line.RulerPoint(17));
    QTest::mouseMove(&line, { 5000, 4 });
    QTest::mouseMove(&line, { -500, 4 });
    QTest::mouseRelease(&line, Qt::LeftButton, {}, { -500, 4 });
    EXPECT_THAT(m_scrubbed, testing::ElementsAre(3, 17, 19));
    line.SetCurrent(9);
    QTest::mouseClick(&line, Qt::LeftButton, {}, line.RulerPoint(0));
    EXPECT_EQ(m_scrubbed.back(), 0U);
    EXPECT_TRUE(m_changes.empty());
}

} // namespace

} // namespace studio
