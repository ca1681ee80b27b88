// SPDX-License-Identifier: BSD-3-Clause
// How a command ends: its exit codes, and the exception that carries one with its message to main.
#pragma once

#include <stdexcept>
#include <string>

namespace telop {

enum class ExitCode : int {
    kSuccess = 0,
    kFramesFailed = 1,  // the others are finished; for doctor: something is wrong
    kUsage = 2,         // the command line
    kBadInput = 3,      // settings, plug-in or frames that cannot be used
    kStrictFonts = 4,   // a font or character is not there, or cut, and --strict-fonts was given
    kCannotWrite = 5,   // an output exists or cannot be written
    kInterrupted = 130, // SIGINT
    kTerminated = 143,  // SIGTERM
};

// The lines of help that explain them.
inline constexpr const char* kExitCodeHelp =
    "Exit codes:\n"
    "  0    all is done\n"
    "  1    some frames failed, each is named; the others are finished\n"
    "  2    the command line cannot be understood\n"
    "  3    settings, plug-in or input cannot be used\n"
    "  4    --strict-fonts: a font or a character is not there, or not whole\n"
    "  5    an output exists already or cannot be written\n"
    "  130  interrupted (143: terminated); only whole frames are left\n";

class CommandError : public std::runtime_error {
public:
    CommandError(ExitCode code, const std::string& message)
        : std::runtime_error(message), m_code(code) {}
    ExitCode Code() const { return m_code; }

private:
    ExitCode m_code;
};

[[noreturn]] inline void FailUsage(const std::string& message) {
    throw CommandError(ExitCode::kUsage, message);
}

} // namespace telop
