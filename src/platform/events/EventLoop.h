// SPDX-License-Identifier: BSD-3-Clause
// What the queue tells the loop that runs without a display.
#pragma once

namespace platform {

// Something was posted: the innermost running loop looks again. Any thread.
void SignalEventLoop();

} // namespace platform
