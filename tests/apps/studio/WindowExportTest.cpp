// SPDX-License-Identifier: BSD-3-Clause
// Exported frames are those of the command line.
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>

#include <QAction>
#include <QImage>
#include <gmock/gmock.h>

#include "apps/studio/ExportBar.h"
#include "apps/studio/StudioFixture.h"

namespace studio {

namespace {

class WindowExportTest : public StudioTest {
protected:
    std::string Export(const host::ExportOptions& options) {
        EXPECT_TRUE(Settle()); // or what it says may come last
        Window().StartExport(options);
        EXPECT_TRUE(WaitUntil([&] { return Window().Exports().isHidden(); }));
        return Message();
    }
    host::ExportOptions To(const std::string& folder) const {
        host::ExportOptions options;
        options.output = (Path(folder) / "").string();
        return options;
    }
    std::filesystem::path NameOf(const std::string& folder, int number) const {
        return Path(folder) / ("shot.000" + std::to_string(number) + ".png");
    }
    std::string Frame(const std::string& folder, int number) const {
        std::ifstream stream(NameOf(folder, number), std::ios::binary);
        return { std::istreambuf_iterator<char>(stream), {} };
    }
};

TEST_F(WindowExportTest, WritesWhatTheCommandLineMakesOfTheDocument) {
    for (int const depth : { 8, 16 }) {
        auto const shot = "shot" + std::to_string(depth);
        auto const studio = "studio" + std::to_string(depth);
        auto const line = "line" + std::to_string(depth);
        auto const format = depth == 8 ? QImage::Format_RGB32 : QImage::Format_RGBX64;
        ASSERT_TRUE(Document().OpenFrames(WriteShot(shot, 6, format)));
        Edit([](auto& params) { params.ptPos = { 20, 30 }; });
        Project().ChangeStrings({ true, { "題", "3", "{file}", "{frame+10}" } }, 0);
        Project().ChangeSpans({ { 1, 3 } });
        EXPECT_EQ(Export(To(studio)), "The export is done: 6 frames written.");

        ASSERT_TRUE(Document().SaveTo(Path("work.telop").string()));
        auto const command = std::string(TELOP_PROGRAM) + " render --quiet --document '" +
                             Path("work.telop").string() + "' '" + (Path(line) / "").string() + "'";
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
        for (int i = 1; i <= 6; ++i) {
            ASSERT_FALSE(Frame(studio, i).empty()) << i;
            EXPECT_EQ(Frame(studio, i), Frame(line, i)) << i;
        }
        EXPECT_NE(Frame(studio, 2), Frame(shot, 2));
        auto const written = QImage::fromData(QByteArray::fromStdString(Frame(studio, 2)));
        EXPECT_EQ(written.depth() > 32, depth == 16);
    }
}

TEST_F(WindowExportTest, NamesWhatFailed) {
    ASSERT_TRUE(Document().OpenFrames(WriteShot("shot", 3)));
    m_home.Write("shot/shot.0002.png", "no picture");
    auto const message = Export(To("out"));
    EXPECT_THAT(message, testing::HasSubstr("2 frames written, 1 failed"));
    EXPECT_THAT(message, testing::HasSubstr("shot.0002.png"));
    EXPECT_FALSE(std::filesystem::exists(Path("out/shot.0002.png")));
}

// A frame without its text is none, and another font in the place of the one that is asked for is told.
TEST_F(WindowExportTest, TellsOfTextThatIsNotAsItShouldBe) {
    ASSERT_TRUE(Document().OpenFrames(WriteShot("shot", 2)));
    Edit([](auto& params) { std::strcpy(params.szFontName, "No Such Family"); });
    EXPECT_THAT(Export(To("other")), testing::AllOf(testing::HasSubstr("2 frames written.\n"),
                                                    testing::HasSubstr("No Such Family")));
    Edit([](auto& params) { params.nFontSize = 32000; });
    EXPECT_THAT(Export(To("none")), testing::AllOf(testing::HasSubstr("0 frames written, 2 failed"),
                                                   testing::HasSubstr("shot.000")));
    EXPECT_TRUE(Frame("none", 1).empty());
}

// An export draws in the encoding of the document that it was started with.
TEST_F(WindowExportTest, GoesOnWhileAnotherDocumentIsOpened) {
    ASSERT_TRUE(Document().OpenFrames(WriteShot("shot", 9)));
    Edit([](auto& params) {
        params.dwFlags = TEXT_INFO;
        std::strcpy(params.szInfoText, "道");
    });
    Export(To("alone"));
    auto other = Project().ToDocument();
    other.encoding = *platform::TextEncoding::Find("CP932");
    std::string why;
    ASSERT_TRUE(other.Save(Path("other.telop"), why)) << why;
    Window().StartExport(To("beside"));
    EXPECT_TRUE(Document().Open(Path("other.telop").string())) << Message();
    ASSERT_TRUE(WaitUntil([&] { return Window().Exports().isHidden(); }));
    for (int i = 1; i <= 9; ++i)
        EXPECT_EQ(Frame("beside", i), Frame("alone", i)) << i;
}

TEST_F(WindowExportTest, RefusesKeepsOrReplacesWhatIsThere) {
    ASSERT_TRUE(Document().OpenFrames(WriteShot("shot", 2)));
    std::filesystem::create_directories(Path("out"));
    std::filesystem::copy(NameOf("shot", 2), NameOf("out", 1));
    auto options = To("out");
    EXPECT_THAT(Export(options), testing::HasSubstr("shot.0001.png"));
    EXPECT_FALSE(std::filesystem::exists(Path("out/shot.0002.png")));
    options.existing = host::Existing::kSkip;
    EXPECT_THAT(Export(options), testing::HasSubstr("1 frame written, 1 there already"));
    EXPECT_EQ(Frame("out", 1), Frame("shot", 2));
    options.existing = host::Existing::kOverwrite;
    EXPECT_THAT(Export(options), testing::HasSubstr("2 frames written"));
    EXPECT_NE(Frame("out", 1), Frame("shot", 2));
}

// How many frames were written before the click is the machine's matter; what is there is whole.
TEST_F(WindowExportTest, ACancelledOneLeavesWholeFramesAndGoesOnLater) {
    ASSERT_TRUE(Document().OpenFrames(WriteShot("shot", 9)));
    Export(To("whole"));
    auto options = To("out");
    options.existing = host::Existing::kSkip;
    Window().StartExport(options);
    Click(ButtonOf(Window().Exports(), "Cancel Export"));
    ASSERT_TRUE(WaitUntil([&] { return Window().Exports().isHidden(); }));
    EXPECT_THAT(Message(), testing::AnyOf(testing::HasSubstr("The export was cancelled"),
                                          testing::HasSubstr("9 frames written")));
    for (int i = 1; i <= 9; ++i)
        EXPECT_THAT(Frame("out", i), testing::AnyOf("", Frame("whole", i))) << i;
    Export(options);
    for (int i = 1; i <= 9; ++i)
        EXPECT_EQ(Frame("out", i), Frame("whole", i)) << i;
}

TEST_F(WindowExportTest, TheTestCardIsNotExported) {
    Window().Action("export")->trigger();
    EXPECT_THAT(Message(), testing::HasSubstr("test card"));
}

} // namespace

} // namespace studio
