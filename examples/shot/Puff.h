// SPDX-License-Identifier: BSD-3-Clause
// Clouds, crowns of trees and bushes: heaps of balls with a ragged edge, lit from the upper left.
#pragma once

#include <vector>

#include "Paint.h"

namespace shot {

struct Ball {
    Point center;
    float radius = 0;
};

struct PuffStyle {
    Color light;
    Color middle;
    Color dark;
    float softness = 1.5F; // of the edge, in units
    float ragged = 6;      // how far the edge strays
    float grain = 22;      // the size of what it strays by
    float bands = 0.2F;    // how softly the three colours meet: small is a drawing, 1 is air
};

void PaintPuff(Canvas& canvas, const std::vector<Ball>& balls, Point by, float scale,
               const PuffStyle& style);

} // namespace shot
