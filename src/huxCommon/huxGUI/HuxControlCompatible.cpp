// SPDX-License-Identifier: BSD-3-Clause
#include "huxCommon/huxGUI/HuxControlCompatible.h"

using namespace platform;

std::int32_t HuxControlCompatible::GetValue() const {
    return GetControl32BitValue(m_hctrl);
}

void HuxControlCompatible::SetValue(std::int32_t value) {
    SetControl32BitValue(m_hctrl, value);
}

std::int32_t HuxControlCompatible::GetMinimum() const {
    return GetControl32BitMinimum(m_hctrl);
}

void HuxControlCompatible::SetMinimum(std::int32_t minimum) {
    SetControl32BitMinimum(m_hctrl, minimum);
}

std::int32_t HuxControlCompatible::GetMaximum() const {
    return GetControl32BitMaximum(m_hctrl);
}

void HuxControlCompatible::SetMaximum(std::int32_t maximum) {
    SetControl32BitMaximum(m_hctrl, maximum);
}

HuxString HuxControlCompatible::GetTitle() const {
    CFStringRef title = nullptr;
    return CopyControlTitleAsCFString(m_hctrl, &title) == kNoErr ? HuxString::Adopt(title)
                                                                 : HuxString();
}

OSStatus HuxControlCompatible::SetTitle(const HuxString& title) {
    return SetControlTitleWithCFString(m_hctrl, title.GetCFString());
}

Rect HuxControlCompatible::GetBounds() const {
    Rect bounds {};
    GetControlBounds(m_hctrl, &bounds);
    return bounds;
}

bool HuxControlCompatible::IsEnabled() const {
    return IsControlEnabled(m_hctrl);
}

bool HuxControlCompatible::IsVisible() const {
    return IsControlVisible(m_hctrl);
}

bool HuxControlCompatible::GetControlText(HuxString& text) const {
    CFStringRef read = nullptr;
    if (GetData(kControlEntireControl, kControlTextCFString, &read) != kNoErr)
        return false;
    text = HuxString::Adopt(read);
    return true;
}

OSStatus HuxControlCompatible::SetControlText(const HuxString& text) {
    return SetData(kControlEntireControl, kControlTextCFString, text.GetCFString());
}
