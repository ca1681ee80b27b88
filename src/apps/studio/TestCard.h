// SPDX-License-Identifier: BSD-3-Clause
// The picture that is shown while no frames are open: colour bars, a ramp, a cross, the safe frames and
// the frame's number.
#pragma once

#include <cstdint>

#include <QImage>

namespace studio {

inline constexpr int kTestCardWidth = 1920;
inline constexpr int kTestCardHeight = 1080;
inline constexpr std::int64_t kTestCardFrames = 100;

// number is 1 to kTestCardFrames. The same number gives the same pixels. Any thread.
QImage DrawTestCard(std::int64_t number);

} // namespace studio
