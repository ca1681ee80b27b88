// SPDX-License-Identifier: BSD-3-Clause
// The settings panel and the editor that its button runs.
#include <cstring>

#include "dialogs/DialogFixture.h"

namespace {

using test::Drain;

class CMTextSettingsTest : public test::DialogFixture {
protected:
    QWidget* OpenPanel(std::uint32_t flags = kPanel) {
        Destroy();
        panel = Open(flags);
        return panel;
    }
    std::string Summary() {
        return dynamic_cast<QPlainTextEdit&>(*Find(*panel, 201)).toPlainText().toStdString();
    }
    // The editor lies in its frame, as far as widgets go.
    static QWidget* Frame() { return WindowWith(91, -1); }
    // Presses the panel's button. The user acts in the editor, which is the root
    // then, and the frame.
    void Edit(const std::function<void(QWidget& frame)>& act) {
        When([] { return Frame() != nullptr; },
             [this, act] {
                 root = Frame()->findChild<QWidget*>("Edit");
                 act(*Frame());
             });
        Press(*Find(*panel, 101));
        root = panel;
        Drain();
    }
    // A button of the frame's own.
    static void Press(const QWidget& frame, int id) {
        const auto* editor = frame.findChild<QWidget*>("Edit");
        for (auto* const button : frame.findChildren<QAbstractButton*>())
            if (button->property("controlID").toInt() == id && !editor->isAncestorOf(button))
                return DialogFixture::Press(*button);
    }
    using DialogFixture::Press;
    void KeyIn(int id, Qt::Key key) {
        Click(id);
        Key(key);
    }

    QWidget* panel = nullptr;
};

TEST_F(CMTextSettingsTest, SumsUpTheTextAsFramesGetIt) {
    const struct {
        std::uint32_t flags;
        int infoPresent;
        const char* summary;
    } rows[] = {
        { TEXT_DIALOGUE, 1, "One\nTwo" },
        { TEXT_CHARACTER, 1, "Rei" },
        { TEXT_SCORE, 1, "C-005-0012" },
        { TEXT_SCORE, 0, "C-000-0000" },
    };
    std::strcpy(effect->Params()->szDialogue, "One\rTwo");
    std::strcpy(effect->Params()->szCharacter, "Rei");
    std::strcpy(record.szInfo3, "5");
    std::strcpy(record.szInfo4, "12");
    OpenPanel();
    EXPECT_TRUE(Get<QPlainTextEdit>(201).isReadOnly());
    EXPECT_EQ(Notify(epiNotifyOK), 77) << "it has no OK";
    for (const auto& row : rows) {
        SetMode(row.flags);
        record.bInfoPresent = row.infoPresent;
        Notify(epiNotifyUpdate);
        EXPECT_EQ(Summary(), row.summary) << row.flags << ' ' << row.infoPresent;
    }
}

TEST_F(CMTextSettingsTest, RunsTheEditorUntilItIsEnded) {
    std::strcpy(effect->Params()->szDialogue, "Before");
    OpenPanel();
    const char* const cancelled = "opens call1 ends ";
    const char* const accepted = "opens call1 changed ends ";
    const struct {
        const char* what;
        std::function<void(QWidget& frame)> end;
        const char* heard;
        const char* summary;
    } rows[] = {
        { "Cancel", [](auto& frame) { Press(frame, 2); }, cancelled, "Before" },
        { "OK", [](auto& frame) { Press(frame, 1); }, accepted, "1" },
        { "Escape", [&](auto&) { KeyIn(102, Qt::Key_Escape); }, cancelled, "1" },
        { "closed", [](auto& frame) { frame.close(); }, cancelled, "1" },
        { "Return", [&](auto&) { KeyIn(102, Qt::Key_Return); }, accepted, "4" },
        { "Enter", [&](auto&) { KeyIn(211, Qt::Key_Enter); }, accepted, "5" },
        { "OK with the option",
          [&](auto& frame) {
              Click(301);
              Press(frame, 1);
          },
          "opens call1 changed option1 ends ", "6" },
    };
    int run = 0;
    for (const auto& row : rows) {
        TakeHeard();
        Edit([&](QWidget& frame) {
            EXPECT_EQ(TakeHeard(), "opens call1 ");
            EXPECT_EQ(root->mapToGlobal(QPoint()), frame.mapToGlobal(QPoint()));
            Type(211, std::to_string(run).c_str());
            heard = "opens call1 ";
            row.end(frame);
        });
        EXPECT_EQ(TakeHeard(), row.heard) << row.what;
        EXPECT_EQ(Summary(), row.summary) << row.what;
        EXPECT_EQ(Param().szDialogue, std::to_string(run)) << "edited in place, whatever the end";
        EXPECT_EQ(Frame(), nullptr) << row.what;
        ++run;
    }
    EXPECT_EQ(Settings().bDialogOption, 1);
    OpenPanel(EPI_DIALOG_NO_OPTION);
    TakeHeard();
    Edit([&](QWidget& frame) {
        EXPECT_FALSE(IsEnabled(301));
        Press(frame, 1);
    });
    EXPECT_EQ(TakeHeard(), "opens call1 changed ends ");
}

TEST_F(CMTextSettingsTest, NeitherTakesNorKeepsANumberThatCannotBe) {
    const struct {
        int field;
        const char* typed;
        const char* corrected;
        bool byKey;
    } rows[] = { { 102, "1", "3", false },
                 { 102, "", "36", false },
                 { 102, "1", "3", true },
                 { 107, "", "50", false } };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.field << ' ' << row.typed << row.byKey);
        for (const bool pressesOK : { true, false }) {
            effect->Params()->nFontSize = 48;
            effect->Params()->nOpacity = 70;
            OpenPanel();
            TakeHeard();
            Edit([&](QWidget& frame) {
                Type(row.field, row.typed);
                if (pressesOK) {
                    if (row.byKey)
                        Key(Qt::Key_Return);
                    else
                        Press(frame, 1);
                    Drain();
                    ASSERT_TRUE(frame.isVisible() && root->isVisible());
                    EXPECT_EQ(Get<QLineEdit>(row.field).text(), row.corrected)
                        << "the user is told";
                }
                if (row.byKey)
                    Key(Qt::Key_Escape);
                else
                    Press(frame, 2);
            });
            EXPECT_EQ(Param().nFontSize, 48);
            EXPECT_EQ(Param().nOpacity, 70);
            EXPECT_EQ(TakeHeard(), "opens call1 ends ");
        }
    }
}

TEST_F(CMTextSettingsTest, FollowsItsFrameTheFocusAndTheHostsFrames) {
    OpenPanel();
    EXPECT_EQ(Notify(epiNotifyCompositeImage), 77);
    Edit([&](QWidget& frame) {
        Type(211, "a");
        Key(Qt::Key_Return); // begins a line here
        Key(Qt::Key_B);
        EXPECT_STREQ(Param().szDialogue, "a\rb");

        Click(102);
        QWidget* const first = QApplication::focusWidget();
        int count = 0;
        do {
            const QWidget* const focus = QApplication::focusWidget();
            const QRect seen = frame.rect();
            EXPECT_TRUE(seen.intersects({ focus->mapTo(&frame, QPoint()), focus->size() }))
                << focus->metaObject()->className() << focus->property("controlID").toInt();
            Key(Qt::Key_Tab);
        } while (QApplication::focusWidget() != first && ++count < 100);
        EXPECT_GT(count, 10);
        EXPECT_LT(count, 100);

        SetFrame(640, 360);
        const int before = Scale();
        Notify(epiNotifyCompositeImage);
        EXPECT_LT(Scale(), before);
        record.hComposite = nullptr; // it keeps the frame's size
        Notify(epiNotifyCompositeImage);

        frame.move(frame.pos() + QPoint(31, 17));
        Drain();
        EXPECT_EQ(root->mapToGlobal(QPoint()), frame.mapToGlobal(QPoint()));
        const int height = root->height();
        frame.resize(frame.width() + 60, frame.height() + 40);
        Drain();
        EXPECT_EQ(root->height(), height + 40);
        EXPECT_EQ(root->width(), frame.width());
        Press(frame, 2);
    });
}

// What it throws is reported, and the next time it is as if nothing had been.
TEST_F(CMTextSettingsTest, LetsTheHostDestroyItOrThrowWhateverItIsTold) {
    for (const bool throws : { false, true }) {
        for (const std::string moment : { "opens", "call1", "changed", "ends" }) {
            SCOPED_TRACE(moment + (throws ? " throws" : ""));
            OpenPanel();
            TakeHeard();
            bool isDone = false;
            onHeard = [&](const std::string& what) {
                if (what != moment || std::exchange(isDone, true))
                    return;
                if (throws)
                    throw test::HostThrows();
                Destroy();
            };
            When([] { return Frame() != nullptr; },
                 [] {
                     Press(*Frame(), 1);
                     Drain();
                     // It is still there when the throw came before its end.
                     if (QWidget* const left = Frame())
                         Press(*left, 2);
                 });
            Press(*Find(*panel, 101));
            Drain();
            StopWaiting(); // for a frame that did not come
            onHeard = nullptr;
            EXPECT_TRUE(isDone);
            EXPECT_EQ(Frame(), nullptr);
            const std::string told = TakeHeard();
            EXPECT_EQ(told.find("ends "), told.size() - 5) << "once, and last";
            EXPECT_EQ(record.pDialogHolder != nullptr, throws);
            EXPECT_EQ(errors.TakeAll().size(), throws ? 1U : 0U);
            if (throws) {
                Edit([](QWidget& frame) { Press(frame, 2); });
                EXPECT_EQ(TakeHeard(), "opens call1 ends ");
            }
        }
    }
}

// A host sees the editor's window before the plug-in has finished with it.
TEST_F(CMTextSettingsTest, LetsTheHostDestroyItWhileTheEditorComesUpAndRuns) {
    struct Watch : QObject {
        bool eventFilter(QObject* receiver, QEvent* event) override {
            if (receiver->objectName() == QLatin1String("Edit") && event->type() == awaited)
                act();
            return false;
        }
        QEvent::Type awaited = QEvent::None;
        std::function<void()> act;
    };
    for (const QEvent::Type seen :
         { QEvent::Resize, QEvent::ParentChange, QEvent::Show, QEvent::None }) {
        OpenPanel();
        Watch watch;
        watch.awaited = seen;
        watch.act = [this] {
            if (record.pDialogHolder)
                Destroy();
        };
        qApp->installEventFilter(&watch);
        When([] { return Frame() != nullptr; }, watch.act); // none of these came
        Press(*Find(*panel, 101));
        Drain();
        StopWaiting();
        EXPECT_EQ(record.pDialogHolder, nullptr) << seen;
        EXPECT_EQ(Frame(), nullptr) << seen;
        const std::string told = TakeHeard();
        EXPECT_EQ(told.find("ends "), told.size() - 5) << seen;
    }
}

} // namespace
