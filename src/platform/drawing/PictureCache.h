// SPDX-License-Identifier: BSD-3-Clause
// Finished pictures, found again by their size and by what was drawn.
#pragma once

#include <memory>

#include "platform/drawing/Recording.h"

namespace platform {

// The pixels of the recording on a canvas of that size: an older picture of the same drawing when
// there is one, else a new one. Shared, so only for reading. Throws std::bad_alloc.
std::shared_ptr<const std::uint8_t> PictureOf(const Recording& recording, std::int32_t width,
                                              std::int32_t height);
// The same as pixels of the caller's own.
PixelMemory DrawPicture(const Recording& recording, std::int32_t width, std::int32_t height);

} // namespace platform
