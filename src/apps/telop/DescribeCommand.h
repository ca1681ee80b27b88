// SPDX-License-Identifier: BSD-3-Clause
// "telop describe": what a plug-in says about itself.
#pragma once

#include <optional>
#include <string>

#include "apps/telop/CommandError.h"

namespace CLI {
class App;
} // namespace CLI

namespace telop {

struct DescribeOptions {
    std::optional<std::string> bundle; // else the one that render uses
};

void AddDescribeOptions(CLI::App& command, DescribeOptions& options);
ExitCode RunDescribe(const DescribeOptions& options);

} // namespace telop
