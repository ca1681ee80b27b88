// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/HelpFormatter.h"

#include <sstream>
#include <utility>

namespace telop {

namespace {

constexpr std::size_t kHelpColumn = 30;

} // namespace

HelpFormatter::HelpFormatter() {
    column_width(kHelpColumn);
}

std::string HelpFormatter::make_option_opts(const CLI::Option* option) const {
    // What an option excludes and what its value is checked against stands in its description.
    auto const& values = option->get_option_text();
    return values.empty() ? values : " " + values;
}

std::string HelpFormatter::make_subcommand(const CLI::App* command) const {
    auto const description = command->get_description();
    std::ostringstream line;
    CLI::detail::format_help(line, command->get_name(),
                             description.substr(0, description.find_first_of(".\n")),
                             get_column_width());
    return line.str();
}

std::string HelpFormatter::make_description(const CLI::App* command) const {
    return Formatter::make_description(command) + "\n";
}

std::string HelpFormatter::make_group(std::string group, bool isPositional,
                                      std::vector<const CLI::Option*> options) const {
    // The base class puts an empty line before every group and another between two of them.
    bool const isFirst = isPositional || group == "Options";
    auto const text = Formatter::make_group(std::move(group), isPositional, std::move(options));
    return isFirst ? text : text.substr(1);
}

} // namespace telop
