// SPDX-License-Identifier: BSD-3-Clause
// Places and rectangles of the widgets as those of the platform, which have 16 bits.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include <QPoint>
#include <QRect>

#include "platform/ui/Windows.h"

namespace platform {

inline std::int16_t ToCoordinate(int value) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<int>(value, Limits::min(), Limits::max()));
}
inline Point ToPoint(QPoint point) {
    return { ToCoordinate(point.y()), ToCoordinate(point.x()) };
}
inline QPoint ToQPoint(const Point& point) {
    return { point.h, point.v };
}
inline Rect ToRect(const QRect& rect) {
    return { ToCoordinate(rect.top()), ToCoordinate(rect.left()),
             ToCoordinate(rect.top() + rect.height()), ToCoordinate(rect.left() + rect.width()) };
}
inline QRect ToQRect(const Rect& rect) {
    return { rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top };
}

} // namespace platform
