// SPDX-License-Identifier: BSD-3-Clause
// The command line: finds the command, runs it, and turns what it throws into a message and an exit
// code.

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "apps/telop/Commands.h"
#include "apps/telop/Console.h"
#include "apps/telop/Nearest.h"
#include "host/Message.h"
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

// How help is laid out: an option's values and default beside it, and no more.
class HelpFormatter : public CLI::Formatter {
public:
    HelpFormatter() { column_width(30); }

    std::string make_option_opts(const CLI::Option* option) const override {
        // What an option excludes and what its value is checked against stands in its description.
        const auto& values = option->get_option_text();
        return values.empty() ? values : " " + values;
    }

    std::string make_subcommand(const CLI::App* command) const override {
        const auto description = command->get_description();
        std::ostringstream line;
        CLI::detail::format_help(line, command->get_name(),
                                 description.substr(0, description.find_first_of(".\n")),
                                 get_column_width());
        return line.str();
    }

    std::string make_description(const CLI::App* command) const override {
        return Formatter::make_description(command) + "\n";
    }

    std::string make_group(std::string group, bool isPositional,
                           std::vector<const CLI::Option*> options) const override {
        // The base class puts an empty line before every group and another between two of them.
        const bool isFirst = isPositional || group == "Options";
        const auto text = Formatter::make_group(std::move(group), isPositional, std::move(options));
        return isFirst ? text : text.substr(1);
    }
};

// The commands with their options. Declared once, run by the one that was asked for.
class CommandLine {
public:
    CommandLine() : m_app(kDescription, "telop") {
        m_app.set_version_flag("--version", "telop " TELOP_VERSION, "Show the version");
        m_app.set_help_flag("-h,--help", "Show this help");
        m_app.require_subcommand(1);
        m_app.footer(kFooter);
        m_app.formatter(std::make_shared<HelpFormatter>());
        AddRender(m_app, m_result, m_earlierTexts);
        for (auto* const add : { AddSettings, AddLists, AddCues, AddFonts, AddDescribe, AddDoctor })
            add(m_app, m_result);
    }

    ExitCode Run(int argc, char** argv) {
        try {
            std::vector<std::string> arguments(argv + 1, argv + std::max(argc, 1));
            CheckValues(arguments);
            if (!arguments.empty() && arguments.front() == "render")
                m_earlierTexts = TakeEarlierTexts(arguments);
            std::ranges::reverse(arguments); // the parser takes them from the back
            m_app.parse(std::move(arguments));
            return m_result;
        } catch (const CLI::ParseError& error) {
            return Explain(error);
        }
    }

private:
    // An option whose value was forgotten would take the next option for it.
    void CheckValues(const std::vector<std::string>& arguments) const {
        const auto* command = &m_app;
        std::size_t i = 0;
        for (; i < arguments.size(); ++i) {
            const auto named = command->get_subcommands(
                [&](const CLI::App* each) { return each->get_name() == arguments[i]; });
            if (named.empty())
                break;
            command = named.front();
        }
        for (; i + 1 < arguments.size(); ++i) {
            const auto* option = command->get_option_no_throw(arguments[i]);
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
        const bool noCommand = !Named()->get_subcommands({}).empty();
        const bool surplus = error.get_exit_code() == static_cast<int>(CLI::ExitCodes::ExtrasError);
        const auto text = noCommand ? CommandHelp() : surplus ? SurplusHelp() : error.what();
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
        const auto typed = Named()->remaining();
        std::vector<std::string> names;
        for (const auto* command : Named()->get_subcommands({}))
            names.push_back(command->get_name());
        auto text =
            typed.empty() ? "a command is missing" : "'" + typed.front() + "' is no command";
        text += "; the commands are";
        for (const auto& name : names)
            text += " " + name;
        return text + Suggestion(typed.empty() ? "" : typed.front(), names);
    }

    // What follows a mistyped option is surplus too, so the option is named.
    std::string SurplusHelp() const {
        const auto surplus = m_app.remaining(true);
        const auto option = std::find_if(surplus.begin(), surplus.end(), [](const auto& word) {
            return word.size() > 1 && word.starts_with('-');
        });
        if (option != surplus.end())
            return "'" + *option + "' is no option" +
                   Suggestion(option->substr(0, option->find('=')), LongOptions());
        const auto& word = surplus.front();
        return "'" + word + "' is one argument too many" +
               (word.ends_with(".png") ? "; several frames are named by their folder, or by a "
                                         "pattern such as shot.####.png"
                                       : "");
    }

    std::vector<std::string> LongOptions() const {
        std::vector<std::string> names;
        for (const auto* option : Named()->get_options())
            for (const auto& name : option->get_lnames())
                names.push_back("--" + name);
        return names;
    }

    std::string HelpCommand() const {
        std::string names;
        for (const auto* command = Named(); command != &m_app; command = command->get_parent())
            names.insert(0, command->get_name() + " ");
        return "telop " + names + "--help";
    }

    CLI::App m_app;
    std::vector<TextOptions> m_earlierTexts;
    ExitCode m_result = ExitCode::kSuccess;
};

// What was printed may still wait in a buffer, and a full disk shows only when that is emptied.
ExitCode CheckPrinted(ExitCode code) {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)
        return code;
    throw CommandError(ExitCode::kCannotWrite,
                       "standard output: cannot be written: " + host::ErrorText(errno));
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
