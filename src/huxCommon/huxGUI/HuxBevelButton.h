// SPDX-License-Identifier: BSD-3-Clause
// A button that may show a colour. In colour mode a click asks the user for a colour, shows it and
// then sends the button's command; when the user cancels, nothing is sent.
#pragma once

#include "huxCommon/huxGUI/HuxControlImpl.h"

class HuxBevelButton : public HuxControlImpl {
public:
    enum Type : std::int32_t { kPlain = 0, kColor = 2 };

    void SetType(std::int32_t type) { m_nType = type; }
    std::int32_t GetType() const { return m_nType; }
    platform::RGBColor GetColor() const; // black without a control
    platform::OSStatus SetColor(const platform::RGBColor& color);

    platform::OSStatus InstallSelf(platform::EventTargetRef target) override;
    platform::OSStatus HandleEventCurrentSelf(platform::EventHandlerCallRef call,
                                              platform::EventRef event) override;

private:
    platform::OSStatus PickColor();

    std::int32_t m_nType = kPlain;
};
