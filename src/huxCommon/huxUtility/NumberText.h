// SPDX-License-Identifier: BSD-3-Clause
// Numbers to and from the text of fields, with '.' as the decimal point in every locale. Any text and
// any format may come in.
#pragma once

#include <limits>
#include <string>
#include <string_view>

// The number that the text begins with, after blanks and with an optional sign; 0 when it begins with
// none. What is too large gives the nearest number of the type.
long ParseInteger(std::string_view text);
double ParseDouble(std::string_view text);

// The number without its fraction; the nearest long for what is too large, 0 for what is no number.
long Truncated(double number);

// The number as printf's format says, with text around it. A format has one conversion out of f, e, g
// (also capital) and d, with flags, width and precision as usual, but nothing is filled up with
// blanks: a field aligns its text itself. Any other format counts as "%.1f".
std::string FormatDouble(std::string_view format, double number);
