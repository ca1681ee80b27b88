// SPDX-License-Identifier: BSD-3-Clause
// The event by which the toolkit tells the host of a failure inside a handler.
#pragma once

#include <cstdint>

#include "platform/Events.h"

// Travels as an event parameter of exactly this size.
struct _HUX_ERROR {
    char strError[256]; // always zero: the words are the host's
    std::int32_t nErrorCode;
    std::uint32_t uEventClass; // of the event in hand when it happened; 0 if there was none
    std::uint32_t uEventKind;
};
static_assert(sizeof(_HUX_ERROR) == 268);

// Class of the event, name of its one parameter and the parameter's type.
inline constexpr platform::OSType kHuxErrorCode = 0x48555845; // "HUXE"
inline constexpr std::uint32_t kHuxErrorKind = 1;
