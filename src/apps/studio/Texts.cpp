// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Texts.h"

#include <unordered_map>

#include "apps/studio/TextsJapanese.h"
#include "platform/Languages.h"

namespace studio {

namespace {

Language s_language = Language::kEnglish;

const std::unordered_map<std::string_view, const char*>& Japanese() {
    static const std::unordered_map<std::string_view, const char*> table(std::begin(kJapaneseTexts),
                                                                         std::end(kJapaneseTexts));
    return table;
}

} // namespace

bool ParseLanguage(std::string_view name, Language& language) {
    auto const code = name.substr(0, name.find_first_of("_-."));
    if (code != "en" && code != "ja")
        return false;
    language = code == "ja" ? Language::kJapanese : Language::kEnglish;
    return true;
}

Language LanguageOfUser() {
    auto language = Language::kEnglish;
    for (auto const& name : platform::UserLanguages()) {
        if (ParseLanguage(name, language))
            break;
    }
    return language;
}

void SetLanguage(Language language) {
    s_language = language;
}

Language TheLanguage() {
    return s_language;
}

const char* Translated(Language language, std::string_view english) {
    if (language == Language::kEnglish)
        return english.data();
    auto const found = Japanese().find(english);
    return found == Japanese().end() ? nullptr : found->second;
}

QString T(const char* english) {
    auto const* const translated = Translated(s_language, english);
    return QString::fromUtf8(translated ? translated : english);
}

QString FramesText(qint64 count) {
    return count == 1 ? T("1 frame") : T("%1 frames").arg(count);
}

} // namespace studio
