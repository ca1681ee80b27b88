// SPDX-License-Identifier: BSD-3-Clause
// Drawing worlds, the current port with its colours and text state, and the drawing of text. The
// current port and device belong to the thread; a world is used by one thread at a time.
//
// A world remembers what is drawn into it, and its pixels come into being when they are locked. So
// a picture that was drawn before is found again instead of being drawn again.
#pragma once

#include <cstdint>

#include "platform/Fonts.h"
#include "platform/Status.h"

namespace platform {

// left and top lie inside, right and bottom outside.
struct Rect {
    std::int16_t top, left, bottom, right;
};
void SetRect(Rect* rect, std::int16_t left, std::int16_t top, std::int16_t right,
             std::int16_t bottom);

// Full at 65535.
struct RGBColor {
    std::uint16_t red, green, blue;
};

struct GWorld;
struct PixMap;
struct GDevice;
using GWorldPtr = GWorld*;
using CGrafPtr = GWorld*; // every port of this layer is a world
using PixMapHandle = PixMap*;
using GDHandle = GDevice*;

// Worlds -----------------------------------------------------------------------------------------

inline constexpr std::int32_t kMaxWorldSide = 32767;
inline constexpr std::int64_t kMaxWorldBytes = std::int64_t { 1 } << 28;

// Makes a world of the size of bounds, whose pixels are what the caller draws there: nothing clears
// them. depth is 32. kParamErr for another depth or a side of 0 or over kMaxWorldSide, kMemFullErr
// above kMaxWorldBytes or without memory; *world is null then. Freed by DisposeGWorld.
OSStatus NewGWorld(GWorldPtr* world, std::int16_t depth, const Rect& bounds);
// Null is allowed. The thread's port must not be this world any more.
void DisposeGWorld(GWorldPtr world);

// The thread's current world; null at its start. The device comes along for callers that restore
// it.
void GetGWorld(CGrafPtr* port, GDHandle* device);
void SetGWorld(CGrafPtr port, GDHandle device);
CGrafPtr GetPort();
void SetPort(CGrafPtr port);

// Lent; lives as long as the world.
PixMapHandle GetGWorldPixMap(GWorldPtr world);
// Locks count. False when there is no memory for the pixels.
bool LockPixels(PixMapHandle pixels);
void UnlockPixels(PixMapHandle pixels);
// Address of pixel (0, 0), top row first: 4 bytes a pixel, unused (0), red, green, blue. Null
// unless locked; good until the world is drawn into, unlocked or disposed. May be shared with other
// worlds, so it is only for reading.
const std::uint8_t* GetPixBaseAddr(PixMapHandle pixels);
// The same for writing: the world gets pixels of its own.
std::uint8_t* GetWritablePixBaseAddr(PixMapHandle pixels);
// The stride in bytes.
std::int32_t GetPixRowBytes(PixMapHandle pixels);

// The port's state -------------------------------------------------------------------------------
// Without a current port setters do nothing and getters give 0.

void RGBForeColor(const RGBColor& color);
void RGBBackColor(const RGBColor& color);
void GetForeColor(RGBColor* color);
void GetBackColor(RGBColor* color);

void TextFont(FontNumber font);
void TextSize(
    std::int16_t points);         // 72 to the inch, so pixels; 0 means 12, below 0 nothing is drawn
void TextFace(std::int16_t face); // 0 plain; the only face that text is drawn in
void TextMode(std::int16_t mode); // kSrcCopy or kSrcOr; only kept for its getter
FontNumber GetPortTextFont(CGrafPtr port);
std::int16_t GetPortTextSize(CGrafPtr port);
std::int16_t GetPortTextFace(CGrafPtr port);
std::int16_t GetPortTextMode(CGrafPtr port);
inline constexpr std::int16_t kSrcCopy = 0;
inline constexpr std::int16_t kSrcOr = 1;

void MoveTo(std::int16_t x, std::int16_t y); // puts the pen there

// Drawing into the current port, clipped to it ---------------------------------------------------

void EraseRect(const Rect& rect); // fills with the background colour
void PaintRect(const Rect& rect); // fills with the foreground colour
void FrameRect(const Rect& rect); // outlines with the foreground colour, one pixel, inside rect

// Copies fromRect of a world into toRect of another, or of the same one, whatever the current port.
// Where the sizes differ, each pixel of the target takes the source's under its middle. Pixels of
// toRect whose source lies outside of from keep what they have. kParamErr without a world.
OSStatus CopyBits(GWorldPtr from, const Rect& fromRect, CGrafPtr to, const Rect& toRect);

struct FontInfo {
    std::int16_t ascent, descent, widMax, leading; // pixels, rounded up
};
// Of the port's font and size. ascent and descent hold every part of the glyphs of the family that
// a line of text may have.
void GetFontInfo(FontInfo* info);

// text is in the application's text encoding, one line; a character that the family lacks comes
// from another one. The pen is the left end of the baseline and moves by the advance.
void DrawString(const std::uint8_t* text); // length-prefixed
void DrawText(const char* text, std::int32_t offset, std::int32_t length);
// The advance that DrawString moves the pen by, in pixels, rounded up.
std::int32_t StringWidth(const std::uint8_t* text);
std::int32_t TextWidth(const char* text, std::int32_t offset, std::int32_t length);

// Caches of the text service ---------------------------------------------------------------------

struct TextCacheStats {
    std::int64_t bytes;    // in all caches now
    std::int64_t maxBytes; // what they are bounded by
    std::int64_t pictureHits, pictureMisses;
    std::int64_t lineHits, lineMisses;
};
TextCacheStats GetTextCacheStats();
// Empties glyph, line and picture caches and what this thread has kept to draw on; worlds in use
// are not touched. Other threads keep at most 34 MiB each for themselves until they end.
void PurgeTextCaches();

} // namespace platform
