// SPDX-License-Identifier: BSD-3-Clause
// Cursors by name: six of the system's, and pictures of a bundle that were registered.
#pragma once

#include "platform/CoreFoundation.h"

// "arrowCursor", "iBeamCursor", "crossCursor", "plusCursor", "watchCursor" and
// "pointingHandCursorCursor".
bool vamIsSystemNamedCursor(platform::CFStringRef name);

// Makes the bundle's picture <name>.pct (see vamLoadPictFromBundle) the cursor of the name, with its
// hot spot in the middle. True also when the cursor is there already: its picture is loaded once in
// a process. A picture <name>@2x.pct beside it serves dense screens.
bool vamRegisterNamedCursorFromBundle(platform::CFBundleRef bundle, platform::CFStringRef name,
                                      platform::CFStringRef subDir);

// Shows the cursor; with a name that is neither the system's nor registered nothing happens.
void vamSetNamedCursor(platform::CFStringRef name);
