// SPDX-License-Identifier: BSD-3-Clause
// Alerts, the colour picker and file dialogs, answered from a timer while they run.
#include <fstream>
#include <functional>

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>

#include "platform/ui/Dialogs.h"
#include "platform/ui/QtStrings.h"
#include "platform/ui/UIObject.h"
#include "support/WindowRefs.h"

namespace platform {
namespace {

using testing::IsEmpty;

// Answers the dialogs that run while it lives, one after the other.
class Answers {
public:
    using Answer = std::function<void(QDialog& dialog)>;

    explicit Answers(std::vector<Answer> answers) : m_answers(std::move(answers)) {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { AnswerNext(); });
        m_timer.start(5);
    }
    ~Answers() { EXPECT_EQ(m_next, m_answers.size()) << "dialogs did not come"; }

private:
    void AnswerNext() {
        auto* const dialog = dynamic_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || dialog == m_last)
            return;
        m_last = dialog;
        if (m_next < m_answers.size())
            m_answers[m_next++](*dialog);
        else
            dialog->reject();
        m_last = nullptr;
    }

    std::vector<Answer> m_answers;
    std::size_t m_next = 0;
    QPointer<QDialog> m_last;
    QTimer m_timer;
};

void PressKey(QDialog& dialog, Qt::Key key) {
    dialog.activateWindow();
    QTest::keyClick(dialog.focusWidget() ? dialog.focusWidget() : &dialog, key);
}

class DialogsTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(EnsureUserInterface()); }
};

// Alerts -----------------------------------------------------------------------------------------

TEST_F(DialogsTest, AnAlertTellsWhetherOKWasPressed) {
    struct Row {
        const char* what;
        bool cancelButton;
        std::function<void(QMessageBox&)> act;
        bool isOK;
    };
    for (const Row& row :
         { Row { "ok", true, [](auto& box) { box.button(QMessageBox::Ok)->click(); }, true },
           Row { "cancel", true, [](auto& box) { box.button(QMessageBox::Cancel)->click(); },
                 false },
           Row { "Return", false, [](auto& box) { PressKey(box, Qt::Key_Return); }, true },
           Row { "Escape", true, [](auto& box) { PressKey(box, Qt::Key_Escape); }, false },
           Row { "close", true, [](auto& box) { box.close(); }, false },
           Row { "its end", false, [](auto& box) { Window::Of(&box)->Dispose(); }, false } }) {
        const Answers answers({ [&](QDialog& dialog) {
            auto& box = dynamic_cast<QMessageBox&>(dialog);
            EXPECT_EQ(box.text(), "Clear <b>all</b>?");
            EXPECT_EQ(box.textFormat(), Qt::PlainText);
            EXPECT_EQ(box.windowTitle(), "Telop");
            EXPECT_EQ(box.button(QMessageBox::Cancel) != nullptr, row.cancelButton);
            row.act(box);
        } });
        EXPECT_EQ(RunStandardAlert("Telop", "Clear <b>all</b>?", row.cancelButton), row.isOK)
            << row.what;
    }
}

// The colour picker ------------------------------------------------------------------------------

TEST_F(DialogsTest, TheColourPickerKeepsWhatWasNotChanged) {
    const Answers answers({ [&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "文字色");
        dialog.accept();
    } });
    RGBColor picked { 1, 2, 3 };
    const CFStringRef title = CFStringCreateWithUTF8("文字色");
    EXPECT_TRUE(GetColor({ 0, 0 }, title, { 0x1234, 0x5678, 0x9ABC }, &picked));
    CFRelease(title);
    EXPECT_EQ(picked.red, 0x1234);
    EXPECT_EQ(picked.green, 0x5678);
    EXPECT_EQ(picked.blue, 0x9ABC);
}

// Files ------------------------------------------------------------------------------------------

class FileDialogsTest : public DialogsTest {
protected:
    void SetUp() override {
        DialogsTest::SetUp();
        ASSERT_TRUE(folder.isValid());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
    }
    std::string Path(const char* name) const { return folder.filePath(name).toStdString(); }
    void Write(const char* name) const { std::ofstream(Path(name)) << "text"; }

    QTemporaryDir folder;
    static FileDialogOptions Lists() {
        FileDialogOptions lists;
        lists.preferenceKey = 10001;
        lists.typeName = "Lists";
        lists.typePattern = "*.txt *.lst";
        return lists;
    }
    FileDialogOptions options = Lists();
};

Answers::Answer Type(const std::string& name) {
    return [name](QDialog& dialog) {
        dialog.findChild<QLineEdit*>()->setText(QString::fromStdString(name));
        dialog.accept();
    };
}
Answers::Answer Press(QMessageBox::StandardButton button) {
    return
        [button](QDialog& dialog) { dynamic_cast<QMessageBox&>(dialog).button(button)->click(); };
}
void Cancel(QDialog& dialog) {
    dialog.reject();
}

std::string Only(const std::vector<FSSpec>& files) {
    return files.size() == 1 ? files[0].path : "(" + std::to_string(files.size()) + " files)";
}

TEST_F(FileDialogsTest, OpeningRemembersTheFolderByItsKey) {
    Write("カット1.txt");
    {
        const Answers answers({ Type(Path("カット1.txt")) });
        EXPECT_EQ(Only(RunGetFileDialog(options)), Path("カット1.txt"));
    }
    QString begun;
    const auto note = [&](QDialog& dialog) {
        auto& files = dynamic_cast<QFileDialog&>(dialog);
        begun = files.directory().absolutePath();
        EXPECT_EQ(files.nameFilters().front(), "Lists (*.txt *.lst)");
        dialog.reject();
    };
    const Answers answers({ note, note });
    EXPECT_THAT(RunGetFileDialog(options), IsEmpty());
    EXPECT_EQ(begun, QDir(folder.path()).absolutePath());
    options.preferenceKey = 10002;
    EXPECT_THAT(RunGetFileDialog(options), IsEmpty());
    EXPECT_EQ(begun, QDir::homePath());
}

TEST_F(FileDialogsTest, SavingAddsTheEndingAndAsksBeforeItReplaces) {
    Write("there.txt");
    struct Row {
        const char* typed;
        std::vector<Answers::Answer> then;
        const char* saved; // null: none
    };
    for (const Row& row :
         { Row { "new", {}, "new.txt" }, Row { "new.lst", {}, "new.lst" },
           Row { "there", { Press(QMessageBox::Yes) }, "there.txt" },
           Row { "there", { Press(QMessageBox::No), Type(Path("other")) }, "other.txt" },
           Row { "there", { Press(QMessageBox::No), Cancel }, nullptr } }) {
        std::vector<Answers::Answer> all = row.then;
        all.insert(all.begin(), Type(Path(row.typed)));
        const Answers answers(all);
        EXPECT_EQ(Only(RunPutFileDialog(options)), row.saved ? Path(row.saved) : "(0 files)")
            << row.typed;
    }
}

TEST_F(FileDialogsTest, APathThatDoesNotFitIsRefusedWithAMessage) {
    std::string deep = folder.path().toStdString();
    while (deep.size() < sizeof FSSpec::path)
        deep += "/0123456789012345678901234567890123456789";
    QString message;
    const Answers answers({ Type(deep), [&](QDialog& dialog) {
                               message = dynamic_cast<QMessageBox&>(dialog).text();
                               dialog.accept();
                           } });
    EXPECT_THAT(RunPutFileDialog(options), IsEmpty());
    EXPECT_THAT(message.toStdString(), testing::HasSubstr("4095"));
}

TEST_F(FileDialogsTest, AWindowThatGoesEndsItsDialog) {
    WindowRef window = nullptr;
    ASSERT_TRUE(window = Window::Create({ 0, 0, 100, 100 }));
    options.parent = window;
    const Answers answers({ [&](QDialog& dialog) {
        EXPECT_EQ(dialog.parentWidget(), &test::At(window).Widget());
        delete &test::At(window).Widget();
    } });
    EXPECT_THAT(RunPutFileDialog(options), IsEmpty());
}

} // namespace
} // namespace platform
