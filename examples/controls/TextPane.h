// SPDX-License-Identifier: BSD-3-Clause
// A pane that draws a line of text, which the user drags about.
#pragma once

#include <string>

#include "huxCommon/huxGUI/HuxControlImpl.h"

class TextPane : public HuxControlImpl {
public:
    // What is drawn from now on. text is in the application's text encoding.
    void SetText(std::string text);
    void SetColor(const platform::RGBColor& color);
    void SetFont(platform::FontNumber font);
    void SetPoints(short points);
    // Where the baseline starts, from the pane's top left; changes while the user drags.
    platform::Point GetPlace() const { return m_place; }

    platform::OSStatus InstallSelf(platform::EventTargetRef target) override;
    platform::OSStatus HandleEventCurrentSelf(platform::EventHandlerCallRef call,
                                              platform::EventRef event) override;

private:
    platform::OSStatus HandleDraw();
    platform::OSStatus HandleTrack(platform::EventRef event);
    void MoveTo(platform::Point place);

    std::string m_text = "Telop";
    platform::RGBColor m_color { 0, 0, 0 };
    platform::FontNumber m_font = 0;
    short m_points = 36;
    platform::Point m_place { 100, 40 };
};
