// SPDX-License-Identifier: BSD-3-Clause
// The lines that a command writes to its error stream, and the status line that is redrawn below them.
#pragma once

#include <mutex>
#include <string>
#include <string_view>

namespace telop {

// Any thread; lines never mix.
class Console {
public:
    static Console& Get();

    // "telop: ..." on a line of its own.
    void Error(std::string_view text);
    // "telop: warning: ...", unless the console is quiet.
    void Warn(std::string_view text);
    // The text alone, unless the console is quiet.
    void Note(std::string_view text);
    // Replaces the status line; empty takes it away. Only for a terminal.
    void Status(std::string_view text);

    void SetQuiet(bool quiet) { m_quiet = quiet; }
    static bool IsTerminal();
    static int TerminalColumns();

private:
    void Line(std::string_view start, std::string_view text);

    std::mutex m_mutex;
    std::string m_status;
    bool m_quiet = false;
};

} // namespace telop
