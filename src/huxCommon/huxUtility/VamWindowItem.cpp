// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxUtility/VamWindowItem.h"

#include "huxCommon/huxGUI/HuxEvents.h"
#include "platform/ui/Controls.h"

platform::OSStatus vamGetWindowItemAsRect(platform::WindowRef window, long id,
                                          platform::Rect* out) {
    const platform::ControlID wanted { kHuxPropertyCreator, static_cast<std::int32_t>(id) };
    const platform::Control* const control = platform::Control::FindByID(window, wanted);
    if (!control)
        return platform::Window::Find(window) ? platform::kErrControlNotFound
                                              : platform::kErrInvalidWindow;
    *out = control->Bounds();
    const auto low = static_cast<std::int32_t>(reinterpret_cast<std::uintptr_t>(out));
    return low ? low : 1;
}
