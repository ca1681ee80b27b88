// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/Progress.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "apps/telop/Console.h"

namespace telop {

namespace {

constexpr std::chrono::milliseconds kRedrawInterval { 100 };
constexpr int kMaxBarColumns = 40;
constexpr int kMinBarColumns = 5;

std::string TimeLeft(double seconds) {
    const auto whole = static_cast<std::int64_t>(std::ceil(std::min(seconds, 359999.0)));
    std::array<char, 32> text {};
    if (whole >= 3600)
        std::snprintf(text.data(), text.size(), "%d:%02d:%02d left", static_cast<int>(whole / 3600),
                      static_cast<int>(whole / 60 % 60), static_cast<int>(whole % 60));
    else
        std::snprintf(text.data(), text.size(), "%d:%02d left", static_cast<int>(whole / 60),
                      static_cast<int>(whole % 60));
    return text.data();
}

std::string Rate(double framesPerSecond) {
    std::array<char, 48> text {};
    std::snprintf(text.data(), text.size(),
                  framesPerSecond < 10 ? "%.1f frames/s" : "%.0f frames/s", framesPerSecond);
    return text.data();
}

} // namespace

std::string ProgressBar(std::int64_t done, std::int64_t total, double seconds, int columns) {
    const double rate = seconds > 0 ? static_cast<double>(done) / seconds : 0;
    std::string text = std::to_string(done);
    if (total > 0)
        text += "/" + std::to_string(total);
    text += "  " + Rate(rate);
    if (total > 0 && rate > 0)
        text += "  " + TimeLeft(static_cast<double>(total - done) / rate);
    // The last column stays free: some terminals break the line there.
    const int room = std::min(columns - 4 - static_cast<int>(text.size()), kMaxBarColumns);
    if (total <= 0 || room < kMinBarColumns)
        return text.substr(0, static_cast<std::size_t>(std::max(columns - 1, 0)));
    const auto filled = static_cast<std::size_t>(room * std::min(done, total) / total);
    return "[" + std::string(filled, '#') + std::string(room - filled, '.') + "] " + text;
}

void Progress::Started(std::int64_t total) {
    m_total = total;
    m_start = Clock::now();
}

void Progress::FrameWritten(std::int64_t, const std::string& output) {
    Done(output);
}

void Progress::FrameSkipped(std::int64_t, const std::string& output) {
    Done(output + " (there already)");
}

void Progress::FrameFailed(const host::FrameFailure& failure) {
    Console::Get().Error(failure.what);
}

void Progress::Warned(const std::string& what) {
    Console::Get().Warn(what);
}

void Progress::Finished(const host::RunResult&) {
    if (m_style == ProgressStyle::kBar)
        Console::Get().Status("");
}

void Progress::Done(std::string_view what) {
    const std::lock_guard lock(m_mutex);
    ++m_done;
    if (m_style == ProgressStyle::kLines) {
        const auto of = m_total > 0 ? "/" + std::to_string(m_total) : std::string();
        Console::Get().Note("[" + std::to_string(m_done) + of + "] " + std::string(what));
        return;
    }
    const auto now = Clock::now();
    if (m_style == ProgressStyle::kNone || now - m_shown < kRedrawInterval)
        return;
    m_shown = now;
    const std::chrono::duration<double> passed = now - m_start;
    Console::Get().Status(ProgressBar(m_done, m_total, passed.count(), Console::TerminalColumns()));
}

} // namespace telop
