// SPDX-License-Identifier: BSD-3-Clause
// The editor of a list of texts, opened from the list's menu.
#include <cstring>
#include <fstream>

#include <QFileDialog>
#include <QMessageBox>

#include "dialogs/DialogFixture.h"

namespace {

using testing::ElementsAre;

class CMEditPopupDlgTest : public test::DialogFixture {
protected:
    void SetUp() override {
        DialogFixture::SetUp();
        std::memset(&Settings().infoPopup, 0, sizeof(_POPUPSTRING));
        SetTexts({ "one", "two", "three" });
        SetMode(TEXT_INFO);
    }
    void SetTexts(const std::vector<const char*>& texts) {
        std::memset(Settings().infoPopup.szPreset, 0, sizeof Settings().infoPopup.szPreset);
        for (std::size_t i = 0; i < texts.size(); ++i)
            std::strcpy(Settings().infoPopup.szPreset[i], texts[i]);
    }
    std::vector<std::string> Texts() {
        std::vector<std::string> texts;
        for (const auto& text : Settings().infoPopup.szPreset)
            if (text[0] != '\0')
                texts.emplace_back(text);
        return texts;
    }
    // Opens the editor; the user acts in it and ends it with button end.
    void Edit(int end, const std::function<void()>& act, int list = 207) {
        if (!record.pDialogHolder)
            Open(kEdit);
        QWidget* const editor = root;
        When([] { return WindowWith(108, 91) != nullptr; },
             [&] {
                 root = WindowWith(108, 91);
                 act();
                 Click(end);
             });
        Pick(list, -1);
        root = editor;
    }
    QAbstractItemView& View() { return Get<QAbstractItemView>(201); }
    void Select(int row) { View().setCurrentIndex(View().model()->index(row, 0)); }
    int Selected() { return View().currentIndex().row(); }
    static void TypeName(const char* name) {
        Type(name);
        Key(Qt::Key_Return);
    }
    // Answers the next file dialog with the file, or cancels it.
    void WithFile(int button, const std::string& file) {
        WhenModal<QFileDialog>([file](QDialog& dialog) {
            dialog.findChild<QLineEdit*>()->setText(QString::fromStdString(file));
            file.empty() ? dialog.reject() : dialog.accept();
        });
        Click(button);
    }
    void Answer(QMessageBox::StandardButton button) {
        WhenModal<QMessageBox>([=](QMessageBox& box) { box.button(button)->click(); });
    }
    enum : int { kOK = 1, kCancel, kAdd = 101, kDelete, kUp, kDown, kRename, kReset, kLoad, kSave };
};

TEST_F(CMEditPopupDlgTest, ChangesTheOrderAndKeepsANameThatIsBeingTyped) {
    const auto press = [this](int button) { return [=, this] { Click(button); }; };
    const auto shortcut = [this](Qt::Key key, int selected) {
        return [=, this] {
            Key(key, Qt::AltModifier);
            // The button is seen to go down before it acts.
            EXPECT_TRUE(QTest::qWaitFor([&] { return Selected() == selected; }));
        };
    };
    const auto clickOnTheFirst = [this] {
        const QRect row = View().visualRect(View().model()->index(0, 0));
        QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, row.center());
    };
    const std::vector<std::string> unchanged { "one", "two", "three" };
    const struct {
        const char* what;
        int row;
        bool types; // an x as its name, at first
        std::function<void()> act;
        std::vector<std::string> texts;
        int selected;
    } rows[] = {
        { "OK", 1, true, [] {}, { "one", "x", "three" }, 1 },
        { "Up", 1, true, press(kUp), { "x", "one", "three" }, 0 },
        { "Down", 1, true, press(kDown), { "one", "three", "x" }, 2 },
        { "Alt+U", 1, true, shortcut(Qt::Key_U, 0), { "x", "one", "three" }, 0 },
        { "Alt+O", 1, true, shortcut(Qt::Key_O, 2), { "one", "three", "x" }, 2 },
        { "Delete", 1, true, press(kDelete), { "one", "three" }, 1 },
        { "Add", 1, true, press(kAdd), { "one", "x", "three", "New Text" }, 3 },
        { "another row", 1, true, clickOnTheFirst, { "one", "x", "three" }, 0 },
        { "Tab", 1, true, [] { Key(Qt::Key_Tab); }, { "one", "x", "three" }, 2 },
        { "Up from the first", 0, false, press(kUp), unchanged, 0 },
        { "Down from the last", 2, false, press(kDown), unchanged, 2 },
        { "Delete the last", 2, false, press(kDelete), { "one", "two" }, 1 },
        { "nothing up", -1, false, press(kUp), unchanged, -1 },
        { "nothing down", -1, false, press(kDown), unchanged, -1 },
        { "delete nothing", -1, false, press(kDelete), unchanged, -1 },
        { "rename nothing", -1, false, press(kRename), unchanged, -1 },
    };
    for (const auto& row : rows) {
        SetTexts({ "one", "two", "three" });
        Edit(kOK, [&] {
            Select(row.row);
            if (row.types) {
                Click(kRename);
                QTest::keyClicks(QApplication::focusWidget(), "x");
            }
            row.act();
            EXPECT_EQ(Selected(), row.selected) << row.what;
        });
        EXPECT_EQ(Texts(), row.texts) << row.what;
        EXPECT_EQ(static_cast<std::size_t>(Get<QComboBox>(207).count()), row.texts.size() + 1 + 4)
            << "the menu shows what is left";
    }
}

TEST_F(CMEditPopupDlgTest, NamesANewTextAtOnce) {
    Edit(kOK, [&] {
        Click(kAdd);
        TypeName("four");
        Select(0);
        Click(kRename);
        TypeName(std::string(70, 'x').c_str());
        Select(1);
        Click(kRename);
        TypeName("");
        EXPECT_EQ(View().model()->rowCount(), 4) << "an empty one stays a row";
    });
    EXPECT_THAT(Texts(), ElementsAre(std::string(63, 'x'), "three", "four"));
    EXPECT_STREQ(Settings().infoPopup.szPreset[1], "");
    Edit(kCancel, [&] { EXPECT_EQ(View().model()->rowCount(), 1) << "up to the empty one"; });
}

TEST_F(CMEditPopupDlgTest, RefusesMoreThanTwenty) {
    SetTexts(std::vector<const char*>(20, "t"));
    Edit(kOK, [&] {
        Answer(QMessageBox::Ok);
        Click(kAdd);
        EXPECT_EQ(View().model()->rowCount(), 20);
        Select(19);
        Click(kDelete);
        Click(kAdd);
        TypeName("last");
    });
    EXPECT_EQ(Texts().size(), 20U);
    EXPECT_STREQ(Settings().infoPopup.szPreset[19], "last");
}

TEST_F(CMEditPopupDlgTest, ResetsToTheDefaultsOfItsOwnListAndForgetsEverythingOnCancel) {
    std::string why;
    auto fresh = host::Effect::Make(ThePlugin(), why);
    const auto& defaults = *reinterpret_cast<const _TEXT_DIALOG_PARAM*>(fresh->Settings().data());
    const struct {
        std::uint32_t mode;
        int list;
        _POPUPSTRING _TEXT_DIALOG_PARAM::*edited;
    } rows[] = { { TEXT_INFO, 207, &_TEXT_DIALOG_PARAM::infoPopup },
                 { TEXT_CHARACTER, 209, &_TEXT_DIALOG_PARAM::characterPopup } };
    for (const auto& row : rows) {
        _POPUPSTRING& list = Settings().*row.edited;
        std::strcpy(list.szHistory[0], "old");
        list.bLock = 1;
        const _POPUPSTRING before = list;
        Destroy();
        SetMode(row.mode);
        for (const int end : { kCancel, kOK }) {
            const auto change = [&] {
                Select(0);
                Click(kDelete);
                Answer(QMessageBox::Ok);
                Click(kReset);
            };
            Edit(end, change, row.list);
            const _POPUPSTRING& wanted = end == kOK ? defaults.*row.edited : before;
            EXPECT_EQ(std::memcmp(&list, &wanted, sizeof list), 0) << row.list << ' ' << end;
        }
    }
}

TEST_F(CMEditPopupDlgTest, LoadsAndSavesFiles) {
    TemporaryFolder folder;
    const std::string file = (folder.Path() / "list.txt").string();
    const std::string missing = (folder.Path() / "empty.txt").string();
    std::ofstream(missing).close();
    Edit(kOK, [&] {
        WithFile(kSave, "");
        EXPECT_FALSE(std::filesystem::exists(file));
        WithFile(kSave, file);
        Select(0);
        Click(kDelete);
        WithFile(kLoad, "");
        EXPECT_EQ(View().model()->rowCount(), 2);
        WithFile(kLoad, file);
        EXPECT_EQ(View().model()->rowCount(), 3);
        Answer(QMessageBox::Ok);
        WithFile(kLoad, missing);
        EXPECT_EQ(View().model()->rowCount(), 3) << "as it was";
        for (int i = 0; i < 3; ++i) {
            Select(0);
            Click(kDelete);
        }
        EXPECT_EQ(View().model()->rowCount(), 0);
        Click(kSave); // nothing to save, so no file is asked for
        EXPECT_EQ(qobject_cast<QFileDialog*>(QApplication::activeModalWidget()), nullptr);
    });
    std::ifstream saved(file);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(saved), {}), "one\rtwo\rthree\r");
    EXPECT_TRUE(Texts().empty());
}

TEST_F(CMEditPopupDlgTest, SaysWhatComesInOtherwiseThanItWasMeant) {
    TemporaryFolder folder;
    const struct {
        const char *bytes, *warning;
    } rows[] = { { "A\nB\n", "several lines have come in as one text" },
                 { "A\r\nB\r\n", "end with line feeds" },
                 { "A\r\x83\x4A\r", "no text in the encoding" } };
    for (const auto& row : rows)
        Edit(kCancel, [&] {
            QString said;
            WhenModal<QMessageBox>([&](QMessageBox& box) {
                said = box.text() + box.informativeText();
                box.button(QMessageBox::Ok)->click();
            });
            WithFile(kLoad, folder.Write("list.txt", row.bytes).string());
            EXPECT_THAT(said.toStdString(), testing::HasSubstr(row.warning));
            EXPECT_GE(View().model()->rowCount(), 1) << "it is loaded all the same";
        });
}

} // namespace
