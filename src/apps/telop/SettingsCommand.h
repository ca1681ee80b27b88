// SPDX-License-Identifier: BSD-3-Clause
// "telop settings": shows a settings archive as JSON, and makes one from JSON.
#pragma once

#include <optional>
#include <string>

#include "apps/telop/CommandError.h"

namespace CLI {
class App;
} // namespace CLI

namespace telop {

struct SettingsOptions {
    std::optional<std::string> archive; // to start from; else the plug-in's defaults
    std::optional<std::string> from;    // JSON file, "-" for standard input
    std::optional<std::string> output;  // archive; else JSON on standard output
    std::optional<std::string> encoding, plugin;
    bool overwrite = false;
};

void AddSettingsOptions(CLI::App& command, SettingsOptions& options);
ExitCode RunSettings(const SettingsOptions& options);

} // namespace telop
