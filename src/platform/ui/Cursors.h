// SPDX-License-Identifier: BSD-3-Clause
// Cursors by theme and by name, pictures and icons. User-interface thread only.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

#include "platform/CoreFoundation.h"
#include "platform/Drawing.h"
#include "platform/Events.h"
#include "platform/Status.h"

namespace platform {

// Cursors: of the widget under the mouse, until it is set anew or the mouse leaves it. The watch
// stands over all windows until another cursor is set.
using ThemeCursor = std::uint32_t;
inline constexpr ThemeCursor kThemeArrowCursor = 0;
inline constexpr ThemeCursor kThemeIBeamCursor = 4;
inline constexpr ThemeCursor kThemeCrossCursor = 5;
inline constexpr ThemeCursor kThemePlusCursor = 6;
inline constexpr ThemeCursor kThemeWatchCursor = 7;
inline constexpr ThemeCursor kThemePointingHandCursor = 10;
OSStatus SetThemeCursor(ThemeCursor cursor);

inline constexpr OSStatus kErrNoSuchCursor = -30590;
// Registers the world's pixels as a cursor of the name (at most 127 bytes) with the hot spot. Pixels
// that are white up to the world's edge are transparent around the shape. kParamErr when the name is
// taken. The registry is the process's.
OSStatus RegisterNamedPixMapCursor(GWorldPtr world, std::int16_t hotX, std::int16_t hotY,
                                   const char* name);
bool IsNamedPixMapCursorRegistered(const char* name);
OSStatus SetNamedPixMapCursor(const char* name);
// The name of the cursor that was set last; empty for a theme cursor. For tests and hosts that draw
// a cursor of their own.
const char* CurrentNamedCursor();
ThemeCursor CurrentThemeCursor();

// Pictures: PNG data, with or without alpha, decoded when drawn.
struct Picture;
using PicHandle = Picture*;
PicHandle NewPicture(std::span<const std::uint8_t> data); // null when the data are no picture
void KillPicture(PicHandle picture);                      // null is allowed
Rect GetPictureBounds(PicHandle picture);                 // moved to (0, 0)
// Into the current port; alpha blends over what is there.
OSStatus DrawPicture(PicHandle picture, const Rect& destination);

// Icons: files in any of the picture formats that Qt reads, registered by creator and type, counted.
struct Icon;
using IconRef = Icon*;
OSStatus RegisterIconRefFromFile(OSType creator, OSType type, const std::filesystem::path& file,
                                 IconRef* icon);
OSStatus AcquireIconRef(IconRef icon);
OSStatus ReleaseIconRef(IconRef icon);
OSStatus UnregisterIconRef(OSType creator, OSType type);
OSStatus PlotIconRef(const Rect& bounds, IconRef icon); // into the current port

} // namespace platform
