// SPDX-License-Identifier: BSD-3-Clause
// Plays frames at the pace of the shot. When the machine is slower, frames are dropped and the pace is kept.
#pragma once

#include <array>
#include <cstddef>
#include <functional>

#include <QElapsedTimer>
#include <QTimer>

#include "host/text/TimeCode.h"

namespace studio {

inline constexpr std::array kPlaybackRates { "23.976", "24", "25",    "29.97", "30",
                                             "48",     "50", "59.94", "60" };

class Player {
public:
    Player();

    // While it plays, from the frame that is shown on.
    void SetRate(host::FrameRate rate);
    host::FrameRate Rate() const { return m_rate; }

    // From the frame on, round and round.
    void Start(std::size_t index, std::size_t count);
    void Stop();
    bool IsPlaying() const { return m_timer.isActive(); }
    // The frame that is due so many milliseconds after the start.
    static std::size_t FrameAt(std::size_t start, std::size_t count, host::FrameRate rate,
                               qint64 milliseconds);

    std::function<void(std::size_t index)> onFrame = [](std::size_t) {};
    std::function<void()> onChanged = [] {}; // it started or stopped

private:
    QTimer m_timer;
    QElapsedTimer m_clock;
    host::FrameRate m_rate;
    std::size_t m_start = 0;
    std::size_t m_count = 1;
    std::size_t m_shown = 0;
};

} // namespace studio
