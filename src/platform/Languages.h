// SPDX-License-Identifier: BSD-3-Clause
// Which languages the user reads, as the environment tells.
#pragma once

#include <string>
#include <vector>

namespace platform {

// Names of language folders, best first, each once: "ja_JP", then "ja", and so on; "en" is always
// among them. LANGUAGE (a list with colons) goes before the first set one of LC_ALL, LC_MESSAGES
// and LANG. The locales "C" and "POSIX" speak English.
std::vector<std::string> UserLanguages();

} // namespace platform
