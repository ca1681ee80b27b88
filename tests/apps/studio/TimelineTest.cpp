// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Timeline.h"

#include <numeric>
#include <random>

#include "apps/studio/StudioFixture.h"

using namespace studio;

namespace {

using Numbers = std::vector<std::int64_t>;

TEST(OnSpans, ComeFromRangesOverTheFramesThatThereAre) {
    struct Row {
        const char* ranges;
        Numbers numbers;
        OnSpans spans;
        std::string back;
    };
    for (const auto& row : {
             Row { "1-", { 1001, 1002 }, { { 0, 1 } }, host::FrameRanges::All().ToString() },
             Row { "1-9:2", { 1, 2, 3, 4 }, { { 0, 0 }, { 2, 2 } }, "1,3" },
             Row { "10-50", { 10, 20, 40, 60 }, { { 0, 2 } }, "10-40" },
             Row { "7", { 1, 2 }, {}, "" },
         }) {
        std::string why;
        const auto spans = SpansOf(*host::FrameRanges::Parse(row.ranges, why), row.numbers);
        EXPECT_EQ(spans, row.spans) << row.ranges;
        EXPECT_EQ(RangesOf(spans, row.numbers).ToString(), row.back) << row.ranges;
    }
}

TEST(OnSpans, TurnOnAndOffLikeOneFlagForEachFrame) {
    constexpr std::size_t kCount = 24;
    Numbers numbers(kCount);
    std::iota(numbers.begin(), numbers.end(), 1001);
    std::mt19937 random(5);
    std::vector<bool> flags(kCount);
    OnSpans spans;
    for (int i = 0; i < 500; ++i) {
        OnSpan change { random() % kCount, random() % kCount };
        if (change.first > change.last)
            std::swap(change.first, change.last);
        const bool on = random() % 2;
        std::fill(flags.begin() + static_cast<std::ptrdiff_t>(change.first),
                  flags.begin() + static_cast<std::ptrdiff_t>(change.last) + 1, on);
        spans = on ? TurnOn(spans, change) : TurnOff(spans, change);
        for (std::size_t frame = 0; frame < kCount; ++frame)
            ASSERT_EQ(IsOn(spans, frame), flags[frame]) << "step " << i;
        // Neighbours that touch would be one range that shows as two.
        ASSERT_EQ(SpansOf(RangesOf(spans, numbers), numbers), spans) << "step " << i;
    }
}

class TimelineTest : public testing::Test {
protected:
    TimelineTest() {
        TheApplication();
        Numbers numbers(20);
        std::iota(numbers.begin(), numbers.end(), 1);
        m_line.reset(new Timeline);
        m_line->resize(800, m_line->sizeHint().height());
        m_line->SetFrames(numbers);
        m_line->SetSpans({ { 4, 9 } });
        m_line->onSpansChanged = [this](const OnSpans& spans) { m_changes.push_back(spans); };
        m_line->onScrub = [this](std::size_t index) { m_scrubbed.push_back(index); };
    }

    QPoint Bar(std::size_t index) const { return m_line->BarPoint(index); }
    QPoint Ruler(std::size_t index) const { return { Bar(index).x(), 4 }; }
    // Where two frames meet, and so many pixels beside.
    QPoint Edge(std::size_t after, int beside) const {
        return (Bar(after - 1) + Bar(after)) / 2 + QPoint(beside, 0);
    }
    void Drag(const std::vector<QPoint>& points) {
        QTest::mousePress(m_line.get(), Qt::LeftButton, {}, points.front());
        for (const auto& point : points)
            QTest::mouseMove(m_line.get(), point);
        QTest::mouseRelease(m_line.get(), Qt::LeftButton, {}, points.back());
    }

    std::unique_ptr<Timeline> m_line;
    std::vector<OnSpans> m_changes;
    std::vector<std::size_t> m_scrubbed;
};

TEST_F(TimelineTest, DraggingEdgesMiddlesAndEmptyPlacesChangesTheRanges) {
    struct Row {
        const char* what;
        QPoint from;
        std::size_t to;
        OnSpans spans;
    };
    for (const auto& row : {
             Row { "start", Edge(4, 2), 2, { { 2, 9 } } },
             Row { "end", Edge(10, -2), 12, { { 4, 12 } } },
             Row { "past the other end", Edge(4, 2), 15, { { 9, 9 } } },
             Row { "middle", Bar(6), 8, { { 6, 11 } } },
             Row { "middle past the end", Bar(6), 19, { { 14, 19 } } },
             Row { "middle past the start", Bar(6), 0, { { 0, 5 } } },
             Row { "new", Bar(15), 12, { { 4, 9 }, { 12, 15 } } },
             Row { "new that touches", Bar(15), 10, { { 4, 15 } } },
         }) {
        m_line->SetSpans({ { 4, 9 } });
        m_changes.clear();
        Drag({ row.from, (row.from + Bar(row.to)) / 2, Bar(row.to) });
        EXPECT_THAT(m_changes, testing::ElementsAre(row.spans)) << row.what;
    }
}

TEST_F(TimelineTest, AClickOrAnEscapedDragChangesNothingAndDeleteTurnsTheClickedRangeOff) {
    QTest::mousePress(m_line.get(), Qt::LeftButton, {}, Bar(6));
    QTest::mouseMove(m_line.get(), Bar(10));
    EXPECT_NE(m_line->Spans(), (OnSpans { { 4, 9 } }));
    QTest::keyClick(m_line.get(), Qt::Key_Escape);
    QTest::mouseRelease(m_line.get(), Qt::LeftButton, {}, Bar(10));
    EXPECT_EQ(m_line->Spans(), (OnSpans { { 4, 9 } }));
    for (const std::size_t frame : { 15, 6 }) {
        QTest::mouseClick(m_line.get(), Qt::LeftButton, {}, Bar(frame));
        EXPECT_TRUE(m_changes.empty());
        QTest::keyClick(m_line.get(), Qt::Key_Delete);
    }
    QTest::keyClick(m_line.get(), Qt::Key_Delete);
    EXPECT_THAT(m_changes, testing::ElementsAre(OnSpans {}));
}

TEST_F(TimelineTest, TheRulerScrubsAndStopsAtItsEnds) {
    m_line->SetCurrent(9);
    Drag({ Ruler(3), Ruler(17), { 5000, 4 }, { -500, 4 } });
    QTest::mouseClick(m_line.get(), Qt::LeftButton, {}, Ruler(1));
    EXPECT_THAT(m_scrubbed, testing::ElementsAre(3, 3, 17, 19, 0, 1));
    EXPECT_TRUE(m_changes.empty());
}

} // namespace
