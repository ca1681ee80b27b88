// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Texts.h"

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>

#include <QAbstractButton>
#include <QApplication>
#include <QImage>
#include <QKeySequence>
#include <QLabel>
#include <QMenuBar>
#include <gmock/gmock.h>

#include "apps/studio/ExportDialog.h"
#include "apps/studio/StudioFixture.h"
#include "platform/StringTable.h"
#include "support/ScopedEnvironment.h"

namespace studio {

namespace {

std::string Contents(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return { std::istreambuf_iterator<char>(stream), {} };
}

// Every literal that the sources hand to T() or N(), pieces joined.
std::set<std::string> TextsInSources() {
    std::regex const call(R"RE(\b[TN]\(((\s*"([^"\\]|\\.)*")+)\s*\))RE");
    std::regex const piece(R"RE("(([^"\\]|\\.)*)")RE");
    std::set<std::string> texts;
    for (auto const& entry : std::filesystem::directory_iterator(TELOP_STUDIO_SOURCES)) {
        auto const source = Contents(entry.path());
        for (std::sregex_iterator found(source.begin(), source.end(), call), end; found != end;
             ++found) {
            auto const literals = (*found)[1].str();
            std::string text;
            for (std::sregex_iterator part(literals.begin(), literals.end(), piece); part != end;
                 ++part)
                text += (*part)[1].str();
            texts.insert(text);
        }
    }
    return texts;
}

std::multiset<std::string> PlacesOf(const std::string& text) {
    std::regex const place("%[1-9]|\\{\\{|\\{[^{}]*\\}");
    std::multiset<std::string> places;
    for (std::sregex_iterator found(text.begin(), text.end(), place), end; found != end; ++found)
        places.insert(found->str());
    return places;
}

TEST(Texts, EachHasAJapaneseOneWithTheSamePlacesAndMnemonic) {
    auto const table = platform::ParseStringTable(
        Contents(TELOP_STUDIO_TABLE), [](std::size_t line, std::string_view reason) {
            ADD_FAILURE() << "line " << line << ": " << reason;
        });
    std::set<std::string> translated;
    for (auto const& [text, japanese] : table) {
        translated.insert(text);
        EXPECT_EQ(PlacesOf(text), PlacesOf(japanese)) << text;
        if (auto const mark = text.find('&'); mark != std::string::npos) {
            auto const letter = static_cast<char>(std::toupper(text[mark + 1]));
            EXPECT_THAT(japanese, testing::HasSubstr(std::string("(&") + letter + ")")) << text;
        }
    }
    EXPECT_THAT(translated, testing::ContainerEq(TextsInSources()));
}

TEST(Texts, AreInTheFirstOfTheUsersLanguagesThatThereIs) {
    struct Row {
        const char* languages;
        const char* chosen;
        const char* text;
    };
    for (auto const& row : { Row { "ja", "ja", "無題" }, Row { "fr:ja_JP.UTF-8:en", "ja", "無題" },
                             Row { "en_GB:ja", "en", "Untitled" },
                             Row { "fr:../ja", "en", "Untitled" }, Row { "", "en", "Untitled" } }) {
        ScopedEnvironment const languages("LANGUAGE", row.languages);
        ScopedEnvironment const locale("LC_ALL", "C");
        ChooseLanguage();
        EXPECT_EQ(TheLanguage(), row.chosen) << row.languages;
        EXPECT_EQ(T("Untitled").toStdString(), row.text) << row.languages;
    }
    EXPECT_TRUE(HasLanguage("ja_JP.UTF-8"));
    EXPECT_FALSE(HasLanguage("fr"));
}

using MnemonicsTest = StudioTest;

std::map<QString, QString> TextsByKey(const QWidget& window, QStringList texts) {
    for (auto const* const label : window.findChildren<QLabel*>()) {
        if (label->buddy())
            texts += label->text();
    }
    for (auto const* const button : window.findChildren<QAbstractButton*>())
        texts += button->text();
    std::map<QString, QString> byKey;
    for (auto const& text : texts) {
        auto const key = QKeySequence::mnemonic(text).toString();
        EXPECT_TRUE(key.isEmpty() || byKey.try_emplace(key, text).second)
            << key.toStdString() << ": " << byKey[key].toStdString() << ", " << text.toStdString();
    }
    return byKey;
}

// A key with Alt that two things claim works for neither.
TEST_F(MnemonicsTest, AreClaimedOnce) {
    ASSERT_TRUE(Document().OpenFrames(WriteShot("shot", 2)));
    ASSERT_TRUE(Settle());
    QStringList menus;
    for (auto const* const menu : Window().menuBar()->actions())
        menus += menu->text();
    EXPECT_TRUE(TextsByKey(Window(), menus).contains("Alt+D")) << "the plug-in's button";
    EXPECT_GE(TextsByKey(ExportDialog(*Project().TheShot(), {}, nullptr), {}).size(), 5U);
}

TEST(Icons, AreThereInThePalettesColors) {
    TheApplication();
    QPalette palette;
    palette.setColor(QPalette::ButtonText, Qt::magenta);
    QApplication::setPalette(palette);
    for (auto const* const name :
         { "frames", "save", "undo", "redo", "export", "first", "previous", "play", "pause", "next",
           "last", "fit", "actual", "information", "warning", "error", "close" }) {
        auto const picture = MakeIcon(name).pixmap(QSize(20, 20), 2).toImage();
        int inked = 0;
        for (int i = 0; i < 40 * 40; ++i)
            inked += picture.pixelColor(i % 40, i / 40) == QColor(Qt::magenta);
        EXPECT_GT(inked, 50) << name;
        EXPECT_LT(inked, 800) << name;
    }
    studio::SetTheme(Theme::kSystem);
}

} // namespace

} // namespace studio
