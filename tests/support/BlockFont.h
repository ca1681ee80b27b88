// SPDX-License-Identifier: BSD-3-Clause
// The measures of the block font: what pixels of text look like without any font library.
#pragma once

#include <cstdint>

// A character of one byte is half an em wide, a longer one a whole em; each is a solid block from
// the ascent down to the baseline, with one empty column at its right. Blanks are empty.
namespace block_font {

constexpr std::int32_t Descent(std::int32_t size) {
    return size / 4;
}
constexpr std::int32_t Ascent(std::int32_t size) {
    return size - Descent(size);
}
constexpr std::int32_t Narrow(std::int32_t size) {
    return (size + 1) / 2;
}
constexpr std::int32_t Wide(std::int32_t size) {
    return size;
}

inline constexpr char kFamily[] = "Block";

} // namespace block_font
