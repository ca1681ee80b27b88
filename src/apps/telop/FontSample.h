// SPDX-License-Identifier: BSD-3-Clause
// A picture of one text in several font families, drawn by the plug-in.
#pragma once

#include <span>
#include <string>

#include "host/Effect.h"
#include "host/frames/Frame.h"

namespace telop {

struct SampleStyle {
    std::string text; // one line, UTF-8
    int sizePx = 32;
};

// Black on white, each family's text beside its name. Throws CommandError when a text does not fit
// the plug-in's fields.
host::Frame DrawFontSample(const host::Effect& effect, std::span<const std::string> families,
                           const SampleStyle& style);

} // namespace telop
