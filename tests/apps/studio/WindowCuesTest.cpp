// SPDX-License-Identifier: BSD-3-Clause
// Cues in the window: made, worded, split and given back, with keys.
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "apps/studio/CueExchange.h"
#include "apps/studio/StudioFixture.h"
#include "apps/studio/Timeline.h"
#include "host/document/Document.h"

using namespace studio;

namespace {

using testing::ElementsAre;

class WindowCuesTest : public StudioTest {
protected:
    WindowCuesTest() {
        EXPECT_TRUE(Document().OpenFrames(WriteShot("shot", 9)));
        Kind(TEXT_DIALOGUE);
        Line().setFocus();
    }

    Timeline& Line() { return Window().TheTimeline(); }
    void Kind(std::uint32_t kind) {
        Edit([kind](auto& params) { params.dwFlags = kind; });
    }
    void Press(int key) { QTest::keyClick(&Line(), static_cast<Qt::Key>(key)); }
    // Presses a key that opens the dialog of a cue; works in it, and leaves it with its OK, if it may,
    // else with Escape.
    void PressAndWork(int key, const std::function<void(QDialog&)>& work) {
        bool worked = false;
        QTimer timer;
        timer.callOnTimeout([&] {
            auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!dialog || std::exchange(worked, true))
                return;
            work(*dialog);
            QTest::keyClick(dialog->findChild<QPlainTextEdit*>(), Qt::Key_Return,
                            Qt::ControlModifier);
            if (dialog->isVisible())
                QTest::keyClick(dialog, Qt::Key_Escape);
        });
        timer.start(0);
        Press(key);
        EXPECT_TRUE(worked);
        // As the window system does when a dialog ends.
        QApplication::setActiveWindow(&Window());
    }
    void PressAndType(int key, const char* words) {
        PressAndWork(key, [words](QDialog& dialog) {
            QTest::keyClicks(dialog.focusWidget(), QString::fromUtf8(words));
        });
    }
    // "1-3 Run!", of the selected track.
    std::vector<std::string> Cues() {
        std::vector<std::string> cues;
        for (const auto& cue : Project().Committed().Selected().cues)
            cues.push_back(std::to_string(cue.first) + "-" + std::to_string(cue.last) + " " +
                           cue.text);
        return cues;
    }
    std::string LastStep() { return Project().Undo().undoText().toStdString(); }
};

TEST_F(WindowCuesTest, AreMadeWordedSplitAndDeletedWithKeysAndDrawn) {
    const auto plain = Picture();
    Window().ShowFrame(2);
    PressAndType(Qt::Key_Insert, "Run!");
    EXPECT_THAT(Cues(), ElementsAre("3-9 Run!"));
    Window().ShowFrame(5);
    Press(Qt::Key_S);
    EXPECT_EQ(LastStep(), "Split Cue");
    PressAndType(Qt::Key_Return, "{frame}");
    EXPECT_THAT(Cues(), ElementsAre("3-5 Run!", "6-9 {frame}"));
    Press(Qt::Key_BracketRight);
    EXPECT_THAT(Cues(), ElementsAre("3-5 Run!", "6-6 {frame}"));
    const auto worded = Picture();
    QTest::mouseClick(Line().viewport(), Qt::LeftButton, {}, Line().BarPoint(5));
    Press(Qt::Key_Delete);
    EXPECT_NE(Picture(), worded);
    Press(Qt::Key_Home);
    EXPECT_EQ(Picture(), plain);
    EXPECT_EQ(Project().Undo().count(), 6); // with the kind of text
    for (int i = 0; i < 5; ++i)
        QTest::keySequence(&Window(), QKeySequence::Undo);
    EXPECT_THAT(Cues(), ElementsAre());
}

TEST_F(WindowCuesTest, WhatDoesNotFitIsSaidWhileOneTypesAndNotTaken) {
    PressAndType(Qt::Key_Insert, "Run!");
    struct Row {
        std::uint32_t kind;
        QString words;
        const char* note; // a part of it
    };
    for (const auto& row : {
             Row { TEXT_DIALOGUE, QString(255, 'x'), "" },
             Row { TEXT_DIALOGUE, QString(256, 'x'), "256 bytes, and 255 fit" },
             Row { TEXT_DIALOGUE, "a\nb", "" },
             Row { TEXT_DIALOGUE, "{fram}", "Unknown token" },
             Row { TEXT_INFO, QString(64, 'x'), "64 bytes, and 63 fit" },
             Row { TEXT_INFO, "a\nb", "one line" },
         }) {
        Kind(row.kind);
        const auto steps = Project().Undo().count();
        std::string note;
        PressAndWork(Qt::Key_Return, [&](QDialog& dialog) {
            auto* const field = dialog.findChild<QPlainTextEdit*>();
            field->setPlainText(row.words);
            note = field->accessibleDescription().toStdString();
        });
        EXPECT_THAT(note, testing::HasSubstr(row.note));
        EXPECT_EQ(note.empty(), *row.note == 0);
        EXPECT_EQ(Project().Undo().count(), steps + note.empty()) << row.note;
    }
    PressAndWork(Qt::Key_Return, [&](QDialog& dialog) {
        dialog.findChild<QLineEdit*>()->setText(QString(64, 'x'));
    });
    EXPECT_EQ(Project().Committed().Selected().cues[0].character, "");
}

TEST_F(WindowCuesTest, ComeFromTheTextAndGoBackIntoIt) {
    const std::string words = "Two\rlines";
    Edit([&](auto& params) { words.copy(params.szDialogue, words.size()); });
    Project().ChangeSpans({ { 0, 2 }, { 5, 8 } });
    const auto before = Project().Committed().tracks;
    Window().Action("cuesFromText")->trigger();
    EXPECT_THAT(Cues(), ElementsAre("1-3 Two\nlines", "6-9 Two\nlines"));
    Window().Action("textFromCues")->trigger();
    EXPECT_EQ(Project().Committed().tracks, before);
    Window().Action("cuesFromText")->trigger();
    PressAndType(Qt::Key_Return, "Other");
    Window().Action("textFromCues")->trigger();
    EXPECT_THAT(Message(), testing::HasSubstr("different words"));
    EXPECT_EQ(Cues().size(), 2U);
}

TEST_F(WindowCuesTest, AreWhatTheEffectsDialogsShowAndEdit) {
    const auto words = [&] { return std::string(Project().LiveParams().szDialogue); };
    const auto type = [&](const std::string& text) {
        Edit([&](auto& params) {
            std::fill(std::begin(params.szDialogue), std::end(params.szDialogue), '\0');
            text.copy(params.szDialogue, text.size());
        });
    };
    type("Own");
    auto tracks = Project().Committed().tracks;
    tracks[0].cues = { { 1, 3, "One", "" }, { 5, 9, "Two\nlines", "" } };
    Project().ChangeTracks("Cues", tracks, 0);
    EXPECT_EQ(words(), "One");
    Window().ShowFrame(5);
    EXPECT_EQ(words(), "Two\rlines");
    const auto before = Picture();
    type("Three\rlines");
    EXPECT_THAT(Cues(), ElementsAre("1-3 One", "5-9 Three\nlines"));
    EXPECT_EQ(LastStep(), "Change Text");
    EXPECT_NE(Picture(), before);
    Edit([](auto& params) { params.ptPos = { 3, 4 }; });
    EXPECT_EQ(LastStep(), "Move Text");
    EXPECT_STREQ(Project().Committed().Selected().settings.szDialogue, "Own");
    ASSERT_TRUE(Document().OpenFrames(WriteShot("other", 2)));
    EXPECT_EQ(words(), "One");
    Window().Action("undo")->trigger(); // at a frame that is not the changed one's
    EXPECT_EQ(words(), "One");
}

TEST_F(WindowCuesTest, ComeFromAFileAndGoIntoOneThatBringsThemBack) {
    // "夏", in CP932
    m_home.Write("lines.csv",
                 "start,end,character,text\n1,3,Hanako,\x89\xC4\n5,4,,Never\n6,8,,b\n");
    const auto import = [&](const std::string& file, int encoding) {
        QTimer::singleShot(0, [encoding] {
            QApplication::activeModalWidget()->findChildren<QComboBox*>()[1]->setCurrentIndex(
                encoding);
            QApplication::activeModalWidget()->findChild<QCheckBox*>()->click();
            Click(*QApplication::activeModalWidget(), "Import");
        });
        Window().CueFiles().Import(Path(file).string());
    };
    import("lines.csv", 2);
    EXPECT_THAT(Message(), testing::HasSubstr("2 cues were imported.\nLine 3: "));
    EXPECT_THAT(Cues(), ElementsAre("1-3 夏", "6-8 b"));
    ASSERT_EQ(Project().Committed().tracks.size(), 3U);
    EXPECT_THAT(Project().Committed().tracks[2].cues,
                ElementsAre(host::Cue { 1, 3, "", "Hanako" }));
    const auto cues = Project().Committed().Selected().cues;
    Window().CueFiles().Export(Path("again.csv").string());
    Window().CueFiles().Export(Path("again.srt").string());
    import("again.csv", 1);
    EXPECT_EQ(Project().Committed().Selected().cues, cues);
    import("again.srt", 0);
    EXPECT_THAT(Cues(), ElementsAre("1-3 夏", "6-8 b"));
    m_home.Write("beside.csv", "start,end,text\n4,9,a\n10,19,b\n");
    import("beside.csv", 0);
    EXPECT_THAT(Message(), testing::HasSubstr("\n1 of them are on none of the shot's frames"));
    EXPECT_EQ(LastStep(), "Import Cues");
}

TEST_F(WindowCuesTest, OfALockedTrackStayAndSayWhy) {
    auto tracks = Project().Committed().tracks;
    tracks[0].name = "Signs";
    tracks[0].isLocked = true;
    tracks[0].cues = { { 1, 4, "Shop", "" } };
    Project().ChangeTracks("Lock", tracks, 0);
    for (const int key : { Qt::Key_Insert, Qt::Key_Return, Qt::Key_S, Qt::Key_BracketRight }) {
        Window().Messages().Clear();
        Press(key);
        EXPECT_EQ(Project().Undo().count(), 2) << key;
    }
    EXPECT_FALSE(Window().Action("textOn")->isEnabled());
    Press(Qt::Key_S);
    EXPECT_THAT(Message(), testing::HasSubstr("“Signs” is locked"));
}

} // namespace
