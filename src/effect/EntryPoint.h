// SPDX-License-Identifier: BSD-3-Clause
// The one function through which a host reaches the effect.
#pragma once

#include <epi/epi.h>

// Forwards selectors 0 to 10 to the effect object and gives what the operation gives; any other
// selector gives EPI_UNKNOWN_SELECTOR.
extern "C" long EntryPoint(long selector, _EPIRECORD* record);
