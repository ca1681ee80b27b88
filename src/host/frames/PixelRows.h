// SPDX-License-Identifier: BSD-3-Clause
// Turns rows of an image into rows as files and streams hold them, and back: values without gaps, red
// before green before blue before alpha, 16-bit values with the high byte first.
#pragma once

#include <cstddef>
#include <cstdint>

#include "host/frames/Frame.h"

namespace host {

// The bytes of one row in a file, of 8 or 16 bits per value as the image has.
std::size_t PackedRowBytes(const Image& image, ColorKind kind);

// Writes PackedRowBytes(image, kind) bytes. Grey takes the red channel; an alpha that the image
// lacks is opaque. The kind is none of a palette.
void PackRow(const Image& image, std::int32_t y, ColorKind kind, std::uint8_t* to);

// The reverse: grey goes to all three channels, an alpha that the file lacks is opaque.
void UnpackRow(const std::uint8_t* from, ColorKind kind, Image& image, std::int32_t y);

} // namespace host
