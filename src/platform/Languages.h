// SPDX-License-Identifier: BSD-3-Clause
// The languages that texts are looked for in.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

// Names of language folders, best first, each once, for locales with colons between them: "ja_JP",
// then "ja", and so on; "en" is always among them. The locales "C" and "POSIX" speak English.
std::vector<std::string> LanguagesOf(std::string_view locales);
// Those that the user reads: LANGUAGE goes before the first set one of LC_ALL, LC_MESSAGES and LANG.
std::vector<std::string> UserLanguages();

} // namespace platform
