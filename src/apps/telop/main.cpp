// SPDX-License-Identifier: BSD-3-Clause
// The command line: finds the command, runs it, and turns what it throws into a message and an exit
// code.

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include <CLI/CLI.hpp>

#include "apps/telop/CommandError.h"
#include "apps/telop/Console.h"
#include "apps/telop/DescribeCommand.h"
#include "apps/telop/DoctorCommand.h"
#include "apps/telop/FontsCommand.h"
#include "apps/telop/HelpFormatter.h"
#include "apps/telop/ListsCommand.h"
#include "apps/telop/RenderCommand.h"
#include "apps/telop/SettingsCommand.h"
#include "host/StandardStreams.h"

namespace telop {

namespace {

constexpr const char* kDescription =
    "Burns text into animation frames: directions, cut numbers, names, dialogue.";
const std::string kFooter =
    std::string("Examples:\n"
                "  telop render --info PAN shot.####.png out/shot.####.png\n"
                "  telop render --help\n\n") +
    kExitCodeHelp;

// The commands with their options. Declared once, run by the one that was asked for.
class CommandLine {
public:
    CommandLine() : m_app(kDescription, "telop") {
        m_app.set_version_flag("--version", "telop " TELOP_VERSION, "Show the version");
        m_app.set_help_flag("-h,--help", "Show this help");
        m_app.require_subcommand(1);
        m_app.footer(kFooter);
        m_app.formatter(std::make_shared<HelpFormatter>());
        AddRenderOptions(*Add("render", [this] { return RunRender(m_render); }), m_render);
        AddSettingsOptions(*Add("settings", [this] { return RunSettings(m_settings); }),
                           m_settings);
        AddListsOptions(*Add("lists", [this] { return RunLists(m_lists); }), m_lists);
        AddFontsOptions(*Add("fonts", [this] { return RunFonts(m_fonts); }), m_fonts);
        AddDescribeOptions(*Add("describe", [this] { return RunDescribe(m_describe); }),
                           m_describe);
        AddDoctorOptions(*Add("doctor", [this] { return RunDoctor(m_doctor); }), m_doctor);
    }

    ExitCode Run(int argc, char** argv) {
        try {
            CheckValues({ argv + 1, argv + std::max(argc, 1) });
            m_app.parse(argc, argv);
            return m_result;
        } catch (const CLI::ParseError& error) {
            return Explain(error);
        }
    }

private:
    CLI::App* Add(const char* name, std::function<ExitCode()> run) {
        auto* command = m_app.add_subcommand(name);
        command->callback([this, run = std::move(run)] { m_result = run(); });
        return command;
    }

    // An option whose value was forgotten would take the next option for it.
    void CheckValues(const std::vector<std::string>& arguments) const {
        auto const* command = &m_app;
        std::size_t i = 0;
        for (; i < arguments.size(); ++i) {
            auto const named = command->get_subcommands(
                [&](const CLI::App* each) { return each->get_name() == arguments[i]; });
            if (named.empty())
                break;
            command = named.front();
        }
        for (; i + 1 < arguments.size(); ++i) {
            auto const* option = command->get_option_no_throw(arguments[i]);
            if (option && option->get_items_expected_min() > 0 &&
                command->get_option_no_throw(arguments[i + 1]))
                FailUsage(arguments[i] + " lacks its value; '" + arguments[i + 1] +
                          "' is an option (write " + arguments[i] + "=" + arguments[i + 1] +
                          " if it is meant)");
        }
    }

    // Help and version are requests that come as errors too.
    ExitCode Explain(const CLI::ParseError& error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            m_app.exit(error);
            return ExitCode::kSuccess;
        }
        bool const noCommand = !Named()->get_subcommands({}).empty();
        bool const surplus = error.get_exit_code() == static_cast<int>(CLI::ExitCodes::ExtrasError);
        auto const text = noCommand ? CommandHelp() : surplus ? SurplusHelp() : error.what();
        Console::Get().Error(text + "\nSee " + HelpCommand());
        return ExitCode::kUsage;
    }

    // The command that was named last: one of a command's own, such as "show" of "lists", goes
    // before it.
    const CLI::App* Named() const {
        const CLI::App* named = &m_app;
        while (!named->get_subcommands().empty())
            named = named->get_subcommands().front();
        return named;
    }

    std::string CommandHelp() const {
        auto const typed = Named()->remaining();
        auto text =
            typed.empty() ? "a command is missing" : "'" + typed.front() + "' is no command";
        text += "; the commands are";
        for (auto const* command : Named()->get_subcommands({}))
            text += " " + command->get_name();
        return text;
    }

    // What follows a mistyped option is surplus too, so the option is named.
    std::string SurplusHelp() const {
        auto const surplus = m_app.remaining(true);
        auto const option = std::find_if(surplus.begin(), surplus.end(), [](const auto& word) {
            return word.size() > 1 && word.starts_with('-');
        });
        return option != surplus.end() ? "'" + *option + "' is no option"
                                       : "'" + surplus.front() + "' is one argument too many";
    }

    std::string HelpCommand() const {
        std::string names;
        for (auto const* command = Named(); command != &m_app; command = command->get_parent())
            names.insert(0, command->get_name() + " ");
        return "telop " + names + "--help";
    }

    CLI::App m_app;
    ExitCode m_result = ExitCode::kSuccess;
    RenderOptions m_render;
    SettingsOptions m_settings;
    ListsOptions m_lists;
    FontsOptions m_fonts;
    DescribeOptions m_describe;
    DoctorOptions m_doctor;
};

// What was printed may still wait in a buffer, and a full disk shows only when that is emptied.
ExitCode CheckPrinted(ExitCode code) {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)
        return code;
    throw CommandError(ExitCode::kCannotWrite, "standard output: cannot be written: " +
                                                   std::generic_category().message(errno));
}

ExitCode Main(int argc, char** argv) {
    try {
        CommandLine line;
        return CheckPrinted(line.Run(argc, argv));
    } catch (const CommandError& error) {
        Console::Get().Error(error.what());
        return error.Code();
    } catch (const std::exception& error) {
        Console::Get().Error(error.what());
        return ExitCode::kBadInput;
    }
}

} // namespace

} // namespace telop

int main(int argc, char** argv) {
    host::OpenStandardStreams();
    return static_cast<int>(telop::Main(argc, argv));
}
