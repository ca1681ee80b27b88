// SPDX-License-Identifier: BSD-3-Clause
// The painted background: a summer afternoon in the country, in layers that a panning camera moves at
// the speed of their distance.
#pragma once

#include "Paint.h"

namespace shot {

// Where the wheels of what drives on the road stand, in units.
inline constexpr float kRoadLine = 462;

// `pan` is how far the camera has moved to the right, in units of the road.
void PaintBackground(Canvas& canvas, float pan);
// What stands between the road and the camera.
void PaintForeground(Canvas& canvas, float pan);
// Sixteen steps from black to white over a smooth ramp, along the lower edge.
void PaintToneRamp(Canvas& canvas);
// The grain of the paper under everything.
void PaintGrain(Canvas& canvas);

} // namespace shot
