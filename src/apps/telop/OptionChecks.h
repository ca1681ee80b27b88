// SPDX-License-Identifier: BSD-3-Clause
// Checks of the numbers among the options' values; what does not fit is told with what would.
#pragma once

#include <cstdint>

#include <CLI/CLI.hpp>

namespace telop {

CLI::Validator WholeNumber(std::int64_t least, std::int64_t most);
// Finite and above zero.
CLI::Validator PositiveFactor();

} // namespace telop
