// SPDX-License-Identifier: BSD-3-Clause
// What every window offers: to be shown, titled, and searched for controls. Without a window nothing
// happens, and nothing is found.
#pragma once

#include "huxCommon/huxCoreFoundation/HuxString.h"
#include "huxCommon/huxGUI/HuxWindowT.h"
#include "platform/ui/Controls.h"

template <class Base>
class HuxWindowCompatibleT : public HuxWindowT<Base> {
public:
    void ShowWindow() {
        if (platform::Window* const window = this->GetWindow())
            window->Show();
    }
    void HideWindow() {
        if (platform::Window* const window = this->GetWindow())
            window->Hide();
    }
    bool IsVisible() const {
        const platform::Window* const window = this->GetWindow();
        return window && window->IsVisible();
    }
    void SetTitle(const HuxString& title) {
        if (platform::Window* const window = this->GetWindow())
            window->SetTitle(title.GetUTF8());
    }
    platform::Rect GetContentBounds() const { // global
        const platform::Window* const window = this->GetWindow();
        return window ? window->ContentBounds() : platform::Rect {};
    }

    platform::ControlRef FindControl(const platform::ControlID& id) const {
        const platform::Control* const control = platform::Control::FindByID(this->m_hwnd, id);
        return control ? control->Ref() : nullptr;
    }
};
