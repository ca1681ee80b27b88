// SPDX-License-Identifier: BSD-3-Clause
// The bases of control wrappers: which control it is, and what every class of control offers alike. An
// operation on a control that is gone does nothing; its status says so, and what is asked for is 0,
// null, false or empty.
#pragma once

#include <type_traits>

#include "huxCommon/huxCoreFoundation/HuxString.h"
#include "platform/Lifetime.h"
#include "platform/ui/Controls.h"

class HuxControl : public platform::Lifetime {
public:
    HuxControl() = default;
    virtual ~HuxControl() = default;

    platform::ControlRef GetControlRef() const { return m_hctrl; }    // null when not attached
    bool IsValid() const { return platform::Control::Find(m_hctrl); } // attached, and it is there
    platform::WindowRef GetOwner() const { return Ask(&platform::Control::OwnerRef); }
    platform::EventTargetRef GetEventTarget() const { return Ask(&platform::Control::Target); }

    platform::ControlID GetID() const { // 0, 0 when it has none
        const platform::Control* const control = platform::Control::Find(m_hctrl);
        return control ? control->id.value_or(platform::ControlID {}) : platform::ControlID {};
    }
    std::uint32_t GetCommandID() const { // 0 when it has none
        const platform::Control* const control = platform::Control::Find(m_hctrl);
        return control ? control->commandID : 0;
    }

protected:
    // Does the operation with the control, or, for one of a family, with a control of that.
    template <class Result, class Kind, class... Parameters>
    platform::OSStatus Do(Result (Kind::*act)(Parameters...),
                          std::type_identity_t<Parameters>... arguments) const {
        Kind* const control = Kind::Find(m_hctrl);
        if (!control)
            return platform::kErrInvalidControl;
        if constexpr (std::is_same_v<Result, platform::OSStatus>)
            return (control->*act)(arguments...);
        (control->*act)(arguments...);
        return platform::kNoErr;
    }
    template <class Result, class Kind>
    Result Ask(Result (Kind::*ask)() const) const {
        const Kind* const control = Kind::Find(m_hctrl);
        return control ? (control->*ask)() : Result {};
    }

    platform::ControlRef m_hctrl = nullptr;
};

class HuxControlCompatible : public HuxControl {
public:
    std::int32_t GetValue() const { return Ask(&platform::Control::Value); }
    void SetValue(std::int32_t value) {
        Do(&platform::Control::SetValue, value);
    } // within the range
    std::int32_t GetMinimum() const { return Ask(&platform::Control::Minimum); }
    void SetMinimum(std::int32_t minimum) { Do(&platform::Control::SetMinimum, minimum); }
    std::int32_t GetMaximum() const { return Ask(&platform::Control::Maximum); }
    void SetMaximum(std::int32_t maximum) { Do(&platform::Control::SetMaximum, maximum); }

    HuxString GetTitle() const { return HuxString::FromUTF8(Ask(&platform::Control::Title)); }
    platform::OSStatus SetTitle(const HuxString& title) {
        return Do(&platform::Control::SetTitle, title.GetUTF8());
    }

    platform::Rect GetBounds() const { return Ask(&platform::Control::Bounds); } // in the window
    bool IsEnabled() const { return Ask(&platform::Control::IsEnabled); }
    bool IsVisible() const { return Ask(&platform::Control::IsVisible); }

    // The text of a label, an edit field or a scrolling text, lines ended by CR.
    bool GetControlText(HuxString& text) const {
        const auto utf8 = Ask(&platform::Control::Text);
        if (utf8)
            text = HuxString::FromUTF8(*utf8);
        return utf8.has_value();
    }
    platform::OSStatus SetControlText(const HuxString& text) {
        return Do(&platform::Control::SetText, text.GetUTF8());
    }
};
