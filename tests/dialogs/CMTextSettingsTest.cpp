// SPDX-License-Identifier: BSD-3-Clause
// The settings panel and the editor that its button runs.
#include <cstring>

#include "dialogs/DialogFixture.h"
#include "huxCommon/huxGUI/HuxCarbonEvent.h"

namespace {

using test::Drain;

class CMTextSettingsTest : public test::DialogFixture {
protected:
    QWidget* OpenPanel(std::uint32_t flags = kPanel) {
        panel = Open(flags);
        return panel;
    }
    std::string Summary() {
        return dynamic_cast<QPlainTextEdit&>(*Find(*panel, 201)).toPlainText().toStdString();
    }
    // The editor lies in its frame, as far as widgets go.
    static QWidget* Frame() { return WindowWith(91, -1); }
    // Presses the panel's button. The user acts in the editor, which is the root then, and the frame.
    void Edit(const std::function<void(QWidget& frame)>& act) {
        When([] { return Frame() != nullptr; },
             [this, act] {
                 root = Frame()->findChild<QWidget*>("Edit");
                 act(*Frame());
             });
        dynamic_cast<QAbstractButton&>(*Find(*panel, 101)).click();
        root = panel;
        Drain();
    }
    // A button of the frame's own.
    static void Press(const QWidget& frame, int id) {
        const auto* editor = frame.findChild<QWidget*>("Edit");
        for (auto* const button : frame.findChildren<QAbstractButton*>()) {
            if (button->property("controlID").toInt() == id && !editor->isAncestorOf(button))
                return button->click();
        }
    }
    void Key(int id, Qt::Key key) {
        auto& field = Get<QWidget>(id);
        field.activateWindow();
        field.setFocus();
        QTest::keyClick(&field, key);
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
        { "Escape", [&](auto&) { Key(102, Qt::Key_Escape); }, cancelled, "1" },
        { "closed", [](auto& frame) { frame.close(); }, cancelled, "1" },
        { "Return", [&](auto&) { Key(102, Qt::Key_Return); }, accepted, "4" },
        { "Enter", [&](auto&) { Key(211, Qt::Key_Enter); }, accepted, "5" },
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
}

TEST_F(CMTextSettingsTest, StartsALineInTheDialogueWithReturn) {
    OpenPanel();
    Edit([&](QWidget& frame) {
        Type(211, "a");
        QTest::keyClick(&Get<QWidget>(211), Qt::Key_Return);
        QTest::keyClicks(&Get<QWidget>(211), "b");
        Drain();
        EXPECT_STREQ(Param().szDialogue, "a\rb");
        Press(frame, 2);
    });
}

TEST_F(CMTextSettingsTest, StaysOpenOverANumberThatCannotBe) {
    OpenPanel();
    Edit([&](QWidget& frame) {
        Type(102, "1");
        Press(frame, 1);
        Drain();
        EXPECT_TRUE(frame.isVisible() && root->isVisible());
        EXPECT_EQ(heard.find("changed"), std::string::npos);
        Press(frame, 2);
    });
}

TEST_F(CMTextSettingsTest, KeepsTheEditorOverItsFrame) {
    OpenPanel();
    Edit([&](QWidget& frame) {
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

TEST_F(CMTextSettingsTest, ConfirmsTheOptionWhereTheHostHasOne) {
    const struct {
        std::uint32_t flags;
        bool isEnabled, check;
        const char* heard;
    } rows[] = {
        { kPanel, true, false, "opens call1 changed ends " },
        { kPanel, true, true, "opens call1 changed option1 ends " },
        { EPI_DIALOG_NO_OPTION, false, false, "opens call1 changed ends " },
    };
    for (const auto& row : rows) {
        Destroy();
        Settings().bDialogOption = 0;
        OpenPanel(row.flags);
        TakeHeard();
        Edit([&](QWidget& frame) {
            EXPECT_EQ(IsEnabled(301), row.isEnabled);
            if (row.check)
                Click(301);
            EXPECT_EQ(Settings().bDialogOption, row.check ? 1 : 0);
            Press(frame, 1);
        });
        EXPECT_EQ(TakeHeard(), row.heard);
    }
}

TEST_F(CMTextSettingsTest, ShowsFramesThatArriveMeanwhile) {
    OpenPanel();
    EXPECT_EQ(Notify(epiNotifyCompositeImage), 77);
    Edit([&](QWidget& frame) {
        auto larger = host::Image::Make(640, 360, host::kArgb32);
        record.hComposite = larger->Ref();
        record.nFrameWidth = 640;
        record.nFrameHeight = 360;
        const int before = Get<QWidget>(96).property("text").toInt();
        Notify(epiNotifyCompositeImage);
        EXPECT_LT(Get<QWidget>(96).property("text").toInt(), before);
        record.hComposite = nullptr;
        Notify(epiNotifyCompositeImage);
        Press(frame, 2);
    });
}

TEST_F(CMTextSettingsTest, LeavesCommandsThatNoControlSent) {
    OpenPanel();
    HuxCarbonEvent event(platform::kEventClassCommand, platform::kEventCommandProcess);
    event.SetCommandParameter(101, 0, nullptr);
    EXPECT_EQ(platform::SendEventToEventTarget(
                  event.GetEventRef(), platform::GetWindowEventTarget(record.hDialogWindow)),
              platform::kEventNotHandledErr);
    EXPECT_EQ(heard, "");
}

// Hosts that are difficult ---------------------------------------------------------------------------

TEST_F(CMTextSettingsTest, LetsTheHostDestroyItWhileTheEditorRuns) {
    for (const char* moment : { "opens", "call1", "changed", "ends", "" }) {
        OpenPanel();
        TakeHeard();
        onHeard = [&](const std::string& what) {
            if (what == moment)
                Destroy();
        };
        When([] { return Frame() != nullptr; },
             [&] {
                 if (*moment == '\0')
                     Destroy();
                 else
                     Press(*Frame(), 1);
             });
        dynamic_cast<QAbstractButton&>(*Find(*panel, 101)).click();
        Drain();
        onHeard = nullptr;
        EXPECT_EQ(record.pDialogHolder, nullptr) << moment;
        EXPECT_EQ(Frame(), nullptr) << moment;
        EXPECT_NE(heard.find("ends "), std::string::npos) << moment;
        EXPECT_EQ(heard.find("ends "), heard.rfind("ends ")) << moment;
    }
}

TEST_F(CMTextSettingsTest, ReportsWhatTheHostThrowsAndGoesOn) {
    for (const char* moment : { "opens", "call1", "changed", "ends" }) {
        Destroy();
        OpenPanel();
        bool isThrown = false;
        onHeard = [&](const std::string& what) {
            if (what != moment || std::exchange(isThrown, true))
                return;
            throw test::HostThrows();
        };
        const bool opens = std::strcmp(moment, "opens") != 0 && std::strcmp(moment, "call1") != 0;
        if (opens) {
            Edit([&](QWidget& frame) {
                Press(frame, 1);
                Drain();
                // The frame is still there when the throw came before its end.
                if (QWidget* const left = Frame())
                    Press(*left, 2);
            });
        } else {
            dynamic_cast<QAbstractButton&>(*Find(*panel, 101)).click();
        }
        onHeard = nullptr;
        EXPECT_TRUE(isThrown);
        EXPECT_EQ(errors.TakeAll().size(), 1U) << moment;
        EXPECT_EQ(Frame(), nullptr) << moment;
        TakeHeard();
        Edit([](QWidget& frame) { Press(frame, 2); });
        EXPECT_EQ(TakeHeard(), "opens call1 ends ") << "as if nothing had been, after " << moment;
    }
}

} // namespace
