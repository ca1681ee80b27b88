// SPDX-License-Identifier: BSD-3-Clause
// The program's words in the user's language. Texts stand in the code in English; other languages have
// tables of them.
#pragma once

#include <string_view>

#include <QString>

namespace studio {

enum class Language { kEnglish, kJapanese };

// "en", "ja", also with a country behind; nothing known: English. False for a name of neither.
bool ParseLanguage(std::string_view name, Language& language);
// What the environment asks for.
Language LanguageOfUser();
// Before the first text is asked for, on the user-interface thread.
void SetLanguage(Language language);
Language TheLanguage();

// english is a literal; "%1" and so on are places for arg().
QString T(const char* english);
// Marks a literal that goes to T() later.
constexpr const char* N(const char* english) {
    return english;
}
// "1 frame", "12 frames".
QString FramesText(qint64 count);
// What a table does not translate, for the test that there is nothing.
const char* Translated(Language language, std::string_view english);

} // namespace studio
