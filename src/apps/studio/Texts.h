// SPDX-License-Identifier: BSD-3-Clause
// The program's words in the user's language. Texts stand in the code in English; for each other
// language resources/studio/ has a table of them.
#pragma once

#include <string>
#include <string_view>

#include <QString>

namespace studio {

// "en", or a language that has a table; also with a country or an encoding behind.
bool HasLanguage(std::string_view name);
// The first of the user's languages that there is, as the environment tells. Before the first text
// is asked for, on the user-interface thread.
void ChooseLanguage();
const std::string& TheLanguage(); // "en", "ja"

// english is a literal; "%1" and so on are places for arg().
QString T(const char* english);
// Marks a literal that goes to T() later.
constexpr const char* N(const char* english) {
    return english;
}
// "1 frame", "12 frames".
QString FramesText(qint64 count);

} // namespace studio
