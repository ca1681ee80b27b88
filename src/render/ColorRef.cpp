// SPDX-License-Identifier: BSD-3-Clause
// Packing and unpacking of colour words.
#include "render/ColorRef.h"

namespace {

std::uint16_t Channel(unsigned long packed, int shift) {
    return static_cast<std::uint16_t>((packed >> shift & 0xFF) * 257);
}

} // namespace

unsigned long RGBtoCOLORREF(const platform::RGBColor& color) {
    const unsigned long blue = color.blue;
    return (color.red >> 8) | (color.green & 0xFF00u) | ((blue << 8) & 0xFF0000u);
}

void COLORREFtoRGB(platform::RGBColor& color, unsigned long packed) {
    color.red = Channel(packed, 0);
    color.green = Channel(packed, 8);
    color.blue = Channel(packed, 16);
}
