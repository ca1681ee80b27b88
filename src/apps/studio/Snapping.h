// SPDX-License-Identifier: BSD-3-Clause
// Where a text that is dragged comes to rest: on the edges of the frame and of its safe areas, on the
// frame's middle, and on edges and middles of other texts.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include <QPoint>
#include <QRect>

#include "host/document/Track.h"

namespace studio {

struct Snapped {
    QPoint by; // what is moved, in pixels of the frame
    // Where it came to rest, if it did: the lines x = ... and y = ...
    std::optional<int> x, y;
};

// The rectangle at its start, moved by so much, comes to rest on what is not farther than reach. Both axes
// by themselves. area: one whose edges count besides those that always do.
Snapped Snap(const QRect& start, QPoint by, int reach, QSize frame, host::AnchorArea area,
             std::span<const QRect> others);

QRect AreaIn(QSize frame, host::AnchorArea area);

} // namespace studio
