// SPDX-License-Identifier: BSD-3-Clause
// Lets the user pick a colour word.
#pragma once

// Runs the platform's colour picker from the colour (COLORREF; its top byte does not matter). True
// when the user accepts: color is the picked one then, with a top byte of 0xFF, which tells a picked
// colour from a converted one. False, and color as it was, when not.
bool ColorDialog(unsigned long& color);
