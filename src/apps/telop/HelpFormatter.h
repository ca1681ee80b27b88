// SPDX-License-Identifier: BSD-3-Clause
// How help is laid out: an option's values and default beside it, and no more.
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace telop {

class HelpFormatter : public CLI::Formatter {
public:
    HelpFormatter();

    std::string make_option_opts(const CLI::Option* option) const override;
    std::string make_subcommand(const CLI::App* command) const override;
    std::string make_description(const CLI::App* command) const override;
    std::string make_group(std::string group, bool isPositional,
                           std::vector<const CLI::Option*> options) const override;
};

} // namespace telop
