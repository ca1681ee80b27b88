// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Timeline.h"

#include <numeric>
#include <random>

#include <QWheelEvent>

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

// Three rows: ranges, cues, and cues that are locked.
class TimelineTest : public testing::Test {
protected:
    TimelineTest() {
        TheApplication();
        Numbers numbers(20);
        std::iota(numbers.begin(), numbers.end(), 1001);
        m_line = std::make_unique<Timeline>();
        m_line->SetFrames(numbers);
        Reset();
        m_line->resize(900, m_line->sizeHint().height());
        m_line->show();
        m_line->onChange = [this](const QString& step, const host::Track& track) {
            m_steps.push_back(step.toStdString());
            m_changed = track;
            auto tracks = Tracks();
            tracks[m_selected] = track;
            m_line->SetTracks(tracks, m_selected);
        };
        m_line->onSelect = [this](std::size_t track) { m_selected = track; };
        m_line->onScrub = [this](std::size_t index) { m_scrubbed.push_back(index); };
        m_line->onNewCue = [this](FrameSpan frames) { m_new.push_back(frames); };
        m_line->onEdit = [this] { m_edited = m_line->TheCue(); };
    }

    static std::vector<host::Track> Tracks() {
        std::vector<host::Track> tracks(3);
        std::string why;
        tracks[0].on = *host::FrameRanges::Parse("1005-1010", why);
        tracks[1].cues = { { 1003, 1006, "Run!", "Hanako" }, { 1009, 1012, "two\nlines", "" } };
        tracks[2] = tracks[1];
        tracks[2].isLocked = true;
        return tracks;
    }
    void Reset() {
        m_line->SetTracks(Tracks(), m_selected);
        m_steps.clear();
        m_new.clear();
    }
    QPoint Bar(std::size_t index) const { return m_line->RowPoint(0, index); }
    QPoint Cue(std::size_t index) const { return m_line->RowPoint(1, index); }
    QPoint Ruler(std::size_t index) const { return { Bar(index).x(), 4 }; }
    // Where two frames of a row meet, and so many pixels beside.
    QPoint Edge(std::size_t row, std::size_t after, int beside) const {
        return (m_line->RowPoint(row, after - 1) + m_line->RowPoint(row, after)) / 2 +
               QPoint(beside, 0);
    }
    void Drag(const std::vector<QPoint>& points) {
        QTest::mousePress(m_line->viewport(), Qt::LeftButton, {}, points.front());
        for (const auto& point : points)
            QTest::mouseMove(m_line->viewport(), point);
        QTest::mouseRelease(m_line->viewport(), Qt::LeftButton, {}, points.back());
    }
    void Click(QPoint point) { QTest::mouseClick(m_line->viewport(), Qt::LeftButton, {}, point); }

    std::unique_ptr<Timeline> m_line;
    std::size_t m_selected = 0;
    std::vector<std::string> m_steps;
    host::Track m_changed;
    std::vector<FrameSpan> m_new;
    std::vector<std::size_t> m_scrubbed;
    std::optional<std::size_t> m_edited;
};

TEST_F(TimelineTest, DraggingEdgesMiddlesAndEmptyPlacesChangesTheRanges) {
    struct Row {
        const char* what;
        QPoint from;
        std::size_t to;
        std::string on;
    };
    for (const auto& row : {
             Row { "start", Edge(0, 4, 2), 2, "1003-1010" },
             Row { "end", Edge(0, 10, -2), 12, "1005-1013" },
             Row { "past the other end", Edge(0, 4, 2), 15, "1010" },
             Row { "middle", Bar(6), 8, "1007-1012" },
             Row { "middle past the end", Bar(6), 19, "1015-1020" },
             Row { "middle past the start", Bar(6), 0, "1001-1006" },
             Row { "new", Bar(15), 12, "1005-1010,1013-1016" },
             Row { "new that touches", Bar(15), 10, "1005-1016" },
         }) {
        Reset();
        Drag({ row.from, (row.from + Bar(row.to)) / 2, Bar(row.to) });
        EXPECT_THAT(m_steps, testing::ElementsAre("Change Ranges")) << row.what;
        EXPECT_EQ(m_changed.on.ToString(), row.on) << row.what;
    }
}

TEST_F(TimelineTest, CuesMoveAndAreTrimmedUpToTheirNeighbours) {
    using Frames = std::vector<FrameSpan>;
    struct Row {
        const char* what;
        QPoint from;
        std::size_t to;
        std::string step;
        Frames cues;
    };
    for (const auto& row : {
             Row { "whole", Cue(4), 5, "Move Cue", { { 1004, 1007 }, { 1009, 1012 } } },
             Row { "into the next", Cue(4), 12, "Move Cue", { { 1005, 1008 }, { 1009, 1012 } } },
             Row { "out of the shot", Cue(4), 0, "Move Cue", { { 1001, 1004 }, { 1009, 1012 } } },
             Row { "start", Edge(1, 2, 2), 3, "Trim Cue", { { 1004, 1006 }, { 1009, 1012 } } },
             Row { "into the one before",
                   Edge(1, 8, 2),
                   1,
                   "Trim Cue",
                   { { 1003, 1006 }, { 1007, 1012 } } },
             Row { "end past the start",
                   Edge(1, 12, -2),
                   2,
                   "Trim Cue",
                   { { 1003, 1006 }, { 1009, 1009 } } },
         }) {
        Reset();
        Drag({ row.from, (row.from + Cue(row.to)) / 2, Cue(row.to) });
        EXPECT_THAT(m_steps, testing::ElementsAre(row.step)) << row.what;
        Frames frames;
        for (const auto& cue : m_changed.cues)
            frames.push_back({ cue.first, cue.last });
        EXPECT_EQ(frames, row.cues) << row.what;
    }
    Reset();
    Drag({ Cue(7), Cue(19) });
    Drag({ Cue(15), Cue(12), Cue(9) });
    EXPECT_THAT(m_new, testing::ElementsAre(FrameSpan { 1008, 1008 }, FrameSpan { 1013, 1016 }));
    Drag({ m_line->RowPoint(2, 4), m_line->RowPoint(2, 7) });
    EXPECT_TRUE(m_steps.empty()) << "locked";
}

TEST_F(TimelineTest, AClickOrAnEscapedDragChangesNothingAndDeleteTakesWhatWasClicked) {
    QTest::mousePress(m_line->viewport(), Qt::LeftButton, {}, Bar(6));
    QTest::mouseMove(m_line->viewport(), Bar(10));
    EXPECT_NE(m_line->Spans(), (OnSpans { { 4, 9 } }));
    QTest::keyClick(m_line.get(), Qt::Key_Escape);
    QTest::mouseRelease(m_line->viewport(), Qt::LeftButton, {}, Bar(10));
    EXPECT_EQ(m_line->Spans(), (OnSpans { { 4, 9 } }));
    for (const std::size_t frame : { 15, 6 }) {
        Click(Bar(frame));
        EXPECT_TRUE(m_steps.empty());
        QTest::keyClick(m_line.get(), Qt::Key_Delete);
    }
    QTest::keyClick(m_line.get(), Qt::Key_Delete);
    EXPECT_EQ(m_changed.on.ToString(), "");
    Click(Cue(9));
    QTest::keyClick(m_line.get(), Qt::Key_Backspace);
    EXPECT_THAT(m_changed.cues, testing::ElementsAre(Tracks()[1].cues[0]));
    EXPECT_THAT(m_steps, testing::ElementsAre("Change Ranges", "Delete Cue"));
}

TEST_F(TimelineTest, RowsSelectAndCuesOpenByDoubleClickAndEnter) {
    Click({ 5, Cue(0).y() });
    EXPECT_EQ(m_selected, 1U);
    QTest::keyClick(m_line.get(), Qt::Key_Up);
    QTest::keyClick(m_line.get(), Qt::Key_Up);
    EXPECT_EQ(m_selected, 2U);
    QTest::mouseDClick(m_line->viewport(), Qt::LeftButton, {}, Cue(10));
    EXPECT_EQ(m_selected, 1U);
    EXPECT_EQ(m_edited, 1U);
    Click(Cue(7));
    m_line->SetCurrent(4);
    QTest::keyClick(m_line.get(), Qt::Key_Return);
    EXPECT_EQ(m_edited, 0U) << "the one of the current frame";
}

TEST_F(TimelineTest, ZoomingKeepsTheFrameUnderThePointerAndShowsTheCurrentOne) {
    const auto wheel = [&](QPointF at, int turn) {
        QWheelEvent event(at, m_line->viewport()->mapToGlobal(at), {}, { 0, turn }, {},
                          Qt::ControlModifier, {}, false);
        QApplication::sendEvent(m_line->viewport(), &event);
    };
    const auto at = Bar(15);
    for (int i = 0; i < 3; ++i)
        wheel(at, 120);
    EXPECT_NEAR(Bar(15).x(), at.x(), 2 + (Bar(1).x() - Bar(0).x()) / 2.0);
    EXPECT_LT(Bar(0).x(), 0);
    m_line->SetCurrent(0);
    EXPECT_GT(Bar(0).x(), 0);
    EXPECT_GT(Bar(19).x(), m_line->viewport()->width());
    m_line->FitFrames();
    EXPECT_EQ(Bar(15), at);
}

TEST_F(TimelineTest, TheRulerScrubsAndStopsAtItsEnds) {
    m_line->SetCurrent(9);
    Drag({ Ruler(3), Ruler(17), { 5000, 4 }, { -500, 4 } });
    Click(Ruler(1));
    EXPECT_THAT(m_scrubbed, testing::ElementsAre(3, 3, 17, 19, 0, 1));
    EXPECT_TRUE(m_steps.empty());
}

} // namespace
