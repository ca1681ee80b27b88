// SPDX-License-Identifier: BSD-3-Clause
#include "dialogs/DialogCommand.h"

#include "huxCommon/huxGUI/HuxCarbonEvent.h"

namespace dialogs {

std::optional<ControlCommand> ControlCommandOf(platform::EventRef event) {
    const HuxCarbonEvent command(event, true);
    if (!command.Is(platform::kEventClassCommand, platform::kEventCommandProcess))
        return std::nullopt;
    std::uint32_t id = 0;
    long value = 0;
    platform::HICommandExtended source {};
    command.GetCommandParameter(&id, &value, &source, nullptr);
    if ((source.attributes & platform::kHICommandFromControl) == 0)
        return std::nullopt;
    return ControlCommand { id, source.source.control, value };
}

} // namespace dialogs
