// SPDX-License-Identifier: BSD-3-Clause
// One plain loop: text over a ground of one colour, which is nearly all of it, is coloured instead.
#include "platform/drawing/Blend.h"

namespace platform {

void BlendPixels(std::uint8_t* pixels, const std::uint8_t* coverage, std::int64_t count,
                 Pixel color) {
    for (std::int64_t i = 0; i < count; ++i) {
        if (coverage[i] == 0) { // beside the strokes, as most of a text's box is
            continue;
        }
        std::uint8_t* const pixel = pixels + i * 4;
        for (std::size_t channel = 0; channel < color.size(); ++channel) {
            pixel[channel] = Mix(pixel[channel], color[channel], coverage[i]);
        }
    }
}

} // namespace platform
