// SPDX-License-Identifier: BSD-3-Clause
// Plays frames at the pace of the shot. When the machine is slower, frames are dropped and the pace is kept.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>

#include <QElapsedTimer>
#include <QTimer>

namespace studio {

// So many frames in so many seconds.
struct PlaybackRate {
    const char* name = "24";
    std::int64_t frames = 24;
    std::int64_t seconds = 1;
};
inline constexpr std::array<PlaybackRate, 9> kPlaybackRates { {
    { "23.976", 24000, 1001 },
    { "24", 24, 1 },
    { "25", 25, 1 },
    { "29.97", 30000, 1001 },
    { "30", 30, 1 },
    { "48", 48, 1 },
    { "50", 50, 1 },
    { "59.94", 60000, 1001 },
    { "60", 60, 1 },
} };

class Player {
public:
    Player();

    // While it plays, from the frame that is shown on.
    void SetRate(const PlaybackRate& rate);

    // From the frame on, round and round.
    void Start(std::size_t index, std::size_t count);
    void Stop();
    bool IsPlaying() const { return m_timer.isActive(); }
    // The frame that is due so many milliseconds after the start.
    static std::size_t FrameAt(std::size_t start, std::size_t count, const PlaybackRate& rate,
                               qint64 milliseconds);

    std::function<void(std::size_t index)> onFrame = [](std::size_t) {};
    std::function<void()> onChanged = [] {}; // it started or stopped

private:
    QTimer m_timer;
    QElapsedTimer m_clock;
    PlaybackRate m_rate;
    std::size_t m_start = 0;
    std::size_t m_count = 1;
    std::size_t m_shown = 0;
};

} // namespace studio
