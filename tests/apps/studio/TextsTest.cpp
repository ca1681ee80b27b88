// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Texts.h"

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>

#include <gmock/gmock.h>

namespace studio {

namespace {

// Every literal that the sources hand to T() or N(), pieces joined.
std::set<std::string> TextsInSources() {
    std::regex const call(R"RE(\b[TN]\(((\s*"([^"\\]|\\.)*")+)\s*\))RE");
    std::regex const piece(R"RE("(([^"\\]|\\.)*)")RE");
    std::set<std::string> texts;
    for (auto const& entry : std::filesystem::directory_iterator(TELOP_STUDIO_SOURCES)) {
        if (entry.path().extension() != ".cpp")
            continue;
        std::ifstream stream(entry.path());
        std::string const source { std::istreambuf_iterator<char>(stream), {} };
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

TEST(Texts, EveryTextHasAJapaneseOneWithTheSamePlacesAndMnemonic) {
    auto const texts = TextsInSources();
    ASSERT_GT(texts.size(), 100U);
    for (auto const& text : texts) {
        auto const* const japanese = Translated(Language::kJapanese, text);
        ASSERT_TRUE(japanese) << text;
        EXPECT_EQ(PlacesOf(text), PlacesOf(japanese)) << text;
        auto const mark = text.find('&');
        if (mark == std::string::npos)
            continue;
        auto const letter = static_cast<char>(std::toupper(text[mark + 1]));
        EXPECT_THAT(japanese, testing::HasSubstr(std::string("(&") + letter + ")")) << text;
    }
}

TEST(Texts, LanguageIsReadFromLocaleNames) {
    struct Row {
        const char* name;
        bool known;
        Language language;
    };
    for (auto const& row :
         { Row { "ja", true, Language::kJapanese },
           Row { "ja_JP.UTF-8", true, Language::kJapanese },
           Row { "en-GB", true, Language::kEnglish }, Row { "fr", false, Language::kEnglish },
           Row { "", false, Language::kEnglish } }) {
        auto language = Language::kEnglish;
        EXPECT_EQ(ParseLanguage(row.name, language), row.known) << row.name;
        EXPECT_EQ(language, row.language) << row.name;
    }
}

} // namespace

} // namespace studio
