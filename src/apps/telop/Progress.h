// SPDX-License-Identifier: BSD-3-Clause
// Tells how far a run of frames is: as a bar that is redrawn, a line for each frame, or not at all.
#pragma once

#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>

namespace telop {

enum class ProgressStyle { kNone, kBar, kLines };

// The bar as text, columns wide at most: what is done of total (0: not known), frames per second
// and the time left.
std::string ProgressBar(std::int64_t done, std::int64_t total, double seconds, int columns);

class Progress {
public:
    Progress(ProgressStyle style, std::int64_t total);
    ~Progress(); // takes the bar away
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // Any thread. what became of the frame, such as its output's path.
    void Done(std::string_view what);

private:
    using Clock = std::chrono::steady_clock;

    ProgressStyle m_style;
    std::int64_t m_total;
    Clock::time_point m_start = Clock::now();
    std::mutex m_mutex;
    std::int64_t m_done = 0;
    Clock::time_point m_shown; // when the bar was last drawn
};

} // namespace telop
