// SPDX-License-Identifier: BSD-3-Clause
// Colours of 16 bits a channel to and from those of the widgets, which keep all 16.
#pragma once

#include <QColor>

#include "platform/Drawing.h"

namespace platform {

inline QColor ToQColor(const RGBColor& color) {
    return QColor::fromRgba64(color.red, color.green, color.blue);
}

inline RGBColor ToRGBColor(const QColor& color) {
    const QRgba64 wide = color.rgba64();
    return { wide.red(), wide.green(), wide.blue() };
}

} // namespace platform
