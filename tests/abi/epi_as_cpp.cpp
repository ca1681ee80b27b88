// SPDX-License-Identifier: BSD-3-Clause
#include <epi/epi.h>
