// SPDX-License-Identifier: BSD-3-Clause
// Frames of the host as pictures that a window shows, and back.
#pragma once

#include <QImage>

#include "host/frames/Frame.h"

namespace studio {

// 8 bits per channel, in a format that paints fast: RGB32 for frames that are opaque throughout by
// their layout, premultiplied ARGB32 for others. Of 16 bits the nearest value. A null picture for an
// empty image.
QImage ToPicture(const host::Image& image);

// The picture without its alpha, as a frame of 24 bits; false: there is no memory.
bool ToFrame(const QImage& picture, host::Frame& frame);

// A second frame with the same pixels; the header goes along. False: there is no memory.
bool CopyFrame(const host::Frame& from, host::Frame& to);

} // namespace studio
