// SPDX-License-Identifier: BSD-3-Clause
// The last handler of every chain: what the platform itself does with what nobody else took.
#pragma once

#include "platform/ui/UIObject.h"

namespace platform {

// For a new object, before any other handler.
void InstallStandardHandler(const UIObject& object);

} // namespace platform
