// SPDX-License-Identifier: BSD-3-Clause
// An export in the window: what it tells, and that it minds nothing else.
#include <cstring>
#include <fstream>
#include <iterator>

#include <QAction>

#include "apps/studio/ExportBar.h"
#include "apps/studio/StudioFixture.h"

using namespace studio;

namespace {

class WindowExportTest : public StudioTest {
protected:
    // Gives what is said of it. The user does something meanwhile.
    std::string Export(
        const host::ExportOptions& options, const std::function<void()>& meanwhile = [] {}) {
        EXPECT_TRUE(Settle()); // or what it says may come last
        Window().StartExport(options);
        meanwhile();
        EXPECT_TRUE(WaitUntil([&] { return Window().Exports().isHidden(); }));
        return Message();
    }
    host::ExportOptions To(const std::string& folder) const {
        host::ExportOptions options;
        options.output = (Path(folder) / "").string();
        return options;
    }
    std::string Frame(const std::string& folder, int number) const {
        const auto name = "shot.000" + std::to_string(number) + ".png";
        std::ifstream stream(Path(folder) / name, std::ios::binary);
        return { std::istreambuf_iterator<char>(stream), {} };
    }
};

// A frame without its text is none, and another font in the place of the one that is asked for is told.
TEST_F(WindowExportTest, TellsOfWhatIsNotAsItShouldBe) {
    using testing::AllOf, testing::HasSubstr;
    OpenShot(3);
    Edit([](auto& params) { std::strcpy(params.szFontName, "No Such Family"); });
    EXPECT_THAT(Export(To("other")),
                AllOf(HasSubstr("3 frames written.\n"), HasSubstr("No Such Family")));
    Edit([](auto& params) { params.ptPos = { 5000, 40 }; });
    EXPECT_THAT(Export(To("outside")), HasSubstr("at 5000,40 it lies outside the picture"));
    Edit([](auto& params) { params.ptPos = {}; });
    m_home.Write("shot/shot.0002.png", "no picture");
    EXPECT_THAT(Export(To("broken")),
                AllOf(HasSubstr("2 frames written, 1 failed"), HasSubstr("shot.0002.png"),
                      HasSubstr("No Such Family")));
    EXPECT_EQ(Frame("broken", 2), "");
    const auto size = Project().LiveParams().nFontSize;
    Edit([](auto& params) { params.nFontSize = 32000; });
    ASSERT_TRUE(Settle());
    EXPECT_THAT(Message(), HasSubstr("The text could not be drawn into this frame.\n"));
    EXPECT_THAT(Export(To("none")), HasSubstr("0 frames written, 3 failed"));
    EXPECT_EQ(Frame("none", 1), "");
    Edit([size](auto& params) { params.nFontSize = size; });
    ASSERT_TRUE(Settle());
    EXPECT_THAT(Message(), testing::Not(HasSubstr("could not be drawn")));
}

// An export draws in the encoding of the document that it was started with.
TEST_F(WindowExportTest, GoesOnWhileAnotherDocumentIsOpened) {
    OpenShot(9);
    Edit([](auto& params) {
        params.dwFlags = TEXT_INFO;
        std::strcpy(params.szInfoText, "道");
    });
    Export(To("alone"));
    auto other = Project().ToDocument();
    other.encoding = *platform::TextEncoding::Find("CP932");
    std::string why;
    ASSERT_TRUE(other.Save(Path("other.telop"), why)) << why;
    Export(To("beside"), [&] { EXPECT_TRUE(Document().Open(Path("other.telop").string())); });
    for (int i = 1; i <= 9; ++i)
        EXPECT_EQ(Frame("beside", i), Frame("alone", i)) << i;
}

// How many frames were written before the click is the machine's matter; what is there is whole.
TEST_F(WindowExportTest, RefusesKeepsAndIsCancelled) {
    Window().Action("export")->trigger();
    EXPECT_THAT(Message(), testing::HasSubstr("test card"));
    OpenShot(9);
    auto options = To("out");
    EXPECT_EQ(Export(options), "The export is done: 9 frames written.");
    EXPECT_THAT(Export(options), testing::HasSubstr("shot.0001.png"));
    std::filesystem::remove(Path("out/shot.0002.png"));
    options.existing = host::Existing::kSkip;
    EXPECT_THAT(Export(options), testing::HasSubstr("1 frame written, 8 there already"));
    EXPECT_THAT(Export(To("cancelled"), [&] { Click(Window().Exports(), "Cancel Export"); }),
                testing::AnyOf(testing::HasSubstr("The export was cancelled"),
                               testing::HasSubstr("9 frames written")));
    for (int i = 1; i <= 9; ++i)
        EXPECT_THAT(Frame("cancelled", i), testing::AnyOf("", Frame("out", i))) << i;
}

} // namespace
