// SPDX-License-Identifier: BSD-3-Clause
// Rounding and saturation.
#include "render/Rounding.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using Limits = std::numeric_limits<std::int32_t>;

} // namespace

std::int32_t TruncateToInt32(double value) {
    if (std::isnan(value))
        return 0;
    // Both limits are exact as real numbers.
    return static_cast<std::int32_t>(
        std::clamp<double>(std::trunc(value), Limits::min(), Limits::max()));
}

std::int32_t SaturateToInt32(std::int64_t value) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

long Double2Int(double value) {
    if (!std::isfinite(value))
        return TruncateToInt32(value);
    double whole = std::trunc(value);
    double fraction = std::floor(std::fabs(value - whole) * 1000 + 0.5) / 1000;
    if (fraction >= 1.0) {
        // Plus one below zero too, on purpose.
        whole += 1;
        fraction = 0;
    }
    if (fraction > 0.5)
        whole += value < 0 ? -1 : 1;
    return TruncateToInt32(whole);
}

long Double2Int2(double value) {
    return TruncateToInt32(value < 0 ? value - 0.5 : value + 0.5);
}

long piMulDiv(long a, long b, long c) {
    if (c == 0)
        return 0;
    return Double2Int(static_cast<double>(a) * static_cast<double>(b) / static_cast<double>(c));
}
