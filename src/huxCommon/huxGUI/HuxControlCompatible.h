// SPDX-License-Identifier: BSD-3-Clause
// What every class of control offers alike: value, range, title, bounds and data by tag.
#pragma once

#include "huxCommon/huxCoreFoundation/HuxString.h"
#include "huxCommon/huxGUI/HuxControl.h"

class HuxControlCompatible : public HuxControl {
public:
    std::int32_t GetValue() const;
    void SetValue(std::int32_t value); // kept within the range
    std::int32_t GetMinimum() const;
    void SetMinimum(std::int32_t minimum);
    std::int32_t GetMaximum() const;
    void SetMaximum(std::int32_t maximum);

    HuxString GetTitle() const;
    platform::OSStatus SetTitle(const HuxString& title);

    platform::Rect GetBounds() const; // local to the window
    bool IsEnabled() const;
    bool IsVisible() const;

    // The text of a label, an edit field or a scrolling text, lines ended by CR.
    bool GetControlText(HuxString& text) const;
    platform::OSStatus SetControlText(const HuxString& text);

    template <class T>
    platform::OSStatus SetData(platform::ControlPartCode part, platform::OSType tag,
                               const T& data) {
        return platform::SetControlData(m_hctrl, part, tag, sizeof(T), &data);
    }
    template <class T>
    platform::OSStatus GetData(platform::ControlPartCode part, platform::OSType tag,
                               T* data) const {
        return platform::GetControlData(m_hctrl, part, tag, sizeof(T), data, nullptr);
    }
};
