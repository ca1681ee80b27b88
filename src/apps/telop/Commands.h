// SPDX-License-Identifier: BSD-3-Clause
// The commands of the program. Each declares itself with its options and its help, and leaves its exit
// code in code when it was asked for. What stops one before its work is thrown as CommandError.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include <CLI/CLI.hpp>

#include "apps/telop/CommandError.h"
#include "apps/telop/TextOptions.h"

namespace telop {

// Burns texts into frames; earlier are those before the last one, known when the command runs.
void AddRender(CLI::App& program, ExitCode& code, const std::vector<TextOptions>& earlier);
void AddSettings(CLI::App& program,
                 ExitCode& code);                 // shows a settings archive, makes one from JSON
void AddLists(CLI::App& program, ExitCode& code); // shows, takes in and makes files of texts
void AddCues(CLI::App& program, ExitCode& code);  // files of dialogue into documents and back
void AddFonts(CLI::App& program, ExitCode& code); // lists the families that can be drawn
void AddDescribe(CLI::App& program, ExitCode& code); // what a plug-in says about itself
void AddDoctor(CLI::App& program, ExitCode& code);   // what a run uses here, and what is wrong

// How each does that: the options live as long as the program, which runs the command that is named.
template <class Options>
void AddCommand(CLI::App& program, ExitCode& code, const char* name,
                void (*declare)(CLI::App&, Options&), ExitCode (*run)(const Options&)) {
    auto& command = *program.add_subcommand(name);
    const auto options = std::make_shared<Options>();
    declare(command, *options);
    command.callback([options, run, &code] { code = run(*options); });
}

// Options that stand under one heading of a command's help.
class OptionGroup {
public:
    explicit OptionGroup(CLI::App& command, std::string heading = "Options")
        : m_command(command), m_heading(std::move(heading)) {}

    // value is what the help calls the option's value.
    template <class Value>
    CLI::Option* Add(const char* names, Value& to, const char* value, const std::string& help) {
        return m_command.add_option(names, to, help)->option_text(value)->group(m_heading);
    }
    CLI::Option* Flag(const char* names, bool& to, const std::string& help) {
        return m_command.add_flag(names, to, help)->group(m_heading);
    }

private:
    CLI::App& m_command;
    std::string m_heading;
};

} // namespace telop
