// SPDX-License-Identifier: BSD-3-Clause
// Files that stand in the place of others: what they are, and which option wants them.
#pragma once

#include <string>

namespace telop {

enum class Wanted {
    kSettings, // an archive of 480 bytes
    kDocument,
    kJson, // of settings
};

// Why a file that could not be read as what was wanted is something else, with its name and the way
// out; otherwise the reason as it is.
std::string ExplainFile(const std::string& file, Wanted wanted, const std::string& reason);

} // namespace telop
