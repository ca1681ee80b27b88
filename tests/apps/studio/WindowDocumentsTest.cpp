// SPDX-License-Identifier: BSD-3-Clause
// Documents and frames: opened, saved, refused, restored.
#include <cstring>

#include <QAction>
#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <gmock/gmock.h>

#include "apps/studio/FrameView.h"
#include "apps/studio/MessageBar.h"
#include "apps/studio/StringsPanel.h"
#include "apps/studio/StudioFixture.h"

namespace studio {

namespace {

class WindowDocumentsTest : public StudioTest {
protected:
    // Something of each kind that a document holds.
    void Work() {
        auto& project = Window().TheProject();
        auto const params = project.Effect()->Params();
        params->ptPos = { 12, 34 };
        params->nFontSize = 21;
        project.CommitParams();
        project.ChangeStrings({ true, { "夏", "2", "{file}", "{frame:03}" } }, 0);
        project.ChangeSpans({ { 1, 2 } });
        Window().ShowFrame(2);
    }
    void Drop(const std::vector<std::string>& files) {
        QMimeData data;
        QList<QUrl> urls;
        for (auto const& file : files)
            urls += QUrl::fromLocalFile(QString::fromStdString(file));
        data.setUrls(urls);
        QDragEnterEvent enter({ 5, 5 }, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&Window(), &enter);
        QDropEvent event({ 5, 5 }, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&Window(), &event);
    }
    std::string Message() { return Window().Messages().Text().toStdString(); }
};

TEST_F(WindowDocumentsTest, ComesBackWholeInANewWindow) {
    ASSERT_TRUE(Window().OpenFrames(WriteShot("shot", 5)));
    Work();
    ASSERT_TRUE(Settle());
    auto const picture = Window().View().Picture();
    auto const document = Window().TheProject().ToDocument();
    EXPECT_TRUE(Window().isWindowModified());
    ASSERT_TRUE(Window().SaveDocument(Path("work.telop").string())) << Message();
    EXPECT_FALSE(Window().isWindowModified());

    auto& window = NewWindow();
    ASSERT_TRUE(window.OpenFiles({ Path("work.telop").string() })) << Message();
    ASSERT_TRUE(Settle());
    EXPECT_EQ(window.TheProject().ToDocument(), document);
    EXPECT_EQ(window.View().Picture(), picture);
    EXPECT_FALSE(window.isWindowModified());
    EXPECT_FALSE(window.TheProject().Undo().canUndo());
    EXPECT_EQ(window.TheProject().Current(), 2U);
    EXPECT_EQ(window.Strings().Note(3), "This frame: 003");
}

TEST_F(WindowDocumentsTest, RefusesWhatItCannotReadAndKeepsTheWork) {
    Work();
    auto const before = Window().TheProject().ToDocument();
    struct Row {
        const char* file;
        const char* contents;
    };
    for (auto const& row :
         { Row { "broken.telop", "{ \"format\": " }, Row { "empty.telop", "" },
           Row { "newer.telop", "{ \"format\": \"telop-document\", \"version\": 99 }" } }) {
        auto const file = m_home.Write(row.file, row.contents).string();
        EXPECT_FALSE(Window().OpenDocument(file));
        EXPECT_THAT(Message(), testing::HasSubstr(row.file));
        EXPECT_EQ(Window().TheProject().ToDocument(), before) << row.file;
        EXPECT_EQ(Window().DocumentFile(), "");
    }
    EXPECT_FALSE(Window().OpenDocument(Path("missing.telop").string()));
    EXPECT_FALSE(Window().OpenFrames(Path("no/such.####.png").string()));
    EXPECT_THAT(Message(), testing::HasSubstr("such.####.png"));
    EXPECT_EQ(Window().TheProject().ToDocument(), before);
}

TEST_F(WindowDocumentsTest, AFolderThatTakesNoFileLeavesTheWorkUnsaved) {
    Work();
    EXPECT_FALSE(Window().SaveDocument(Path("no/such/folder.telop").string()));
    EXPECT_THAT(Message(), testing::HasSubstr("folder.telop"));
    EXPECT_TRUE(Window().isWindowModified());
}

// The document would lose them at the next save otherwise.
TEST_F(WindowDocumentsTest, KeepsTheNameOfFramesThatAreGone) {
    ASSERT_TRUE(Window().OpenFrames(WriteShot("shot", 2)));
    ASSERT_TRUE(Window().SaveDocument(Path("work.telop").string()));
    auto const input = Window().TheProject().ToDocument().input;
    std::filesystem::remove_all(Path("shot"));
    ASSERT_TRUE(NewWindow().OpenDocument(Path("work.telop").string()));
    EXPECT_TRUE(Window().TheProject().TheShot()->IsTestCard());
    EXPECT_THAT(Message(), testing::HasSubstr("test card"));
    EXPECT_EQ(Window().TheProject().ToDocument().input, input);
    EXPECT_FALSE(Window().isWindowModified());
}

TEST_F(WindowDocumentsTest, AsksBeforeChangesAreLost) {
    struct Row {
        Answer answer;
        bool closes;
    };
    for (auto const& row : { Row { Answer::kCancel, false }, Row { Answer::kDiscard, true } }) {
        auto& window = NewWindow();
        int asked = 0;
        window.onUnsaved = [&] {
            ++asked;
            return row.answer;
        };
        window.Action("new")->trigger();
        EXPECT_EQ(asked, 0);
        window.TheProject().ChangeSpans({ { 1, 2 } });
        window.Action("new")->trigger();
        EXPECT_EQ(asked, 1);
        EXPECT_EQ(window.isWindowModified(), !row.closes);
        window.TheProject().ChangeSpans({ { 3, 4 } });
        EXPECT_EQ(window.close(), row.closes);
    }
}

TEST_F(WindowDocumentsTest, RestoresWhatACrashLeft) {
    ASSERT_TRUE(Window().OpenFrames(WriteShot("shot", 5)));
    ASSERT_TRUE(Window().SaveDocument(Path("work.telop").string()));
    Work();
    Window().AutosaveNow();
    auto const document = Window().TheProject().ToDocument();
    // What a crash leaves: the copy and what lies beside it, with no one who holds its lock.
    std::filesystem::copy(AutosaveFolder(), Path("left"), std::filesystem::copy_options::recursive);

    auto& window = NewWindow();
    window.onLeftCopy = [&](const host::LeftCopy& copy) {
        EXPECT_EQ(copy.Original(), Path("work.telop"));
        return RestoreAnswer::kRestore;
    };
    window.OfferRestore(Path("left"));
    EXPECT_EQ(window.TheProject().ToDocument(), document);
    EXPECT_EQ(window.DocumentFile(), Path("work.telop").string());
    EXPECT_TRUE(window.isWindowModified());
    EXPECT_TRUE(host::LeftCopy::Find(Path("left")).empty());
    window.close();
    EXPECT_TRUE(host::LeftCopy::Find(AutosaveFolder()).empty());
}

TEST_F(WindowDocumentsTest, ADroppedPictureBringsItsSequence) {
    WriteShot("shot", 4);
    auto const picture = Path("shot/shot.0003.png").string();
    Drop({ picture });
    EXPECT_EQ(Window().TheProject().TheShot()->Count(), 4U);
    Window().Messages().Press(); // only this one
    EXPECT_EQ(Window().TheProject().TheShot()->Count(), 1U);
    Drop({ picture, Path("shot/shot.0001.png").string() });
    EXPECT_EQ(Window().TheProject().TheShot()->Count(), 4U);
    Drop({ Path("shot").string() });
    EXPECT_EQ(Window().TheProject().TheShot()->Count(), 4U);
}

TEST_F(WindowDocumentsTest, RemembersWhatWasOpenedLast) {
    auto const pattern = WriteShot("shot", 2);
    ASSERT_TRUE(Window().OpenFrames(pattern));
    ASSERT_TRUE(Window().SaveDocument(Path("a.telop").string()));
    ASSERT_TRUE(Window().SaveDocument(Path("b.telop").string()));
    ASSERT_TRUE(Window().SaveDocument(Path("a.telop").string()));
    auto const name = [this](const char* file) {
        return QString::fromStdString(Path(file).string());
    };
    EXPECT_EQ(Recent("recent/documents").List(), QStringList({ name("a.telop"), name("b.telop") }));
    EXPECT_EQ(Recent("recent/frames").List(), QStringList(QString::fromStdString(pattern)));
}

} // namespace

} // namespace studio
