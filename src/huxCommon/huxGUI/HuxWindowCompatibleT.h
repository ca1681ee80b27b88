// SPDX-License-Identifier: BSD-3-Clause
// What every window offers: to be shown, titled, and searched for controls. Without a window nothing
// happens, and nothing is found.
#pragma once

#include "huxCommon/huxCoreFoundation/HuxString.h"
#include "platform/ui/Controls.h"

// Gives a window object a command of its own.
template <class Base>
class HuxWindowT : public Base {
public:
    // Ends the window; the object stays and may create it anew.
    virtual void Destroy() { this->Dispose(); }
    // Does nothing. It keeps the operations after it where callers that count slots expect them.
    virtual void DummyHuxWindow() {}

    std::uint32_t GetCommandID() const { return m_uCommandID; }
    void SetCommandID(std::uint32_t commandID) { m_uCommandID = commandID; }

protected:
    std::uint32_t m_uCommandID = 0;
};

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
    platform::ControlRef FindControl(const platform::ControlID& id) const {
        const platform::Control* const control = platform::Control::FindByID(this->m_hwnd, id);
        return control ? control->Ref() : nullptr;
    }
};
