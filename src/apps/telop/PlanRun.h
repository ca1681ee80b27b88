// SPDX-License-Identifier: BSD-3-Clause
// The plan of frames that INPUT, OUTPUT and the frame options ask for.
#pragma once

#include "apps/telop/RenderOptions.h"
#include "host/jobs/FramePlan.h"

namespace telop {

// Throws when the input has no such frames, or an output exists that is not to be replaced. Reads
// folders, no picture, and writes nothing.
host::FramePlan PlanRun(const RenderOptions& options);

// Makes the outputs' folder where it is missing. Throws when it cannot.
void PrepareFolder(const host::FramePlan& plan);

} // namespace telop
