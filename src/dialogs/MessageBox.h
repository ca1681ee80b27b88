// SPDX-License-Identifier: BSD-3-Clause
// A question that the user answers with OK or Cancel, asked before something is lost.
#pragma once

#include "huxCommon/huxCoreFoundation/HuxString.h"

// Runs until the user answers. True for OK; false for Cancel, and when nobody could be asked. Without
// withCancel there is only OK.
bool MessageBox(const HuxString& message, const HuxString& title, long withCancel);
