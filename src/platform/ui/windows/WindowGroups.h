// SPDX-License-Identifier: BSD-3-Clause
// What a window's end means for groups.
#pragma once

namespace platform {

class Window;

void LeaveWindowGroup(Window& window);
// The windows that lie over this one because of a group become hidden windows of their own.
void ReleaseWindowsOver(Window& window);

} // namespace platform
