// SPDX-License-Identifier: BSD-3-Clause
// The last handler of every chain: what the platform itself does with what nobody else took.
#include "platform/ui/windows/StandardHandler.h"

namespace platform {

void InstallStandardHandler(const UIObject& /*object*/) {}

} // namespace platform
