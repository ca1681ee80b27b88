// SPDX-License-Identifier: BSD-3-Clause
// Between the colour words of the parameters (COLORREF: red in bits 0-7, green in 8-15, blue in
// 16-23) and the platform's colours of 16 bits a channel.
#pragma once

#include "platform/Drawing.h"

// Takes the high byte of each channel; bits 24 and up are 0.
unsigned long RGBtoCOLORREF(const platform::RGBColor& color);
// Each channel times 257, so that 255 becomes 65535. Bits 24 and up do not matter.
void COLORREFtoRGB(platform::RGBColor& color, unsigned long packed);
