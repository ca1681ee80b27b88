// SPDX-License-Identifier: BSD-3-Clause
#include "platform/Report.h"

#include <atomic>
#include <thread>

#include <gmock/gmock.h>

namespace platform {
namespace {

class ReportTest : public testing::Test {
protected:
    ReportTest() { ForgetReports(); }
    ~ReportTest() override {
        SetReportHandler({});
        ForgetReports();
    }
};

Report Substituted(const std::string& asked) {
    return { ReportKind::kFontSubstituted, asked, "Sans", "it is not installed" };
}

TEST_F(ReportTest, EachSubjectReachesTheHandlerOnce) {
    std::vector<std::string> lines;
    SetReportHandler([&](const Report& report) { lines.push_back(Describe(report)); });
    ReportOnce(Substituted("A"));
    ReportOnce(Substituted("A"));
    ReportOnce(Substituted("B"));
    ReportOnce({ ReportKind::kFontBroken, "A", "", "it ends early" });
    EXPECT_THAT(lines,
                testing::ElementsAre("font family 'A': it is not installed; using 'Sans' instead",
                                     "font family 'B': it is not installed; using 'Sans' instead",
                                     "font file 'A': it ends early"));
    EXPECT_EQ(ReportsSoFar().size(), 3u);
    ForgetReports();
    ReportOnce(Substituted("A"));
    EXPECT_EQ(lines.size(), 4u);
}

TEST_F(ReportTest, AHandlerMayReportAndAsk) {
    std::size_t known = 0;
    SetReportHandler([&](const Report& report) {
        if (report.asked == "outer")
            ReportOnce(Substituted("inner"));
        known = std::max(known, ReportsSoFar().size());
    });
    ReportOnce(Substituted("outer"));
    EXPECT_EQ(known, 2u);
}

TEST_F(ReportTest, TheOldHandlerHasEndedWhenANewOneIsSet) {
    for (int round = 0; round < 200; ++round) {
        std::atomic<bool> inside = false;
        SetReportHandler([&](const Report&) {
            inside = true;
            std::this_thread::yield();
            inside = false;
        });
        std::thread reporter([&] { ReportOnce(Substituted(std::to_string(round))); });
        SetReportHandler({});
        EXPECT_FALSE(inside) << "round " << round;
        reporter.join();
    }
}

TEST_F(ReportTest, KeepsNoMoreThanItsLimit) {
    for (std::size_t i = 0; i < kMaxReports + 10; ++i)
        ReportOnce(Substituted(std::to_string(i)));
    EXPECT_EQ(ReportsSoFar().size(), kMaxReports);
}

} // namespace
} // namespace platform
