// SPDX-License-Identifier: BSD-3-Clause
// Operations on whole images of the host. Each locks what it needs, destination for writing and
// source for reading, and leaves both unlocked even if they were locked before; an image that cannot
// be locked leaves everything as it is. All results are 0.
#pragma once

#include <epi/epi.h>

#include "render/PIOffscreen.h"

// Resizes src to the size of dst: averages when shrinking, repeats pixels when enlarging, copies when
// the sizes are equal. Works on 8-bit channels and drops the alpha.
long ChangeResolution(PIOffscreen& dst, PIOffscreen& src);

// Scales src to the size of dst by the host's own operation, else by repeating or leaving out pixels.
// Both have one depth.
long StretchCopy(PIOffscreen& dst, PIOffscreen& src);

// Copies src when size and depth of both agree; else does nothing.
long CopyAllOffscreen(PIOffscreen& dst, PIOffscreen& src);

// Puts white below the straight-alpha pixels of image inside rect and makes them opaque. Images of 24
// bits are left as they are.
long SetWhiteMat(PIOffscreen& image, const tagRECT& rect);
