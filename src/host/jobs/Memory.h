// SPDX-License-Identifier: BSD-3-Clause
// How much memory a run of frames may take.
#pragma once

#include <cstdint>
#include <filesystem>

namespace host {

// Bytes that this process may still take: the machine's, or what the control groups around the
// process (of either version) leave of it. The greatest number where nothing says. root is that of the
// system's own files.
std::uint64_t FreeMemory(const std::filesystem::path& root = "/");

} // namespace host
