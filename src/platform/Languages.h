// SPDX-License-Identifier: BSD-3-Clause
// The languages that texts are looked for in.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// Names of language folders, best first, each once, for locales with colons between them: "ja_JP",
// then "ja", and so on; "en" is always among them. The locales "C" and "POSIX" speak English.
std::vector<std::string> LanguagesOf(std::string_view locales);
// The reverse: the fewest of them that stand for all.
std::string LocalesOf(std::span<const std::string> languages);
// Those that the user reads: LANGUAGE goes before the first set one of LC_ALL, LC_MESSAGES and LANG.
std::vector<std::string> UserLanguages();

// The language whose shapes of shared ideographs the readers of a locale expect, such as "ko" or "zh-tw":
// Chinese or Korean where the locale is, else Japanese.
std::string IdeographLanguageOf(std::string_view locale);
// By the first set one of LC_ALL, LC_CTYPE and LANG, read once.
const std::string& UserIdeographLanguage();

} // namespace platform
