// SPDX-License-Identifier: BSD-3-Clause
// The program's ways of making integers of real numbers. All results fit 32 bits, whatever the
// machine's long is: what lies outside becomes the nearest limit, and not-a-number 0.
#pragma once

#include <cstdint>

// The value without its fraction, towards zero.
std::int32_t TruncateToInt32(double value);
// The nearer limit where the value does not fit.
std::int32_t SaturateToInt32(std::int64_t value);

// The nearest integer, judged on three decimals of the fraction, with a half going towards zero:
// 2.5004 gives 2, 2.5006 gives 3. A fraction that rounds to 1000 thousandths adds one to the integer
// part below zero as well, so that -2.9996 gives -1: settings were always computed so.
long Double2Int(double value);
// The nearest integer, a half going away from zero.
long Double2Int2(double value);
// a * b / c, computed as real numbers and rounded by Double2Int; 0 when c is 0.
long piMulDiv(long a, long b, long c);
