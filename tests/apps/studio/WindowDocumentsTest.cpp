// SPDX-License-Identifier: BSD-3-Clause
// Documents and frames: opened, saved, refused, restored.
#include <cstring>
#include <future>

#include <QAction>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QUrl>

#include "apps/studio/StudioFixture.h"

using namespace studio;

namespace {

class WindowDocumentsTest : public StudioTest {
protected:
    // Something of each kind that a document holds.
    void Work() {
        Edit([](auto& params) {
            params.ptPos = { 12, 34 };
            params.nFontSize = 21;
        });
        Project().ChangeStrings({ true, { "夏", "2", "{file}", "{frame:03}" } }, 0);
        Project().ChangeSpans({ { 1, 2 } });
        Window().ShowFrame(2);
    }
    void Drop(const std::vector<std::string>& files) {
        QMimeData data;
        QList<QUrl> urls;
        for (const auto& file : files)
            urls += QUrl::fromLocalFile(QString::fromStdString(file));
        data.setUrls(urls);
        QDragEnterEvent enter({ 5, 5 }, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&Window(), &enter);
        QDropEvent event({ 5, 5 }, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&Window(), &event);
    }
};

TEST_F(WindowDocumentsTest, ComesBackWholeInANewWindow) {
    OpenShot(5);
    Work();
    const auto picture = Picture();
    const auto document = Project().ToDocument();
    EXPECT_TRUE(Window().isWindowModified());
    ASSERT_TRUE(Document().SaveTo(Path("work.telop").string())) << Message();
    EXPECT_FALSE(Window().isWindowModified());

    auto& window = NewWindow();
    ASSERT_TRUE(Document().OpenFiles({ Path("work.telop").string() })) << Message();
    EXPECT_EQ(Project().ToDocument(), document);
    EXPECT_EQ(Picture(), picture);
    EXPECT_FALSE(window.isWindowModified());
    EXPECT_FALSE(Project().Undo().canUndo());
    EXPECT_EQ(Project().Current(), 2U);
    EXPECT_EQ(window.windowTitle(), "work[*] — Telop Studio");
}

TEST_F(WindowDocumentsTest, RefusesWhatItCannotReadOrWriteAndKeepsTheWork) {
    Work();
    const auto before = Project().ToDocument();
    m_home.Write("empty.telop", "");
    m_home.Write("newer.telop", "{ \"format\": \"telop-document\", \"version\": 99 }");
    for (const auto* const name : { "empty.telop", "newer.telop", "missing.telop" }) {
        EXPECT_FALSE(Document().Open(Path(name).string()));
        EXPECT_THAT(Message(), testing::HasSubstr(name));
    }
    EXPECT_FALSE(Document().OpenFrames(Path("no/such.####.png").string()));
    EXPECT_THAT(Message(), testing::HasSubstr("such.####.png"));
    EXPECT_FALSE(Document().SaveTo(Path("no/such/folder.telop").string()));
    EXPECT_THAT(Message(), testing::HasSubstr("folder.telop"));
    EXPECT_EQ(Project().ToDocument(), before);
    EXPECT_EQ(Document().File(), "");
    EXPECT_TRUE(Window().isWindowModified());
}

TEST_F(WindowDocumentsTest, AsksWhichFramesOfAFolderAreMeant) {
    const auto shot = WriteShot("shot", 3);
    std::filesystem::copy_file(Path("shot/shot.0001.png"), Path("shot/reference.png"));
    const auto open = [&] { return Document().OpenFiles({ Path("shot").string() }); };
    EXPECT_TRUE(Answering("Cancel", [&] { EXPECT_FALSE(open()); }));
    EXPECT_THAT(Message(), testing::HasSubstr("reference.png has no number"));
    EXPECT_TRUE(Answering("OK", [&] { EXPECT_TRUE(open()); }));
    EXPECT_EQ(Project().TheShot()->Input(), shot);
    EXPECT_EQ(Project().TheShot()->Numbers().front(), 1);
    EXPECT_EQ(Project().TheShot()->Count(), 3U);

    auto document = Project().ToDocument();
    document.input = Path("shot").string();
    std::string why;
    ASSERT_TRUE(document.Save(Path("work.telop"), why)) << why;
    EXPECT_TRUE(Answering(
        "OK", [&] { EXPECT_TRUE(Document().Open(Path("work.telop").string())) << Message(); }));
    EXPECT_EQ(Project().ToDocument().input, shot);
    EXPECT_TRUE(Window().isWindowModified()) << "it has other frames than the file";
}

// The document would lose them at the next save otherwise.
TEST_F(WindowDocumentsTest, KeepsTheNameOfFramesThatAreGone) {
    OpenShot(2);
    ASSERT_TRUE(Document().SaveTo(Path("work.telop").string()));
    const auto input = Project().ToDocument().input;
    std::filesystem::remove_all(Path("shot"));
    NewWindow();
    ASSERT_TRUE(Document().Open(Path("work.telop").string()));
    EXPECT_TRUE(Project().TheShot()->IsTestCard());
    EXPECT_THAT(Message(), testing::HasSubstr("test card"));
    EXPECT_EQ(Project().ToDocument().input, input);
    EXPECT_FALSE(Window().isWindowModified());
}

TEST_F(WindowDocumentsTest, AsksBeforeChangesAreLost) {
    struct Row {
        const char* button;
        bool closes;
    };
    for (const auto& row : { Row { "Cancel", false }, Row { "Don't Save", true } }) {
        auto& window = NewWindow();
        const auto makeNew = [&] { window.Action("new")->trigger(); };
        EXPECT_FALSE(Answering(row.button, makeNew));
        Project().ChangeSpans({ { 1, 2 } });
        EXPECT_TRUE(Answering(row.button, makeNew));
        EXPECT_EQ(window.isWindowModified(), !row.closes);
        Project().ChangeSpans({ { 3, 4 } });
        EXPECT_TRUE(Answering(row.button, [&] { EXPECT_EQ(window.close(), row.closes); }));
    }
}

// What draws and what the work is written with are the document's own, and nobody else's.
TEST_F(WindowDocumentsTest, EachHasTheEncodingAndTheLanguageOfItsTexts) {
    OpenShot(2);
    auto document = Project().ToDocument();
    EXPECT_EQ(document.language, "en") << "the user's";
    document.language = "ja";
    document.fallbacks = { "DejaVu Sans" };
    document.tracks.front().settings.dwFlags = TEXT_INFO;
    for (const auto& [name, bytes] : { std::pair("UTF-8", "道"), { "CP932", "\x93\xB9" } }) {
        document.encoding = *platform::TextEncoding::Find(name);
        std::strcpy(document.tracks.front().settings.szInfoText, bytes);
        std::string why;
        ASSERT_TRUE(document.Save(Path(name), why)) << why;
    }
    std::vector<QImage> pictures;
    for (const auto* const name : { "UTF-8", "CP932", "UTF-8" }) {
        ASSERT_TRUE(Document().Open(Path(name).string())) << Message();
        pictures.push_back(Picture());
        EXPECT_EQ(Message(), "");
        EXPECT_EQ(platform::ApplicationTextEncoding(), name);
        EXPECT_EQ(platform::TextContext::Current().Language(), "ja");
        EXPECT_EQ(platform::TextContext::Current().Fallbacks().families, document.fallbacks);
        EXPECT_EQ(std::async(platform::ApplicationTextEncoding).get(), "UTF-8");
    }
    EXPECT_THAT(pictures, testing::Each(pictures.front()));
    Document().New();
    EXPECT_EQ(platform::ApplicationTextEncoding(), "UTF-8");
    EXPECT_EQ(Project().ToDocument().language, "en");
}

TEST_F(WindowDocumentsTest, RestoresWhatACrashLeft) {
    OpenShot(5);
    ASSERT_TRUE(Document().SaveTo(Path("work.telop").string()));
    Work();
    Document().KeepCopy();
    const auto document = Project().ToDocument();
    // What a crash leaves: the copy and what lies beside it, with no one who holds its lock.
    std::filesystem::copy(AutosaveFolder(), Path("left"), std::filesystem::copy_options::recursive);

    auto& window = NewWindow();
    EXPECT_TRUE(Answering("Restore", [&] { Document().OfferRestore(Path("left")); }));
    EXPECT_EQ(Project().ToDocument(), document);
    EXPECT_EQ(Document().File(), Path("work.telop").string());
    EXPECT_TRUE(window.isWindowModified());
    EXPECT_TRUE(host::LeftCopy::Find(Path("left")).empty());
    EXPECT_TRUE(Answering("Don't Save", [&] { window.close(); }));
    EXPECT_TRUE(host::LeftCopy::Find(AutosaveFolder()).empty());
}

TEST_F(WindowDocumentsTest, ADroppedPictureBringsItsSequence) {
    WriteShot("shot", 4);
    const auto picture = Path("shot/shot.0003.png").string();
    Drop({ picture });
    EXPECT_EQ(Project().TheShot()->Count(), 4U);
    Click(Window().Messages(), "Only This Picture");
    EXPECT_EQ(Project().TheShot()->Count(), 1U);
    Drop({ picture, Path("shot/shot.0001.png").string() });
    EXPECT_EQ(Project().TheShot()->Count(), 4U);
    Drop({ Path("shot").string() });
    EXPECT_EQ(Project().TheShot()->Count(), 4U);
}

TEST_F(WindowDocumentsTest, RemembersWhatWasOpenedLast) {
    QStringList files;
    for (const auto* const name : { "a.telop", "b.telop", "a.telop" }) {
        files.prepend(QString::fromStdString(Path(name).string()));
        ASSERT_TRUE(Document().SaveTo(files.front().toStdString()));
    }
    EXPECT_EQ(Recent("recent/documents").List(), files.first(2));
}

TEST_F(WindowDocumentsTest, TheRateOfPlaybackIsKept) {
    const auto rate = [this] { return Window().Action("rate")->iconText().toStdString(); };
    EXPECT_EQ(rate(), "24 fps");
    Window().Action("rate")->menu()->actions()[3]->trigger();
    EXPECT_EQ(rate(), "29.97 fps");
    NewWindow();
    EXPECT_EQ(rate(), "29.97 fps");
}

} // namespace
