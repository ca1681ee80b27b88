// SPDX-License-Identifier: BSD-3-Clause
#include "apps/studio/Player.h"

#include <chrono>

namespace studio {

Player::Player() {
    m_timer.setTimerType(Qt::PreciseTimer);
    SetRate({});
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
        const auto due = FrameAt(m_start, m_count, m_rate, m_clock.elapsed());
        if (due == m_shown)
            return;
        m_shown = due;
        onFrame(due);
    });
}

void Player::SetRate(host::FrameRate rate) {
    m_rate = rate;
    // Finer than a frame, so that each is shown within a short time of when it is due.
    m_timer.setInterval(std::chrono::milliseconds(250 * rate.Denominator() / rate.Numerator()));
    m_start = m_shown;
    m_clock.start();
}

void Player::Start(std::size_t index, std::size_t count) {
    m_start = m_shown = index;
    m_count = count;
    m_clock.start();
    m_timer.start();
    onChanged();
}

void Player::Stop() {
    if (!IsPlaying())
        return;
    m_timer.stop();
    onChanged();
}

std::size_t Player::FrameAt(std::size_t start, std::size_t count, host::FrameRate rate,
                            qint64 milliseconds) {
    const auto played = milliseconds * rate.Numerator() / (1000 * rate.Denominator());
    return (start + static_cast<std::size_t>(played)) % count;
}

} // namespace studio
