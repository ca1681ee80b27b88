// SPDX-License-Identifier: BSD-3-Clause
// Bytes as letters (RFC 4648, section 4: the standard alphabet, padded, no line breaks).
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace host {

std::string ToBase64(std::span<const std::uint8_t> bytes);
// Nothing for a text that ToBase64 does not make.
std::optional<std::vector<std::uint8_t>> FromBase64(std::string_view text);

} // namespace host
