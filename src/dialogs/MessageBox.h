// SPDX-License-Identifier: BSD-3-Clause
// What the user is asked in a window of its own: OK or Cancel before something is lost, or a colour.
#pragma once

#include "huxCommon/huxCoreFoundation/HuxString.h"

// Runs until the user answers. True for OK; false for Cancel, and when nobody could be asked. Without
// withCancel there is only OK.
bool MessageBox(const HuxString& message, const HuxString& title, long withCancel);

// Runs the platform's colour picker from the colour (COLORREF; its top byte does not matter). True
// when the user accepts: color is the picked one then, with a top byte of 0xFF, which tells a picked
// colour from a converted one. False, and color as it was, when not.
bool ColorDialog(unsigned long& color);
