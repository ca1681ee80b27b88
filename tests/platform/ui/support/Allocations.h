// SPDX-License-Identifier: BSD-3-Clause
// Counts what the test program and its libraries allocate with new.
#pragma once

#include <cstddef>

namespace test {

std::size_t AllocationsSoFar();

} // namespace test
