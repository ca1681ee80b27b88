// SPDX-License-Identifier: BSD-3-Clause
// Small files that are read at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace host {

// Nothing, with the reason that names the file, when it cannot be read or has more than maxSize
// bytes.
std::optional<std::vector<std::uint8_t>> ReadWholeFile(const std::filesystem::path& file,
                                                       std::size_t maxSize, std::string& why);

} // namespace host
