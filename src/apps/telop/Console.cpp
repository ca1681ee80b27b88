// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/Console.h"

#include <cerrno>
#include <cstdio>

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "apps/telop/Interruption.h"
#include "host/Message.h"

namespace telop {

namespace {

constexpr std::string_view kEraseLine = "\r\x1B[K";

constexpr int kPatienceMs = 50;

// One call for one line, so that other processes on the same terminal do not cut it in two. A reader
// that pauses is waited for until the run is interrupted: then it must not keep it from its end.
void Write(const std::string& text) {
    pollfd stream { STDERR_FILENO, POLLOUT, 0 };
    int ready = 0;
    while ((ready = poll(&stream, 1, kPatienceMs)) == 0 || (ready < 0 && errno == EINTR))
        if (Interruption::Signal() != 0)
            return;
    std::fwrite(text.data(), 1, text.size(), stderr);
}

} // namespace

Console& Console::Get() {
    static Console console;
    return console;
}

void Console::Line(std::string_view start, std::string_view text) {
    const std::lock_guard lock(m_mutex);
    std::string line(m_status.empty() ? "" : kEraseLine);
    line += start;
    line += host::PrintableLines(text);
    line += '\n';
    Write(line + m_status);
}

void Console::Error(std::string_view text) {
    Line("telop: ", text);
}

void Console::Warn(std::string_view text) {
    if (!m_quiet)
        Line("telop: warning: ", text);
}

void Console::Note(std::string_view text) {
    if (!m_quiet)
        Line("", text);
}

void Console::Status(std::string_view text) {
    const std::lock_guard lock(m_mutex);
    if (m_status == text)
        return;
    m_status = text;
    Write(std::string(kEraseLine) + m_status);
}

bool Console::IsTerminal() {
    return isatty(STDERR_FILENO) != 0;
}

int Console::TerminalColumns() {
    winsize size {};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

} // namespace telop
