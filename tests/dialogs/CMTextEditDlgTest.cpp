// SPDX-License-Identifier: BSD-3-Clause
// The text edit dialog: what it shows at first, and what each of its controls
// does.
#include <cstring>

#include <sys/mman.h>
#include <unistd.h>

#include <QColorDialog>
#include <QMessageBox>

#include "dialogs/DialogFixture.h"
#include "dialogs/PluginDialog.h"
#include "huxCommon/huxGUI/HuxCarbonEvent.h"

namespace {

using test::Drain;
using testing::StrEq;

constexpr std::uint32_t kAllModes = TEXT_SCORE | TEXT_INFO | TEXT_CHARACTER | TEXT_DIALOGUE;

class CMTextEditDlgTest : public test::DialogFixture {
protected:
    // A new dialog for a text of that kind.
    QWidget* Open(std::uint32_t mode) {
        Destroy();
        SetMode(mode);
        return DialogFixture::Open(kEdit);
    }
    // The last rows of a list's menu.
    enum Rows { kEditList = -1, kClearHistory = -3, kLock = -4 };
    bool IsLockMarked(int id) const {
        auto& popup = Get<QComboBox>(id);
        const QVariant mark =
            popup.model()->index(popup.count() + kLock, 0).data(Qt::CheckStateRole);
        return mark.isValid() && mark.toInt() == Qt::Checked;
    }
    // Presses the opacity's stepper, so far from its top or, below 0, from its bottom.
    void Step(int y) {
        auto& arrows = Get<QWidget>(108);
        QTest::mouseClick(&arrows, Qt::LeftButton, {},
                          { arrows.width() / 2, y < 0 ? arrows.height() + y : y });
    }
};

// Beginnings -------------------------------------------------------------------------------------

TEST_F(CMTextEditDlgTest, SelectsOneModeAndEnablesWhatBelongsToIt) {
    const int controls[] = { 205, 206, 207, 208, 209, 210, 211 };
    const struct {
        std::uint32_t flags;
        int infoPresent, radio;
        std::vector<int> enabled;
        std::uint32_t kept;
    } rows[] = {
        { TEXT_SCORE, 1, 201, { 205 }, TEXT_SCORE },
        { TEXT_INFO, 1, 202, { 206, 207 }, TEXT_INFO },
        { TEXT_CHARACTER, 1, 203, { 208, 209, 210 }, TEXT_CHARACTER },
        { TEXT_DIALOGUE, 0, 204, { 211 }, TEXT_DIALOGUE },
        { TEXT_SCORE, 0, 202, { 206, 207 }, TEXT_INFO }, // no score without the host's strings
        { TEXT_SCORE | TEXT_DIALOGUE, 1, 201, { 205, 211 }, TEXT_SCORE | TEXT_DIALOGUE },
        { 0, 1, 204, {}, 0 },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.flags);
        record.bInfoPresent = row.infoPresent;
        Open(row.flags);
        EXPECT_EQ(IsEnabled(201), row.infoPresent != 0);
        EXPECT_TRUE(Get<QAbstractButton>(row.radio).isChecked());
        EXPECT_EQ(Param().dwFlags, row.kept);
        for (const int control : controls)
            EXPECT_EQ(IsEnabled(control), testing::Matches(testing::Contains(control))(row.enabled))
                << control;
    }
}

TEST_F(CMTextEditDlgTest, ShowsTheParameters) {
    const auto text = [this](int id) { return Get<QLineEdit>(id).text().toStdString(); };
    {
        const auto param = effect->Params();
        param->nFontSize = 19;
        param->nOpacity = 70;
        param->nScoreFormat = 2;
        std::strcpy(param->szInfoText, "PAN");
        std::strcpy(param->szCharacter, "Rei");
        std::strcpy(param->szDialogue, "One\rTwo");
    }
    Settings().nViewState1 = 2;
    Settings().nViewState2 = 1;
    Open(TEXT_CHARACTER | TEXT_BOX | TEXT_MONOLOGUE);
    EXPECT_EQ(text(102) + " " + text(107) + " " + text(206) + " " + text(208), "19 70 PAN Rei");
    EXPECT_EQ(Get<QPlainTextEdit>(211).toPlainText(), "One\nTwo");
    EXPECT_EQ(Shown(103), "") << "a size that is not in the menu";
    EXPECT_EQ(Get<QComboBox>(103).count(), 25);
    EXPECT_EQ(Get<QComboBox>(205).currentIndex(), 2);
    EXPECT_EQ(Shown(207), "PAN");
    EXPECT_EQ(Get<QComboBox>(210).currentIndex(), 2);
    EXPECT_EQ(Get<QComboBox>(97).currentIndex(), 2);
    EXPECT_TRUE(Get<QAbstractButton>(98).isChecked() && IsEnabled(98) && IsEnabled(106));
    EXPECT_EQ(TakeHeard(), "call1 ");

    std::strcpy(effect->Params()->szFontName, "No Such Family");
    Settings().nViewState1 = 0;
    answer = 0;
    Open(TEXT_DIALOGUE | TEXT_OFFCHARACTER | TEXT_MONOLOGUE);
    EXPECT_EQ(Shown(101), "");
    EXPECT_EQ(Get<QComboBox>(210).currentIndex(), 1);
    EXPECT_FALSE(IsEnabled(98) || IsEnabled(106));
    EXPECT_EQ(TakeHeard(), "call1 call0 ") << "asked again after 0";
}

// Commands ---------------------------------------------------------------------------------------

TEST_F(CMTextEditDlgTest, StoresWhatIsPickedAndClicked) {
    record.bInfoPresent = 1;
    effect->Params()->nOpacity = 99;
    Open(TEXT_DIALOGUE);
    const std::uint32_t suffixes = TEXT_OFFCHARACTER | TEXT_MONOLOGUE;
    const auto flags = [this](std::uint32_t mask) { return Param().dwFlags & mask; };
    const auto focus = [this] { return root->focusWidget(); };
    const struct {
        const char* what;
        std::function<void()> act;
        std::function<bool()> isDone;
    } rows[] = {
        { "box on", [&] { Click(105); }, [&] { return flags(TEXT_BOX) && IsEnabled(106); } },
        { "box off", [&] { Click(105); }, [&] { return !flags(TEXT_BOX) && !IsEnabled(106); } },
        { "score", [&] { Click(201); }, [&] { return flags(kAllModes) == TEXT_SCORE; } },
        { "format", [&] { Pick(205, 3); }, [&] { return Param().nScoreFormat == 3; } },
        { "info", [&] { Click(202); },
          [&] { return flags(kAllModes) == TEXT_INFO && focus() == &Get<QWidget>(206); } },
        { "character", [&] { Click(203); },
          [&] { return flags(kAllModes) == TEXT_CHARACTER && focus() == &Get<QWidget>(208); } },
        { "off", [&] { Pick(210, 1); }, [&] { return flags(suffixes) == TEXT_OFFCHARACTER; } },
        { "monologue", [&] { Pick(210, 2); }, [&] { return flags(suffixes) == TEXT_MONOLOGUE; } },
        { "no suffix", [&] { Pick(210, 0); }, [&] { return flags(suffixes) == 0; } },
        { "dialogue", [&] { Click(204); },
          [&] { return flags(kAllModes) == TEXT_DIALOGUE && focus() == &Get<QWidget>(211); } },
        { "size", [&] { Pick(103, 23); },
          [&] { return Param().nFontSize == 64 && Get<QLineEdit>(102).text() == "64"; } },
        { "font", [&] { Pick(101, 0); },
          [&] { return Shown(101) == Param().szFontName && Param().szFontName[0] != '\0'; } },
        { "opacity up", [&] { Step(3); }, [&] { return Param().nOpacity == 100; } },
        { "no further", [&] { Step(3); }, [&] { return Param().nOpacity == 100; } },
        { "opacity down", [&] { Step(-4); },
          [&] { return Param().nOpacity == 99 && Get<QLineEdit>(107).text() == "99"; } },
        { "grid", [&] { Pick(97, 1); }, [&] { return IsEnabled(98); } },
        { "snap", [&] { Click(98); }, [&] { return Get<QAbstractButton>(98).isChecked(); } },
        { "no grid", [&] { Pick(97, 0); }, [&] { return !IsEnabled(98); } },
    };
    for (const auto& row : rows) {
        row.act();
        EXPECT_TRUE(row.isDone()) << row.what;
    }
}

TEST_F(CMTextEditDlgTest, TakesColorsThatArePicked) {
    effect->Params()->crText = effect->Params()->crBack = 0x332211;
    Open(TEXT_DIALOGUE | TEXT_BOX);
    const auto pick = [this](bool accepts) {
        WhenModal<QColorDialog>([=](QColorDialog& picker) {
            EXPECT_EQ(picker.currentColor().rgb(), qRgb(0x11, 0x22, 0x33));
            picker.setCurrentColor(QColor(0xA1, 0xB2, 0xC3));
            accepts ? picker.accept() : picker.reject();
        });
    };
    for (const bool accepts : { false, true }) {
        const std::uint32_t kept = accepts ? 0xC3B2A1U : 0x332211U;
        pick(accepts);
        Click(104);
        EXPECT_EQ(Param().crText & 0xFFFFFF, kept);
        pick(accepts);
        Click(106);
        EXPECT_EQ(Param().crBack & 0xFFFFFF, kept);
    }
    unsigned long color = 0x12332211;
    pick(true);
    EXPECT_TRUE(ColorDialog(color));
    EXPECT_EQ(color, 0xFFC3B2A1UL) << "a picked one is marked in its top byte";
}

TEST_F(CMTextEditDlgTest, ShowsTheWholeFrameUntilTheUserZooms) {
    Open(TEXT_DIALOGUE);
    const int first = Scale();
    const auto grow = [this](int by) {
        root->resize(root->width(), root->height() + by);
        Drain();
        return Scale();
    };
    const int larger = grow(200);
    EXPECT_GT(larger, first);
    Click(95);
    EXPECT_EQ(Scale(), std::min(larger, 210) - 10);
    Click(94);
    EXPECT_EQ(Scale(), std::min(larger, 200));
    EXPECT_EQ(grow(100), std::min(larger, 200));
}

// Fields -----------------------------------------------------------------------------------------

TEST_F(CMTextEditDlgTest, StoresWhatIsTypedAtOnce) {
    const auto stored = [this](int field) -> std::string {
        const _TEXTPARAM param = Param();
        switch (field) {
        case 102:
            return std::to_string(param.nFontSize);
        case 107:
            return std::to_string(param.nOpacity);
        case 206:
            return param.szInfoText;
        case 208:
            return param.szCharacter;
        default:
            return param.szDialogue;
        }
    };
    const std::string most(63, 'x');
    const struct {
        std::uint32_t mode;
        int field;
        std::string typed, result;
        const char* menu; // beside the field
    } rows[] = {
        { TEXT_INFO, 102, "48", "48", "48" },
        // On the way to 2 digits, 4 is a size; what cannot be one is not stored.
        // A size that the menu lacks leaves it at the one before.
        { TEXT_INFO, 102, "49", "49", "4" },
        { TEXT_INFO, 102, "2", "49", "4" },
        { TEXT_INFO, 107, "7x5", "75", "" },
        { TEXT_INFO, 107, "101", "10", "" },
        { TEXT_INFO, 206, "PAN", "PAN", "PAN" },
        { TEXT_INFO, 206, "PAN X", "PAN X", "" },
        { TEXT_CHARACTER, 208, "Rei", "Rei", "" },
        { TEXT_DIALOGUE, 211, most + "1234", most, "" },
    };
    for (const auto& row : rows) {
        if (!root || (Param().dwFlags & row.mode) == 0)
            Open(row.mode);
        Type(row.field, row.typed.c_str());
        EXPECT_EQ(stored(row.field), row.result) << row.field << ' ' << row.typed;
        if (dynamic_cast<QComboBox*>(Find(*root, row.field + 1)))
            EXPECT_EQ(Shown(row.field + 1), row.menu) << row.typed;
    }
    Open(TEXT_CHARACTER);
    Get<QLineEdit>(208).clear();
    Get<QLineEdit>(208).insert(QString(63, QChar(0x30A2))); // three bytes each
    Drain();
    EXPECT_EQ(stored(208), QString(21, QChar(0x30A2)).toStdString()) << "cut at a whole one";
}

// Lists ------------------------------------------------------------------------------------------

TEST_F(CMTextEditDlgTest, OffersTheTextsOfItsList) {
    std::strcpy(Settings().infoPopup.szHistory[0], "A-1 & (B");
    Open(TEXT_INFO);
    EXPECT_EQ(Get<QComboBox>(207).count(), 7 + 1 + 1 + 1 + 4);
    Pick(207, 8);
    EXPECT_THAT(Param().szInfoText, StrEq("A-1 & (B")) << "nothing in it means anything to a menu";
    EXPECT_EQ(Get<QLineEdit>(206).text(), "A-1 & (B");
    Pick(207, 0);
    EXPECT_THAT(Param().szInfoText, StrEq(Settings().infoPopup.szPreset[0]));

    auto& list = Settings().characterPopup;
    std::memset(&list, 0, sizeof list);
    std::strcpy(list.szHistory[0], "Rei");
    std::strcpy(list.szHistory[1], "Ken");
    std::strcpy(effect->Params()->szCharacter, "Rei");
    Open(TEXT_CHARACTER);
    EXPECT_EQ(Get<QComboBox>(209).currentIndex(), 1) << "after the separator of an empty half";
}

TEST_F(CMTextEditDlgTest, MarksTheLockOnlyForATextOfNoList) {
    std::strcpy(effect->Params()->szInfoText, "PAN");
    Open(TEXT_INFO);
    Pick(207, kLock);
    EXPECT_EQ(Settings().infoPopup.bLock, 1);
    EXPECT_EQ(Shown(207), "PAN");
    EXPECT_FALSE(IsLockMarked(207));
    Type(206, "none of them");
    EXPECT_TRUE(IsLockMarked(207));
    Pick(207, kLock);
    EXPECT_EQ(Settings().infoPopup.bLock, 0);
    EXPECT_FALSE(IsLockMarked(207));
}

TEST_F(CMTextEditDlgTest, ClearsAHistoryWhenTheUserAgrees) {
    for (auto& text : Settings().infoPopup.szHistory)
        std::strcpy(text, "old");
    Open(TEXT_INFO);
    for (const int answer : { Qt::Key_Escape, Qt::Key_Return }) {
        EXPECT_THAT(Settings().infoPopup.szHistory[0], StrEq("old"));
        WhenModal<QMessageBox>([answer](QMessageBox& box) {
            EXPECT_NE(box.text(), "");
            QTest::keyClick(&box, static_cast<Qt::Key>(answer));
        });
        Pick(207, kClearHistory);
    }
    for (const auto& text : Settings().infoPopup.szHistory)
        EXPECT_THAT(text, StrEq(""));
    EXPECT_EQ(Get<QComboBox>(207).count(), 7 + 1 + 4);
}

// OK ---------------------------------------------------------------------------------------------

TEST_F(CMTextEditDlgTest, StoresOnOKAndTellsTheHost) {
    Open(TEXT_INFO);
    Pick(97, 2);
    Click(98);
    Type(206, "new one");
    TakeHeard();
    Type(107, "101");
    EXPECT_EQ(Notify(epiNotifyOK), 0);
    EXPECT_EQ(TakeHeard(), "");
    EXPECT_EQ(Param().nOpacity, 10) << "what was typed last that could be";
    EXPECT_THAT(Settings().infoPopup.szHistory[0], StrEq(""));
    EXPECT_EQ(Notify(epiNotifyOK), 1);
    EXPECT_EQ(Param().nOpacity, 100) << "what the field was corrected to";
    EXPECT_EQ(TakeHeard(), "changed option1 ");
    EXPECT_THAT(Settings().infoPopup.szHistory[0], StrEq("new one"));
    EXPECT_EQ(Settings().nViewState1, 2);
    EXPECT_EQ(Settings().nViewState2, 1);
    Type(206, "another");
    Settings().infoPopup.bLock = 1;
    EXPECT_EQ(Notify(epiNotifyOK), 1);
    EXPECT_THAT(Settings().infoPopup.szHistory[1], StrEq("")) << "locked";
    record.dwDialogFlags = EPI_DIALOG_TEXT_EDIT | EPI_DIALOG_NO_OPTION;
    Notify(epiNotifyCompositeImage);
    TakeHeard();
    Notify(epiNotifyOK);
    EXPECT_EQ(TakeHeard(), "changed ");
    EXPECT_EQ(Notify(epiNotifyUpdate), 77) << "it edits the parameters themselves";
    onHeard = [](const std::string&) { throw test::HostThrows(); };
    EXPECT_THROW(Notify(epiNotifyOK), test::HostThrows);
    onHeard = nullptr;
    EXPECT_EQ(Notify(epiNotifyOK), 1);
}

TEST_F(CMTextEditDlgTest, EndsStringsThatFillTheirFields) {
    // A block of parameters at the end of the memory that there is, with nothing
    // in it that ends.
    static _TEXTPARAM* block;
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    auto* const memory = static_cast<char*>(
        mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    ASSERT_EQ(mprotect(memory + page, page, PROT_NONE), 0);
    block = reinterpret_cast<_TEXTPARAM*>(memory + page) - 1;
    *block = Param();
    std::memset(block->szInfoText, 'i', sizeof block->szInfoText);
    std::memset(block->szCharacter, 'c', sizeof block->szCharacter);
    std::memset(block->szDialogue, 'd', sizeof block->szDialogue);
    block->dwFlags = 0x77777700 | TEXT_DIALOGUE;
    EPIHandleProcs procs = *record.pHandleProcs;
    procs.Lock = [](EPIHandleRef) -> void* { return block; };
    procs.Unlock = [](EPIHandleRef) {};
    record.pHandleProcs = &procs;
    DialogFixture::Open(kEdit);
    EXPECT_EQ(Notify(epiNotifyOK), 1);
    EXPECT_EQ(Settings().infoPopup.szHistory[0], std::string(63, 'i'));
    EXPECT_EQ(Settings().characterPopup.szHistory[0], std::string(63, 'c'));
    Destroy();
    munmap(memory, 2 * page);
}

TEST_F(CMTextEditDlgTest, LeavesCommandsThatItDoesNotKnow) {
    Open(TEXT_DIALOGUE);
    const auto send = [this](std::uint32_t id, bool byControl = true) {
        HuxCarbonEvent event(platform::kEventClassCommand, platform::kEventCommandProcess);
        const auto* const control =
            platform::Control::FindByID(record.hDialogWindow, { kHuxPropertyCreator, 105 });
        if (byControl)
            event.SetCommandParameter(control->Ref(), id, 0, nullptr);
        else
            event.SetCommandParameter(id, 0, nullptr);
        return platform::SendEventToEventTarget(event.GetEventRef(),
                                                platform::UIObject::TargetOf(record.hDialogWindow));
    };
    for (const std::uint32_t id : { 108U, 96U, 91U, 201U, 302U, platform::kHICommandCopy })
        EXPECT_EQ(send(id), platform::kEventNotHandledErr) << id;
    EXPECT_EQ(send(98), platform::kNoErr);
    EXPECT_EQ(send(98, false), platform::kEventNotHandledErr) << "no control sent it";
    TakeHeard();
    EXPECT_EQ(send(platform::kHICommandOK), platform::kNoErr);
    EXPECT_EQ(TakeHeard(), "changed option1 ") << "OK is the dialog's";
}

// Hosts that are difficult -----------------------------------------------------------------------

TEST_F(CMTextEditDlgTest, LetsTheHostDestroyItWhileItTellsOrAsks) {
    for (const char* moment : { "changed", "option1", "call1" }) {
        onHeard = [&](const std::string& what) {
            if (what == moment)
                Destroy();
        };
        if (Open(TEXT_DIALOGUE))
            Notify(epiNotifyOK);
        EXPECT_EQ(record.pDialogHolder, nullptr) << moment;
        onHeard = nullptr;
    }
    Open(TEXT_INFO);
    WhenModal<QMessageBox>([this](QMessageBox& box) {
        Destroy();
        box.button(QMessageBox::Ok)->click();
    });
    Pick(207, kClearHistory);
    EXPECT_EQ(root, nullptr);
    Open(TEXT_INFO);
    When([] { return WindowWith(108, 91) != nullptr; }, [this] { Destroy(); });
    Pick(207, kEditList);
    EXPECT_EQ(root, nullptr);
    EXPECT_EQ(WindowWith(108, 91), nullptr) << "the list's editor ends with it";
}

} // namespace
