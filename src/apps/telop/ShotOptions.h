// SPDX-License-Identifier: BSD-3-Clause
// The options that say how a shot's frames are counted in time, and which tokens people define.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/document/Document.h"

namespace CLI {
class App;
} // namespace CLI

namespace telop {

// The options as they were typed; what is not given keeps what the document has.
struct ShotOptions {
    std::optional<std::string> fps = {}, timecode = {};
    bool dropFrame = false;
    std::vector<std::string> defines = {}; // "KEY=VALUE"
};

// Declares them on a command, with the help that they have.
void AddShotOptions(CLI::App& command, ShotOptions& options);

// Each throws a usage error that names the option.
host::ShotClock ClockOf(const ShotOptions& options, const host::ShotClock& before);
void AddDefines(const ShotOptions& options, host::Defines& defines);

} // namespace telop
