// SPDX-License-Identifier: BSD-3-Clause
// "telop doctor": what this machine gives to a run - bundle, fonts, encoding, language, paths - and what
// is wrong with it.
#pragma once

#include <optional>
#include <string>

#include "apps/telop/CommandError.h"

namespace CLI {
class App;
} // namespace CLI

namespace telop {

struct DoctorOptions {
    std::optional<std::string> encoding, plugin;
};

void AddDoctorOptions(CLI::App& command, DoctorOptions& options);
// kFramesFailed when something is wrong.
ExitCode RunDoctor(const DoctorOptions& options);

} // namespace telop
