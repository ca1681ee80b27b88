// SPDX-License-Identifier: BSD-3-Clause
// Files that are read at once and replaced at once, so that nobody ever meets half of one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace host {

// Nothing, with the reason that names the file, when it cannot be read or has more than maxSize
// bytes.
std::optional<std::vector<std::uint8_t>> ReadWholeFile(const std::filesystem::path& file,
                                                       std::size_t maxSize, std::string& why);

// Writes a hidden file beside the given one and renames it. The file keeps its permissions, a link
// keeps pointing where it did. False, with the reason that names the file, leaves the old file and
// nothing beside it.
bool WriteWholeFile(const std::filesystem::path& file, std::span<const std::uint8_t> bytes,
                    std::string& why);

} // namespace host
