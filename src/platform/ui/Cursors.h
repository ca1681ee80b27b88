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

// Cursors: of the widget under the mouse, until it is set anew or the mouse leaves it; while a button
// is held, of the widget that it went down in. The watch stands over all windows until another cursor
// is set. The arrow on a widget that has a cursor of its own (an edit field) is that one.
using ThemeCursor = std::uint32_t;
inline constexpr ThemeCursor kThemeArrowCursor = 0;
inline constexpr ThemeCursor kThemeIBeamCursor = 4;
inline constexpr ThemeCursor kThemeCrossCursor = 5;
inline constexpr ThemeCursor kThemePlusCursor = 6;
inline constexpr ThemeCursor kThemeWatchCursor = 7;
inline constexpr ThemeCursor kThemePointingHandCursor = 10;
OSStatus SetThemeCursor(ThemeCursor cursor);

inline constexpr OSStatus kErrNoSuchCursor = -30590;
inline constexpr std::int32_t kMaxCursorSide = 512;
// Registers the world's pixels as a cursor of the name (at most 127 bytes) with the hot spot. Pixels
// that are white up to the world's edge are transparent around the shape; those next to them, which
// an anti-aliased outline mixed with the white, are transparent by their share of it. kParamErr when
// the name is taken or a side is over kMaxCursorSide. The registry is the process's.
OSStatus RegisterNamedPixMapCursor(GWorldPtr world, std::int16_t hotX, std::int16_t hotY,
                                   const char* name);
// The registered cursor once more, drawn larger, for screens that put several pixels in the place of
// one: the hot spot lies at the same share of the sides. kErrNoSuchCursor without the cursor,
// kParamErr when the world is no larger or of other proportions.
OSStatus AddNamedPixMapCursorDensity(GWorldPtr world, const char* name);
bool IsNamedPixMapCursorRegistered(const char* name);
OSStatus SetNamedPixMapCursor(const char* name); // kErrNoSuchCursor, and no change, without it
// The name of the cursor that was set last; empty for a theme cursor. For tests and hosts that draw
// a cursor of their own.
const char* CurrentNamedCursor();
ThemeCursor CurrentThemeCursor(); // the theme cursor that was set last

// Pictures: PNG data, with or without alpha.
struct Picture;
using PicHandle = Picture*;
PicHandle NewPicture(std::span<const std::uint8_t> data); // null when the data are no picture
void KillPicture(PicHandle picture);                      // null is allowed
Rect GetPictureBounds(PicHandle picture);                 // moved to (0, 0)
// Into the current port, clipped to it; alpha blends over what is there. kParamErr without a port.
OSStatus DrawPicture(PicHandle picture, const Rect& destination);

// Icons: files in any of the picture formats that Qt reads, told by their content, counted.
struct Icon;
using IconRef = Icon*;
// The caller gets a count of *icon to end with ReleaseIconRef, and the registry keeps one under the
// creator and type, in the place of an earlier icon there. kParamErr, and null, when the file is no
// picture.
OSStatus RegisterIconRefFromFile(OSType creator, OSType type, const std::filesystem::path& file,
                                 IconRef* icon);
OSStatus AcquireIconRef(IconRef icon);
OSStatus ReleaseIconRef(IconRef icon);
OSStatus UnregisterIconRef(OSType creator, OSType type); // kParamErr when there is none

} // namespace platform
