// SPDX-License-Identifier: BSD-3-Clause
// The colour words of the parameters (COLORREF: red in bits 0-7, green in 8-15, blue in 16-23) and the
// platform's colours of 16 bits a channel.
#pragma once

#include "platform/Drawing.h"

// Takes the high byte of each channel; bits 24 and up are 0.
unsigned long RGBtoCOLORREF(const platform::RGBColor& color);
// Each channel times 257, so that 255 becomes 65535. Bits 24 and up do not matter.
void COLORREFtoRGB(platform::RGBColor& color, unsigned long packed);

// Fills the rectangle of the current port with the colour and frames it in black, one pixel, inside.
// The port's colours stay as they were.
void DrawColor(platform::Rect& rect, unsigned long color);

// Between red, green and blue and hue, saturation and value, in integers.
//
//   h  sector * 65536 + fraction; the fraction has 16 bits, sector 0 starts at red, 2 at green, 4 at
//      blue, and 6 is red again
//   s  0 to 65535
//   v  0 to 65535
//
// Channels lie in 0 to 255 (RGB32) or 0 to 65535 (RGB64). All results are 0.
long RGB32toHSV(long& h, long& s, long& v, long r, long g, long b);
long RGB64toHSV(long& h, long& s, long& v, long r, long g, long b);
long HSVtoRGB32(long& r, long& g, long& b, long h, long s, long v);
long HSVtoRGB64(long& r, long& g, long& b, long h, long s, long v);

// The three mixtures of a sector; f is the fraction of the hue, 0 to 65536.
long GetParam1(long v, long s);         // the value without the saturated part
long GetParam2(long v, long s, long f); // falling from v as f grows
long GetParam3(long v, long s, long f); // rising to v as f grows
