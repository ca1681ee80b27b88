// SPDX-License-Identifier: BSD-3-Clause
// Exported frames are those of the command line.
#include <cstdlib>

#include <QAbstractButton>
#include <QAction>
#include <QImage>
#include <QRgba64>
#include <QTest>
#include <gmock/gmock.h>

#include "apps/studio/ExportBar.h"
#include "apps/studio/MessageBar.h"
#include "apps/studio/StudioFixture.h"

namespace studio {

namespace {

class WindowExportTest : public StudioTest {
protected:
    std::string Export(const host::ExportOptions& options) {
        Window().StartExport(options);
        EXPECT_TRUE(WaitUntil([&] { return Window().Exports().isHidden(); }));
        return Window().Messages().Text().toStdString();
    }
    host::ExportOptions To(const std::string& folder) const {
        host::ExportOptions options;
        options.output = (Path(folder) / "").string();
        return options;
    }
    // Makes the frames over with 16 bits a channel, and values that 8 bits do not have.
    void Deepen(const std::string& folder, int frames) const {
        QImage picture(320, 180, QImage::Format_RGBX64);
        for (int y = 0; y < picture.height(); ++y) {
            auto* const row = reinterpret_cast<QRgba64*>(picture.scanLine(y));
            for (int x = 0; x < picture.width(); ++x)
                row[x] = qRgba64(x * 201, y * 333, x * y, 65535);
        }
        for (int i = 1; i <= frames; ++i) {
            EXPECT_TRUE(picture.save(QString::fromStdString(NameOf(folder, i).string())));
        }
    }
    std::filesystem::path NameOf(const std::string& folder, int number) const {
        return Path(folder) / ("shot.000" + std::to_string(number) + ".png");
    }
    std::string Frame(const std::string& folder, int number) const {
        return Contents(NameOf(folder, number));
    }
};

TEST_F(WindowExportTest, WritesWhatTheCommandLineMakesOfTheDocument) {
    auto& project = Window().TheProject();
    for (int const depth : { 8, 16 }) {
        auto const shot = "shot" + std::to_string(depth);
        auto const studio = "studio" + std::to_string(depth);
        auto const line = "line" + std::to_string(depth);
        auto const pattern = WriteShot(shot, 6);
        if (depth == 16)
            Deepen(shot, 6);
        ASSERT_TRUE(Window().OpenFrames(pattern));
        project.Effect()->Params()->ptPos = { 20, 30 };
        project.CommitParams();
        project.ChangeStrings({ true, { "題", "3", "{file}", "{frame+10}" } }, 0);
        project.ChangeSpans({ { 1, 3 } });
        EXPECT_EQ(Export(To(studio)), "The export is done: 6 frames written.");

        ASSERT_TRUE(Window().SaveDocument(Path("work.telop").string()));
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
    ASSERT_TRUE(Window().OpenFrames(WriteShot("shot", 3)));
    m_home.Write("shot/shot.0002.png", "no picture");
    auto const message = Export(To("out"));
    EXPECT_THAT(message, testing::HasSubstr("2 frames written, 1 failed"));
    EXPECT_THAT(message, testing::HasSubstr("shot.0002.png"));
    EXPECT_EQ(Window().Messages().TheKind(), MessageBar::Kind::kError);
    EXPECT_FALSE(std::filesystem::exists(Path("out/shot.0002.png")));
}

TEST_F(WindowExportTest, RefusesKeepsOrReplacesWhatIsThere) {
    ASSERT_TRUE(Window().OpenFrames(WriteShot("shot", 2)));
    m_home.Write("out/shot.0001.png", "mine");
    auto options = To("out");
    EXPECT_THAT(Export(options), testing::HasSubstr("shot.0001.png"));
    EXPECT_FALSE(std::filesystem::exists(Path("out/shot.0002.png")));
    options.existing = host::Existing::kSkip;
    EXPECT_THAT(Export(options), testing::HasSubstr("1 frame written, 1 there already"));
    EXPECT_EQ(Frame("out", 1), "mine");
    options.existing = host::Existing::kOverwrite;
    EXPECT_THAT(Export(options), testing::HasSubstr("2 frames written"));
    EXPECT_NE(Frame("out", 1), "mine");
}

// How many frames were written before the click is the machine's matter; what is there is whole.
TEST_F(WindowExportTest, ACancelledOneLeavesWholeFramesAndGoesOnLater) {
    ASSERT_TRUE(Window().OpenFrames(WriteShot("shot", 9)));
    Export(To("whole"));
    auto options = To("out");
    options.existing = host::Existing::kSkip;
    Window().StartExport(options);
    QTest::mouseClick(Window().Exports().findChild<QAbstractButton*>(), Qt::LeftButton);
    ASSERT_TRUE(WaitUntil([&] { return Window().Exports().isHidden(); }));
    EXPECT_THAT(Window().Messages().Text().toStdString(),
                testing::AnyOf(testing::HasSubstr("The export was cancelled"),
                               testing::HasSubstr("9 frames written")));
    for (int i = 1; i <= 9; ++i)
        EXPECT_THAT(Frame("out", i), testing::AnyOf("", Frame("whole", i))) << i;
    Export(options);
    for (int i = 1; i <= 9; ++i)
        EXPECT_EQ(Frame("out", i), Frame("whole", i)) << i;
}

TEST_F(WindowExportTest, TheTestCardIsNotExported) {
    Window().Action("export")->trigger();
    EXPECT_THAT(Window().Messages().Text().toStdString(), testing::HasSubstr("test card"));
}

} // namespace

} // namespace studio
