// SPDX-License-Identifier: BSD-3-Clause
// A patch of colour, as dialogs show one.
#pragma once

#include "platform/Drawing.h"

// Fills the rectangle of the current port with the colour (COLORREF) and frames it in black, one
// pixel, inside. The port's colours stay as they were.
void DrawColor(platform::Rect& rect, unsigned long color);
