// SPDX-License-Identifier: BSD-3-Clause
// The subject of the shot: a small car in cel paint, seen from its right side.
#pragma once

#include "Paint.h"

namespace shot {

// `foot` is the point of the road below the middle of the car; `travelled` is how far it has rolled,
// in units, which turns the wheels and makes it bob.
void PaintCar(Canvas& canvas, Point foot, float travelled);

} // namespace shot
