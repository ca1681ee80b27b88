// SPDX-License-Identifier: BSD-3-Clause
// Commands as the dialogs read them: which control's, and the toolkit's extra value.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/Commands.h"

namespace dialogs {

struct ControlCommand {
    std::uint32_t id;
    platform::ControlRef control;
    long value; // 0 when the command carries none
};

// Nothing for any other event, and for a command that does not come from a control.
std::optional<ControlCommand> ControlCommandOf(platform::EventRef event);

} // namespace dialogs
