// SPDX-License-Identifier: BSD-3-Clause
// Tells caches keyed by bytes which encoding those bytes are in.
#pragma once

#include <cstdint>

namespace platform {

// A number that stands for the application's text encoding; another one for each encoding.
std::uint32_t ApplicationEncodingSerial();

} // namespace platform
