// SPDX-License-Identifier: BSD-3-Clause
// Tells how far a run of frames is: as a bar that is redrawn, a line for each frame, or not at all.
#pragma once

#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>

#include "host/jobs/RunListener.h"

namespace telop {

enum class ProgressStyle { kNone, kBar, kLines };

// The bar as text, columns wide at most: what is done of total (0: not known), frames per second
// and the time left.
std::string ProgressBar(std::int64_t done, std::int64_t total, double seconds, int columns);

// Frames that fail are told as errors, whatever the style.
class Progress : public host::RunListener {
public:
    explicit Progress(ProgressStyle style) : m_style(style) {}

    void Started(std::int64_t total) override;
    void FrameWritten(std::int64_t frame, const std::string& output) override;
    void FrameSkipped(std::int64_t frame, const std::string& output) override;
    void FrameFailed(const host::FrameFailure& failure) override;
    void Warned(const std::string& what) override;
    void Finished(const host::RunResult& result) override; // takes the bar away

private:
    using Clock = std::chrono::steady_clock;
    // what became of the frame, such as its output's path.
    void Done(std::string_view what);

    ProgressStyle m_style;
    std::int64_t m_total = 0;
    Clock::time_point m_start;
    std::mutex m_mutex;
    std::int64_t m_done = 0;
    Clock::time_point m_shown; // when the bar was last drawn
};

} // namespace telop
