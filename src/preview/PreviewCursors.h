// SPDX-License-Identifier: BSD-3-Clause
// The cursors that the previews show, by name.
#pragma once

#include "platform/CoreFoundation.h"

inline constexpr const char* kArrowCursor = "arrowCursor";
inline constexpr const char* kWatchCursor = "watchCursor";
inline constexpr const char* kHandCursor = "CursorPreviewHand"; // over what can be panned
inline constexpr const char* kDragCursor = "CursorPreviewDrag"; // while it is

// Takes the two hands from the bundle's pictures, unless the process has them already.
void RegisterPreviewCursors(platform::CFBundleRef bundle);

void SetPreviewCursor(const char* name);
