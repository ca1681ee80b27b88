// SPDX-License-Identifier: BSD-3-Clause
// Alerts and file dialogs, answered from a timer while they run.
#include <fstream>

#include <QFileDialog>
#include <QMessageBox>
#include <QSettings>
#include <QTemporaryDir>

#include "platform/ui/Dialogs.h"
#include "platform/ui/UIFixture.h"

namespace platform {
namespace {

// Answers the dialogs that run while it lives, one after the other, and cancels what comes then.
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
        if (dialog && m_next < m_answers.size())
            m_answers[m_next++](*dialog);
        else if (dialog)
            dialog->reject();
    }

    std::vector<Answer> m_answers;
    std::size_t m_next = 0;
    QTimer m_timer;
};

class DialogsTest : public test::UIFixture {
protected:
    void SetUp() override {
        UIFixture::SetUp();
        ASSERT_TRUE(folder.isValid());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
        options.preferenceKey = 10001;
        options.typeName = "Lists";
        options.typePattern = "*.txt *.lst";
    }
    std::string Path(const char* name) const { return folder.filePath(name).toStdString(); }
    void Write(const char* name) const { std::ofstream(Path(name)) << "text"; }

    QTemporaryDir folder;
    FileDialogOptions options;
};

Answers::Answer Type(const std::string& name) {
    return [name](QDialog& dialog) {
        dialog.findChild<QLineEdit*>()->setText(QString::fromStdString(name));
        dialog.accept();
    };
}
Answers::Answer PressButton(QMessageBox::StandardButton button) {
    return
        [button](QDialog& dialog) { dynamic_cast<QMessageBox&>(dialog).button(button)->click(); };
}

std::string Only(const std::optional<FSSpec>& file) {
    return file ? file->path : "(0 files)";
}

TEST_F(DialogsTest, AnAlertShowsItsMessageAsItIsAndClosesWithItsOneButton) {
    const Answers answers({ [](QDialog& dialog) {
        auto& box = dynamic_cast<QMessageBox&>(dialog);
        EXPECT_EQ(box.text(), "Clear <b>all</b>?");
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        box.close();
    } });
    EXPECT_TRUE(RunStandardAlert("Telop", "Clear <b>all</b>?", false));
}

TEST_F(DialogsTest, OpeningRemembersTheFolderByItsKey) {
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
    EXPECT_FALSE(RunGetFileDialog(options));
    EXPECT_EQ(begun, QDir(folder.path()).absolutePath());
    options.preferenceKey = 10002;
    EXPECT_FALSE(RunGetFileDialog(options));
    EXPECT_EQ(begun, QDir::homePath());
}

TEST_F(DialogsTest, SavingAddsTheEndingAndAsksBeforeItReplaces) {
    Write("there.txt");
    struct Row {
        const char* typed;
        std::vector<Answers::Answer> then;
        const char* saved; // null: none
    };
    for (const Row& row :
         { Row { "new", {}, "new.txt" }, Row { "new.lst", {}, "new.lst" },
           Row { "there", { PressButton(QMessageBox::Yes) }, "there.txt" },
           Row { "there", { PressButton(QMessageBox::No), Type(Path("other")) }, "other.txt" },
           Row { "there", { PressButton(QMessageBox::No) }, nullptr } }) {
        std::vector<Answers::Answer> all = row.then;
        all.insert(all.begin(), Type(Path(row.typed)));
        const Answers answers(all);
        EXPECT_EQ(Only(RunPutFileDialog(options)), row.saved ? Path(row.saved) : "(0 files)")
            << row.typed;
    }
}

TEST_F(DialogsTest, APathThatDoesNotFitIsRefusedWithAMessage) {
    std::string deep = folder.path().toStdString();
    while (deep.size() < sizeof FSSpec::path)
        deep += "/0123456789012345678901234567890123456789";
    QString message;
    const Answers answers({ Type(deep), [&](QDialog& dialog) {
                               message = dynamic_cast<QMessageBox&>(dialog).text();
                               dialog.accept();
                           } });
    EXPECT_FALSE(RunPutFileDialog(options));
    EXPECT_THAT(message.toStdString(), testing::HasSubstr("4095"));
}

TEST_F(DialogsTest, AWindowThatGoesEndsItsDialog) {
    options.parent = window;
    const Answers answers({ [&](QDialog& dialog) {
        EXPECT_EQ(dialog.parentWidget(), widget);
        delete widget;
    } });
    EXPECT_FALSE(RunPutFileDialog(options));
}

} // namespace
} // namespace platform
