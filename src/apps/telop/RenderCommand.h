// SPDX-License-Identifier: BSD-3-Clause
// "telop render": burns a text into frames.
#pragma once

#include "apps/telop/CommandError.h"
#include "apps/telop/RenderOptions.h"

namespace telop {

// Throws CommandError for what stops the run before its first frame.
ExitCode RunRender(const RenderOptions& options);

} // namespace telop
