// SPDX-License-Identifier: BSD-3-Clause
// The events that tests of windows and controls wait for.
#pragma once

#include "platform/Commands.h"
#include "platform/ui/Controls.h"
#include "support/ChainHandler.h"

namespace test {

using platform::EventTypeSpec;

inline constexpr EventTypeSpec kHit { platform::kEventClassControl, platform::kEventControlHit };
inline constexpr EventTypeSpec kDraw { platform::kEventClassControl, platform::kEventControlDraw };
inline constexpr EventTypeSpec kFocus { platform::kEventClassControl,
                                        platform::kEventControlSetFocusPart };
inline constexpr EventTypeSpec kDisposed { platform::kEventClassControl,
                                           platform::kEventControlDisposed };
inline constexpr EventTypeSpec kCommand { platform::kEventClassCommand,
                                          platform::kEventCommandProcess };

inline platform::ControlPartCode PartOf(platform::EventRef event) {
    return ParameterOf<platform::ControlPartCode>(event, platform::kEventParamControlPart,
                                                  platform::kTypeControlPartCode, -1);
}
inline platform::HICommandExtended CommandOf(platform::EventRef event) {
    return ParameterOf<platform::HICommandExtended>(event, platform::kEventParamDirectObject,
                                                    platform::kTypeHICommand);
}

} // namespace test
