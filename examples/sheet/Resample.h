// SPDX-License-Identifier: BSD-3-Clause
// Makes a picture smaller or larger with a cubic filter, in linear light, so that fine bright lines
// and letters keep their weight.
#pragma once

#include <cstdint>
#include <memory>

#include "host/Image.h"

namespace sheet {

// An opaque kRgb24 picture of the given size, 1 or more on each side. Null when there is no memory.
std::unique_ptr<host::Image> Resample(const host::Image& picture, std::int32_t width,
                                      std::int32_t height);

} // namespace sheet
