// SPDX-License-Identifier: BSD-3-Clause
// The result of a platform call: 0 for success, else a number that says what went wrong.
#pragma once

#include <cstdint>

namespace platform {

using OSStatus = std::int32_t;
inline constexpr OSStatus kNoErr = 0;
inline constexpr OSStatus kParamErr = -50;
inline constexpr OSStatus kMemFullErr = -108;

} // namespace platform
