// SPDX-License-Identifier: BSD-3-Clause
// Small files that are read at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

// Nothing, with the reason that names the file, when it cannot be read or has more than maxSize
// bytes.
std::optional<std::vector<std::uint8_t>> ReadWholeFile(const std::filesystem::path& file,
                                                       std::size_t maxSize, std::string& why);

// The same to the end of an open file or stream, which messages call name.
std::optional<std::vector<std::uint8_t>> ReadWhole(int descriptor, std::string_view name,
                                                   std::size_t maxSize, std::string& why);

} // namespace host
