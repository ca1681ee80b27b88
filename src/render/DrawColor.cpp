// SPDX-License-Identifier: BSD-3-Clause
#include "render/DrawColor.h"

#include "render/ColorRef.h"
#include "render/StateSavers.h"

void DrawColor(platform::Rect& rect, unsigned long color) {
    const XSaveColor colors;
    platform::RGBColor fill {};
    COLORREFtoRGB(fill, color);
    platform::RGBForeColor(fill);
    platform::PaintRect(rect);
    platform::RGBForeColor({ 0, 0, 0 });
    platform::FrameRect(rect);
}
