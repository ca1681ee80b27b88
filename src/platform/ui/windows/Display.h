// SPDX-License-Identifier: BSD-3-Clause
// Whether Qt can open a display. Qt ends the process when it is asked to and cannot, so it is looked
// at first.
#pragma once

#include <string>

namespace platform {

// The name of the Qt platform to open, as in QT_QPA_PLATFORM; empty when none can be opened.
std::string FindDisplayPlatform();

} // namespace platform
