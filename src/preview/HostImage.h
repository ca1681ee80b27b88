// SPDX-License-Identifier: BSD-3-Clause
// Images that the dialogs make for themselves, through the host.
#pragma once

#include <cstdint>
#include <memory>

#include <epi/epi.h>

#include "render/PIOffscreen.h"

// A cleared image of 32 bits at 144 dots in an inch; null when the host cannot make one.
std::unique_ptr<PIOffscreen> MakeHostImage(const _EPIRECORD& record, std::int32_t width,
                                           std::int32_t height);

// Copies src, of any depth, over dst, which has 32 bits and the same size. Of 16-bit channels the
// high byte counts. What lies outside either image is left alone.
void CopyHostImage(PIOffscreen& dst, PIOffscreen& src);
