// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Texts.h"

#include <map>

#include <QKeySequence>
#include <QLabel>
#include <QMenuBar>

#include "apps/studio/ExportDialog.h"
#include "apps/studio/StudioFixture.h"
#include "support/ScopedEnvironment.h"

using namespace studio;

namespace {

TEST(Texts, AreInTheFirstOfTheUsersLanguagesThatThereIs) {
    for (const auto& [languages, text] :
         { std::pair("fr:ja_JP.UTF-8:en", "無題"), { "fr:../ja", "Untitled" } }) {
        const ScopedEnvironment list("LANGUAGE", languages);
        const ScopedEnvironment locale("LC_ALL", "C");
        ChooseLanguage();
        EXPECT_EQ(T("Untitled").toStdString(), text) << languages;
    }
    EXPECT_TRUE(HasLanguage("ja_JP.UTF-8"));
    EXPECT_FALSE(HasLanguage("fr"));
}

using MnemonicsTest = StudioTest;

std::map<QString, QString> TextsByKey(const QWidget& window, QStringList texts) {
    for (const auto* const label : window.findChildren<QLabel*>())
        if (label->buddy())
            texts += label->text();
    for (const auto* const button : window.findChildren<QAbstractButton*>())
        texts += button->text();
    std::map<QString, QString> byKey;
    for (const auto& text : texts) {
        const auto key = QKeySequence::mnemonic(text).toString();
        EXPECT_TRUE(key.isEmpty() || byKey.try_emplace(key, text).second)
            << key.toStdString() << ": " << byKey[key].toStdString() << ", " << text.toStdString();
    }
    return byKey;
}

// A key with Alt that two things claim works for neither.
TEST_F(MnemonicsTest, AreClaimedOnce) {
    OpenShot(2);
    ASSERT_TRUE(Settle());
    QStringList menus;
    for (const auto* const menu : Window().menuBar()->actions())
        menus += menu->text();
    EXPECT_TRUE(TextsByKey(Window(), menus).contains("Alt+D")) << "the plug-in's button";
    EXPECT_GE(TextsByKey(ExportDialog(*Project().TheShot(), {}, nullptr), {}).size(), 5U);
}

TEST(Icons, AreThereInThePalettesColors) {
    TheApplication();
    QPalette palette;
    palette.setColor(QPalette::ButtonText, Qt::magenta);
    QApplication::setPalette(palette);
    for (const auto* const name :
         { "frames", "save", "undo", "redo", "export", "first", "previous", "play", "pause", "next",
           "last", "fit", "actual", "information", "warning", "error", "close" }) {
        const auto picture = MakeIcon(name).pixmap(QSize(20, 20), 2).toImage();
        int inked = 0;
        for (int i = 0; i < 40 * 40; ++i)
            inked += picture.pixelColor(i % 40, i / 40) == QColor(Qt::magenta);
        EXPECT_GT(inked, 50) << name;
        EXPECT_LT(inked, 800) << name;
    }
    studio::SetTheme(Theme::kSystem);
}

} // namespace
