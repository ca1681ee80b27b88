// SPDX-License-Identifier: BSD-3-Clause
// What every window offers: to be shown, moved, titled, and searched for controls.
#pragma once

#include "huxCommon/huxCoreFoundation/HuxString.h"
#include "huxCommon/huxGUI/HuxWindowT.h"
#include "platform/ui/Controls.h"

template <class Base>
class HuxWindowCompatibleT : public HuxWindowT<Base> {
public:
    platform::OSStatus ShowWindow() { return platform::ShowWindow(this->m_hwnd); }
    platform::OSStatus HideWindow() { return platform::HideWindow(this->m_hwnd); }
    bool IsVisible() const { return platform::IsWindowVisible(this->m_hwnd); }
    platform::OSStatus SetTitle(const HuxString& title) {
        return platform::SetWindowTitleWithCFString(this->m_hwnd, title.GetCFString());
    }
    platform::Rect GetContentBounds() const { // global; empty without a window
        platform::Rect bounds {};
        platform::GetWindowContentBounds(this->m_hwnd, &bounds);
        return bounds;
    }
    // Puts the content's top left there, in global coordinates.
    platform::OSStatus Move(short left, short top) {
        return platform::MoveWindow(this->m_hwnd, left, top, false);
    }

    // Null when the window has no such control.
    platform::ControlRef FindControl(const platform::ControlID& id) const {
        const platform::Control* const control = platform::Control::FindByID(this->m_hwnd, id);
        return control ? control->Ref() : nullptr;
    }
    platform::ControlRef GetKeyboardFocus() const { // null when no control has it
        platform::ControlRef control = nullptr;
        platform::GetKeyboardFocus(this->m_hwnd, &control);
        return control;
    }
};
