// SPDX-License-Identifier: BSD-3-Clause
// Between images of the widget library and drawing worlds, whose pixels lie in another order.
#pragma once

#include <QImage>

#include "platform/Drawing.h"
#include "platform/Status.h"

namespace platform {

// Blends the image over the current port, scaled to destination and clipped to the port. kParamErr
// without a port or an image, kMemFullErr without memory.
OSStatus DrawImageInPort(const QImage& image, const Rect& destination);

// Puts a part of the world's pixels, opaque, at the same place of an image of 32 bits that has it too.
// False for a null world or image, and without memory.
bool CopyToImage(GWorldPtr world, const QRect& part, QImage& image);
// The world's pixels, opaque, as ARGB32; a null image for a null world or without memory.
QImage ImageOfWorld(GWorldPtr world);

} // namespace platform
