// SPDX-License-Identifier: BSD-3-Clause
#include "platform/TextContext.h"

#include <thread>

#include <gmock/gmock.h>

namespace platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Report Substituted(const std::string& asked) {
    return { ReportKind::kFontSubstituted, asked, "Sans", "it is not installed" };
}

TEST(TextContext, HearsEachSubjectOnce) {
    std::vector<std::string> lines;
    TextContext context(TextEncoding::Utf8(), [&](const Report& report) {
        // A handler may ask, and tell more.
        EXPECT_EQ(context.Reports().back().asked, report.asked);
        lines.push_back(Describe(report));
        context.Tell(Substituted("B"));
    });
    context.Tell(Substituted("A"));
    context.Tell(Substituted("A"));
    context.Tell({ ReportKind::kFontBroken, "A", "", "it ends early" });
    EXPECT_THAT(lines, ElementsAre("font family 'A': it is not installed; using 'Sans' instead",
                                   "font family 'B': it is not installed; using 'Sans' instead",
                                   "font file 'A': it ends early"));
    EXPECT_EQ(context.Failure(), "");
    context.TellNotDrawn("no font is installed");
    context.TellNotDrawn("it is too large");
    EXPECT_EQ(context.Failure(), "the text is not drawn: no font is installed");
    EXPECT_EQ(context.Reports().size(), 4u);
}

TEST(TextContext, IsCurrentForItsScopeAndThreadAlone) {
    TextContext& process = TextContext::Current();
    const std::string before = ApplicationTextEncoding();
    TextContext outer(*TextEncoding::Find("CP932"));
    {
        const TextScope scope(outer);
        TextContext inner;
        {
            const TextScope innerScope(inner);
            EXPECT_EQ(DecodeText("\xFF"), "\uFFFD");
            EXPECT_EQ(ApplicationTextEncoding(), "CP932");
            std::thread([&] { EXPECT_EQ(&TextContext::Current(), &process); }).join();
        }
        EXPECT_EQ(&TextContext::Current(), &outer);
        EXPECT_EQ(inner.Reports().size(), 1u);
        EXPECT_THAT(outer.Reports(), IsEmpty());
        // What the process sets is for threads without a context.
        ASSERT_TRUE(SetApplicationTextEncoding("Big5"));
        EXPECT_EQ(ApplicationTextEncoding(), "CP932");
    }
    EXPECT_EQ(ApplicationTextEncoding(), "Big5");
    ASSERT_TRUE(SetApplicationTextEncoding(before));
}

TEST(TextContext, KeepsNoMoreThanItsLimit) {
    TextContext context;
    for (std::size_t i = 0; i < TextContext::kMaxReports + 10; ++i)
        context.Tell(Substituted(std::to_string(i)));
    EXPECT_EQ(context.Reports().size(), TextContext::kMaxReports);
    context.TellNotDrawn("of no matter"); // too late to be kept, and known nevertheless
    EXPECT_NE(context.Failure(), "");
}

} // namespace
} // namespace platform
