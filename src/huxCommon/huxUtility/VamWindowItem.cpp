// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxUtility/VamWindowItem.h"

#include "huxCommon/huxGUI/HuxEvents.h"
#include "platform/ui/Controls.h"

platform::OSStatus vamGetWindowItemAsRect(platform::WindowRef window, long id,
                                          platform::Rect* out) {
    platform::ControlRef control = nullptr;
    const platform::ControlID wanted { kHuxPropertyCreator, static_cast<std::int32_t>(id) };
    if (const platform::OSStatus status = platform::GetControlByID(window, wanted, &control))
        return status;
    const platform::Rect* const stored = platform::GetControlBounds(control, out);
    const auto low = static_cast<std::int32_t>(reinterpret_cast<std::uintptr_t>(stored));
    return low ? low : 1;
}
