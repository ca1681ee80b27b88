// SPDX-License-Identifier: BSD-3-Clause
// "telop fonts": lists the families that can be drawn and shows what they look like.
#pragma once

#include <optional>
#include <string>

#include "apps/telop/CommandError.h"

namespace CLI {
class App;
} // namespace CLI

namespace telop {

struct FontsOptions {
    std::optional<std::string> filter; // part of a family's name, in any case
    bool files = false;
    std::optional<std::string> sample; // PNG file
    std::optional<std::string> text;   // of the sample
    int size = 32;
    bool overwrite = false;
    std::optional<std::string> plugin;
};

void AddFontsOptions(CLI::App& command, FontsOptions& options);
ExitCode RunFonts(const FontsOptions& options);

} // namespace telop
